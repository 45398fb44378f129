// Reference counts, weak references, and letting go of a watcher that runs.
#include "tests/simulator/Recorder.h"

using namespace test;
using testing::IsEmpty;

namespace
{
    class WatcherLifetime : public SimulatorTest
    {
    protected:
        static Com<IWeakReference> Weak(Com<IDeviceWatcher> const& watcher)
        {
            Com<IWeakReference> weak;
            EXPECT_EQ(watcher.As<IWeakReferenceSource>()->GetWeakReference(weak.Put()), S_OK);
            return weak;
        }

        static Com<IDeviceWatcher> Resolve(Com<IWeakReference> const& weak)
        {
            Com<IDeviceWatcher> watcher;
            EXPECT_EQ(weak->Resolve(iid_of<IDeviceWatcher>, reinterpret_cast<void**>(watcher.Put())), S_OK);
            return watcher;
        }
    };
} // namespace

TEST_F(WatcherLifetime, RunningTakesNoReference)
{
    auto const watcher = MakeWatcher();
    ASSERT_EQ(watcher->Start(), S_OK);
    EXPECT_EQ(watcher->AddRef(), 2u);
    EXPECT_EQ(watcher->Release(), 1u);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(watcher->AddRef(), 2u);
    EXPECT_EQ(watcher->Release(), 1u);
}

TEST_F(WatcherLifetime, WeakReferencesResolveWhileItLives)
{
    auto watcher = MakeWatcher();
    auto const weak = Weak(watcher);
    EXPECT_EQ(Resolve(weak).Get(), watcher.Get());
    EXPECT_TRUE(weak.Answers<platform::IAgileObject>());
    watcher.Reset();
    EXPECT_FALSE(Resolve(weak));
}

TEST_F(WatcherLifetime, WeakReferencesRefuseNull)
{
    auto const watcher = MakeWatcher();
    EXPECT_EQ(watcher.As<IWeakReferenceSource>()->GetWeakReference(nullptr), E_POINTER);
    EXPECT_EQ(Weak(watcher)->Resolve(iid_of<IDeviceWatcher>, nullptr), E_POINTER);
}

TEST_F(WatcherLifetime, LastReleaseEndsARunningWatcher)
{
    auto const before = SimulatorLiveObjects();
    auto watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    recorder.Heard();
    watcher.Reset();
    SimulateDeviceAppears(lamp);
    EXPECT_THAT(recorder.Heard(), IsEmpty());
    EXPECT_EQ(SimulatorLiveObjects(), before);
}

TEST_F(WatcherLifetime, LastReleaseMayHappenInsideAHandler)
{
    auto const before = SimulatorLiveObjects();
    auto watcher = MakeWatcher();
    EventRegistrationToken token{};
    std::atomic<int> calls = 0;
    watcher->add_Added(On<AddedHandler>([&](IDeviceWatcher*, IDeviceInformation*) {
                           ++calls;
                           watcher.Reset();
                           return S_OK;
                       }).Get(),
                       &token);
    auto const weak = Weak(watcher);
    SimulatorHoldEvents(); // so that nothing happens before Start has returned to this thread
    watcher->Start();
    SimulatorReleaseEvents();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(calls, 1);
    EXPECT_FALSE(Resolve(weak));
    EXPECT_EQ(SimulatorLiveObjects(), before + 1); // the weak reference
}

TEST_F(WatcherLifetime, AnEventInFlightKeepsItAlive)
{
    auto watcher = MakeWatcher();
    EventRegistrationToken token{};
    std::atomic<int> calls = 0;
    watcher->add_Added(On<AddedHandler>([&](IDeviceWatcher* sender, IDeviceInformation*) {
                           ++calls;
                           StatusOf(Com<IDeviceWatcher>(sender));
                           return S_OK;
                       }).Get(),
                       &token);
    SimulatorHoldEvents();
    watcher->Start();
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Added(#1"));
    watcher.Reset();
    SimulatorReleaseEvents();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(calls, 1);
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
}

TEST_F(WatcherLifetime, LettingGoReleasesTheHandlers)
{
    auto watcher = MakeWatcher();
    auto const handler = On<AddedHandler>([](IDeviceWatcher*, IDeviceInformation*) { return S_OK; });
    EventRegistrationToken token{};
    watcher->add_Added(handler.Get(), &token);
    watcher->Start();
    ASSERT_TRUE(WaitIdle());
    watcher.Reset();
    handler->AddRef();
    EXPECT_EQ(handler->Release(), 1u);
}

TEST_F(WatcherLifetime, ManyComeAndGoWhileEverythingMoves)
{
    for (int round = 0; round < 50; ++round)
    {
        auto watcher = MakeWatcher();
        Recorder recorder(watcher);
        watcher->Start();
        SimulateDeviceAppears(lamp);
        if (round % 3 == 0)
        {
            watcher->Stop();
        }
        SimulateDeviceLeaves(lamp);
        watcher.Reset();
        ASSERT_TRUE(WaitIdle()); // the recorder must outlive its events
    }
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
}
