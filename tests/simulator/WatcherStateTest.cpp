// The watcher's states, row by row: what Start and Stop answer in each.
#include "tests/simulator/Recorder.h"

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    class WatcherState : public SimulatorTest
    {
    protected:
        Com<IDeviceWatcher> watcher;

        void SetUp() override
        {
            SimulatorTest::SetUp();
            Load(Room({}, {}, "enumeration-completes-ms = 'never'"));
            watcher = MakeWatcher();
        }
    };
} // namespace

TEST_F(WatcherState, CreatedCannotStop)
{
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Created);
    EXPECT_EQ(watcher->Stop(), illegalMethodCall);
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Created);
}

TEST_F(WatcherState, CreatedStartsAndSaysSoAtOnce)
{
    EXPECT_EQ(watcher->Start(), S_OK);
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Started);
}

TEST_F(WatcherState, StartedCannotStart)
{
    ASSERT_EQ(watcher->Start(), S_OK);
    EXPECT_EQ(watcher->Start(), illegalMethodCall);
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Started);
}

TEST_F(WatcherState, StartedStops)
{
    Recorder recorder(watcher);
    ASSERT_EQ(watcher->Start(), S_OK);
    ASSERT_TRUE(WaitIdle());
    recorder.Heard();
    EXPECT_EQ(watcher->Stop(), S_OK);
    EXPECT_THAT(recorder.Heard(), ElementsAre("Stopped in status 4"));
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Stopped);
}

TEST_F(WatcherState, EnumerationCompletedCannotStartButStops)
{
    Recorder recorder(watcher);
    ASSERT_EQ(watcher->Start(), S_OK);
    SimulateEnumerationCompletes();
    EXPECT_THAT(recorder.Heard(), Contains("EnumerationCompleted in status 2"));
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::EnumerationCompleted);
    EXPECT_EQ(watcher->Start(), illegalMethodCall);
    EXPECT_EQ(watcher->Stop(), S_OK);
    EXPECT_THAT(recorder.Heard(), ElementsAre("Stopped in status 4"));
}

TEST_F(WatcherState, StoppingCannotStartNorStop)
{
    Recorder recorder(watcher);
    SimulatorHoldEvents();
    ASSERT_EQ(watcher->Start(), S_OK);
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Added(#1")); // and is held
    ASSERT_EQ(watcher->Stop(), S_OK);
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Stopping);
    EXPECT_EQ(watcher->Start(), illegalMethodCall);
    EXPECT_EQ(watcher->Stop(), illegalMethodCall);
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Stopping);
    SimulatorReleaseEvents();
    EXPECT_EQ(recorder.Heard().back(), "Stopped in status 4");
}

TEST_F(WatcherState, StoppedCannotStopButStartsAgainAndReportsAfresh)
{
    Recorder recorder(watcher);
    ASSERT_EQ(watcher->Start(), S_OK);
    EXPECT_THAT(recorder.Heard(), SizeIs(2));
    ASSERT_EQ(watcher->Stop(), S_OK);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(watcher->Stop(), illegalMethodCall);
    recorder.Heard();
    EXPECT_EQ(watcher->Start(), S_OK);
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Started);
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Added ") + speaker, std::string("Added ") + mouse));
}

TEST_F(WatcherState, AbortedIsTheSystemsDoing)
{
    Recorder recorder(watcher);
    ASSERT_EQ(watcher->Start(), S_OK);
    recorder.Heard();
    SimulateWatchersAbort();
    EXPECT_THAT(recorder.Heard(), ElementsAre("Stopped in status 5"));
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Aborted);
}

TEST_F(WatcherState, AbortedStopsWithoutEffectAndStartsAgain)
{
    Recorder recorder(watcher);
    ASSERT_EQ(watcher->Start(), S_OK);
    SimulateWatchersAbort();
    ASSERT_TRUE(WaitIdle());
    recorder.Heard();
    EXPECT_EQ(watcher->Stop(), S_OK);
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Aborted);
    EXPECT_THAT(recorder.Heard(), IsEmpty());
    EXPECT_EQ(watcher->Start(), S_OK);
    EXPECT_THAT(recorder.Heard(), SizeIs(2));
}

TEST_F(WatcherState, AbortLeavesWatchersAloneThatDoNotRun)
{
    SimulateWatchersAbort();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Created);
}

TEST_F(WatcherState, MayStartAgainInsideItsOwnStopped)
{
    EventRegistrationToken token{};
    std::atomic<int> stops = 0;
    watcher->add_Stopped(On<WatcherHandler>([&](IDeviceWatcher* sender, ::IInspectable*) {
                             return ++stops == 1 ? sender->Start() : S_OK;
                         }).Get(),
                         &token);
    ASSERT_EQ(watcher->Start(), S_OK);
    ASSERT_EQ(watcher->Stop(), S_OK);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Started);
    EXPECT_EQ(stops, 1);
}

TEST_F(WatcherState, NullStatusIsRefused)
{
    EXPECT_EQ(watcher->get_Status(nullptr), E_POINTER);
}

TEST_F(WatcherState, BackgroundTriggersAreLeftOut)
{
    void* trigger = nullptr;
    EXPECT_EQ(watcher.As<IDeviceWatcher2>()->GetBackgroundTrigger(nullptr, &trigger), E_NOTIMPL);
}
