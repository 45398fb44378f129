// In which order the events of watchers come, on which thread, and until when.
#include "tests/simulator/Recorder.h"

#include <windows.h>
#include <objbase.h>

#include <thread>

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

namespace
{
    using WatcherEvents = SimulatorTest;
} // namespace

TEST_F(WatcherEvents, BeginWithEveryDeviceThenCompletion)
{
    EXPECT_THAT(HeardBy(MakeWatcher()), ElementsAre(addedSpeaker, addedMouse, completed));
}

TEST_F(WatcherEvents, NeverComeOnTheCallersThread)
{
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    SimulateDeviceAppears(lamp);
    recorder.Heard();
    watcher->Stop();
    recorder.Heard();
    EXPECT_THAT(recorder.Threads(), Not(Contains(GetCurrentThreadId())));
    EXPECT_THAT(recorder.Threads(), SizeIs(5));
}

TEST_F(WatcherEvents, ComeInTheMultithreadedApartment)
{
    auto const watcher = MakeWatcher();
    EventRegistrationToken token{};
    std::atomic<int> apartment = -1;
    watcher->add_EnumerationCompleted(On<WatcherHandler>([&](IDeviceWatcher*, ::IInspectable*) {
                                          APTTYPE type{};
                                          APTTYPEQUALIFIER qualifier{};
                                          CoGetApartmentType(&type, &qualifier);
                                          apartment = type;
                                          return S_OK;
                                      }).Get(),
                                      &token);
    watcher->Start();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(apartment, APTTYPE_MTA);
}

TEST_F(WatcherEvents, AreRaisedWithNoLockHeld)
{
    // A handler that waits for another thread's calls into the platform hangs if any lock is held meanwhile.
    auto const watcher = MakeWatcher();
    auto const other = MakeWatcher();
    EventRegistrationToken token{};
    watcher->add_Added(On<AddedHandler>([&](IDeviceWatcher* sender, IDeviceInformation* device) {
                           std::thread([&] {
                               Com<IDeviceWatcher> const shared(sender);
                               StatusOf(shared);
                               IdOf(device);
                               EventRegistrationToken inner{};
                               auto const handler = On<WatcherHandler>([](auto*, auto*) { return S_OK; });
                               sender->add_Stopped(handler.Get(), &inner);
                               sender->remove_Stopped(inner);
                               other->Start();
                               SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"x\"");
                               TraceText();
                           }).join();
                           return S_OK;
                       }).Get(),
                       &token);
    watcher->Start();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(TraceWith("! DeviceWatcher.Added(#1").size(), 2u);
}

TEST_F(WatcherEvents, AreLimitedToStartedWatchers)
{
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    EXPECT_EQ(SimulateDeviceAppears(lamp), 1);
    EXPECT_THAT(recorder.Heard(), IsEmpty());
    watcher->Start();
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedSpeaker, addedMouse, addedLamp, completed));
    watcher->Stop();
    recorder.Heard();
    SimulateDeviceLeaves(lamp);
    SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"New\"");
    EXPECT_THAT(recorder.Heard(), IsEmpty());
}

TEST_F(WatcherEvents, CompletionComesOnce)
{
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    recorder.Heard();
    SimulateEnumerationCompletes();
    EXPECT_THAT(recorder.Heard(), IsEmpty());
}

TEST_F(WatcherEvents, EndWithStopped)
{
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    recorder.Heard();
    SimulatorClearTrace();
    SimulatorHoldEvents();
    SimulateDeviceAppears(lamp);
    SimulateDeviceChanges(mouse, "System.ItemNameDisplay", "\"Rat\"");
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Added(#1"));
    watcher->Stop();
    SimulatorReleaseEvents();
    // What was in flight still comes; what was only due does not.
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedLamp, "Stopped in status 4"));
}

TEST_F(WatcherEvents, GoToEveryWatcher)
{
    auto const one = MakeWatcher();
    auto const two = MakeWatcher(pairedOnly);
    Recorder first(one);
    Recorder second(two);
    one->Start();
    two->Start();
    EXPECT_THAT(first.Heard(), ElementsAre(addedSpeaker, addedMouse, completed));
    EXPECT_THAT(second.Heard(), ElementsAre(addedMouse, completed));
}
