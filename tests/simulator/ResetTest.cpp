// Starting over: what a reset cuts off, cancels and forgets.
#include "tests/simulator/CeremonyClient.h"
#include "tests/simulator/Recorder.h"

#include <thread>

using namespace test;
using testing::IsEmpty;

namespace
{
    using Reset = SimulatorTest;
} // namespace

TEST_F(Reset, CutsWatchersOff)
{
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    recorder.Heard();
    SimulatorReset();
    EXPECT_EQ(TraceText(), "");
    Load(Room());
    SimulateDeviceAppears(lamp);
    SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"x\"");
    EXPECT_THAT(recorder.Heard(), IsEmpty());
    EXPECT_EQ(watcher->Start(), disconnected);
    EXPECT_EQ(watcher->Stop(), S_OK);
    EXPECT_THAT(recorder.Heard(), IsEmpty());
}

TEST_F(Reset, CutsOffTheUnstartedToo)
{
    auto const watcher = MakeWatcher();
    SimulatorReset();
    EXPECT_EQ(watcher->Start(), disconnected);
}

TEST_F(Reset, NumbersWatchersAnew)
{
    MakeWatcher();
    MakeWatcher();
    EXPECT_EQ(TraceWith("-> #2").size(), 1u);
    Load(Room());
    MakeWatcher();
    EXPECT_EQ(TraceWith("-> #1").size(), 1u);
}

TEST_F(Reset, CancelsOperations)
{
    LoadPairing("duration-ms = 'never'");
    Pairer pairer(speaker);
    auto const operation = pairer.Begin();
    std::atomic<AsyncStatus> ended = AsyncStatus::Started;
    operation->put_Completed(On<PairingCompletedHandler>([&](auto*, AsyncStatus status) {
                                 ended = status;
                                 return S_OK;
                             }).Get());
    ASSERT_TRUE(WaitIdle());
    SimulatorReset();
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Canceled);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(ended, AsyncStatus::Canceled);
    Load(Room());
    EXPECT_FALSE(IsPaired(FindDevice(speaker)));
}

TEST_F(Reset, ForgetsFailuresAndHolds)
{
    SimulateFailure("DeviceInformation.CreateWatcher", E_FAIL);
    SimulatorHoldEvents();
    Load(Room());
    Com<IDeviceWatcher> watcher;
    EXPECT_EQ(Statics()->CreateWatcher(watcher.Put()), S_OK);
    EXPECT_TRUE(FindDevice(speaker)); // which needs events
}

TEST_F(Reset, DropsEventsInFlight)
{
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    SimulatorHoldEvents();
    watcher->Start();
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Added(#1"));
    SimulatorReset();
    EXPECT_THAT(recorder.Heard(), IsEmpty());
}

TEST_F(Reset, DoesNotWaitForHandlers)
{
    auto const watcher = MakeWatcher();
    std::atomic<bool> go = false;
    std::atomic<bool> entered = false;
    EventRegistrationToken token{};
    watcher->add_Added(On<AddedHandler>([&](auto*, auto*) {
                           entered = true;
                           while (!go)
                           {
                               std::this_thread::yield();
                           }
                           return S_OK;
                       }).Get(),
                       &token);
    watcher->Start();
    while (!entered)
    {
        std::this_thread::yield();
    }
    SimulatorReset(); // the handler is still running
    go = true;
    ASSERT_TRUE(WaitIdle());
}

TEST_F(Reset, MayHappenWhileEverythingMoves)
{
    std::atomic<bool> done = false;
    std::thread mover([&] {
        while (!done)
        {
            SimulateDeviceAppears(lamp);
            SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"a\"");
            SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"b\"");
            SimulateDeviceLeaves(lamp);
        }
    });
    for (int round = 0; round < 40; ++round)
    {
        auto const watcher = MakeWatcher();
        Recorder recorder(watcher);
        watcher->Start();
        LoadPairing("duration-ms = 1");
        Com<IDeviceInformation> device;
        auto const other = MakeWatcher();
        Recorder second(other);
        other->Start();
        SimulatorReset();
        Load(Room());
        WaitIdle();
    }
    done = true;
    mover.join();
    SimulatorReset();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
}
