// Watchers that raise their events on several threads.
#include "tests/simulator/Gate.h"
#include "tests/simulator/Recorder.h"

#include <algorithm>
#include <iterator>
#include <memory>
#include <thread>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;
using testing::UnorderedElementsAre;

namespace
{
    class EventThreads : public SimulatorTest
    {
    protected:
        Gate gate;
        Com<IDeviceWatcher> watcher;
        std::unique_ptr<Recorder> recorder;

        // A watcher whose handlers of Added wait at the gate, behind those that write down.
        void Make(int threads, std::string const& top = "enumeration-completes-ms = 'never'")
        {
            Load(Room({}, {}, top + "\nevent-threads = " + std::to_string(threads)));
            watcher = MakeWatcher();
            recorder = std::make_unique<Recorder>(watcher);
            EventRegistrationToken token{};
            watcher->add_Added(
                On<AddedHandler>([this](IDeviceWatcher*, IDeviceInformation*) { return gate.Pass(); }).Get(), &token);
        }

        void TearDown() override
        {
            gate.Open();
            ASSERT_TRUE(WaitIdle());
        }

        std::vector<std::string> HeardAtTheEnd()
        {
            gate.Open();
            return recorder->Heard();
        }
    };

    int Rename(char const* id)
    {
        return SimulateDeviceChanges(id, "System.ItemNameDisplay", "\"New\"");
    }
} // namespace

TEST_F(EventThreads, RaiseTheEventsOfTwoEndpointsSideBySide)
{
    Make(2);
    watcher->Start();
    EXPECT_TRUE(gate.WaitFor(2));
    EXPECT_EQ(gate.Threads(), 2u);
    EXPECT_THAT(HeardAtTheEnd(), UnorderedElementsAre(addedSpeaker, addedMouse));
}

TEST_F(EventThreads, AreNoMoreThanTheScenarioSays)
{
    Make(2);
    SimulateDeviceAppears(lamp);
    watcher->Start();
    ASSERT_TRUE(gate.WaitFor(2));
    EXPECT_FALSE(gate.WaitFor(3, moment));
    EXPECT_THAT(HeardAtTheEnd(), UnorderedElementsAre(addedSpeaker, addedMouse, addedLamp));
    EXPECT_EQ(gate.Most(), 2);
}

TEST_F(EventThreads, AreOneUnlessTheScenarioSaysOtherwise)
{
    Load(Room({}, {}, "enumeration-completes-ms = 'never'"));
    watcher = MakeWatcher();
    recorder = std::make_unique<Recorder>(watcher);
    EventRegistrationToken token{};
    watcher->add_Added(On<AddedHandler>([this](IDeviceWatcher*, IDeviceInformation*) { return gate.Pass(); }).Get(),
                       &token);
    watcher->Start();
    ASSERT_TRUE(gate.WaitFor(1));
    EXPECT_FALSE(gate.WaitFor(2, moment));
    EXPECT_THAT(HeardAtTheEnd(), ElementsAre(addedSpeaker, addedMouse));
    EXPECT_EQ(gate.Threads(), 1u);
}

TEST_F(EventThreads, KeepTheOrderOfAnEndpointsOwnEvents)
{
    Make(3);
    watcher->Start();
    ASSERT_TRUE(gate.WaitFor(2));
    ASSERT_THAT(recorder->HeardSoFar(), UnorderedElementsAre(addedSpeaker, addedMouse));
    Rename(speaker);
    SimulateDeviceLeaves(speaker);
    SimulateDeviceAppears(lamp);
    ASSERT_TRUE(gate.WaitFor(3)) << "another endpoint's comes meanwhile";
    EXPECT_THAT(recorder->HeardSoFar(), ElementsAre(addedLamp));
    EXPECT_THAT(HeardAtTheEnd(), ElementsAre(std::string("Updated ") + speaker + " System.ItemNameDisplay",
                                             std::string("Removed ") + speaker));
}

TEST_F(EventThreads, CompleteWhenAllRaisedBeforeHasBeenDelivered)
{
    Make(3, "enumeration-completes-ms = 0");
    watcher->Start();
    ASSERT_TRUE(gate.WaitFor(2));
    std::this_thread::sleep_for(moment);
    EXPECT_THAT(TraceWith("! DeviceWatcher.EnumerationCompleted"), IsEmpty());
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Started);
    auto const heard = HeardAtTheEnd();
    EXPECT_THAT(heard, SizeIs(3));
    EXPECT_EQ(heard.back(), completed);
}

TEST_F(EventThreads, GoOnBesideTheCompletionsHandlers)
{
    Load(Room({}, {}, "enumeration-completes-ms = 'never'\nevent-threads = 2"));
    watcher = MakeWatcher();
    recorder = std::make_unique<Recorder>(watcher);
    EventRegistrationToken token{};
    watcher->add_EnumerationCompleted(
        On<WatcherHandler>([this](IDeviceWatcher*, ::IInspectable*) { return gate.Pass(); }).Get(), &token);
    watcher->Start();
    recorder->Heard();
    SimulatorHoldEvents();
    Rename(mouse);
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Updated"));
    SimulateEnumerationCompletes();
    SimulateDeviceAppears(lamp); // waits behind the completion, which waits for the mouse
    SimulatorReleaseEvents();
    ASSERT_TRUE(WaitForCall(std::string("! DeviceWatcher.Added(#1, ") + lamp));
    ASSERT_TRUE(gate.WaitFor(1));
    auto const heard = HeardAtTheEnd();
    EXPECT_THAT(
        heard, UnorderedElementsAre(std::string("Updated ") + mouse + " System.ItemNameDisplay", completed, addedLamp));
    EXPECT_THAT(heard.front(), StartsWith("Updated"));
}

TEST_F(EventThreads, StopWithoutWaitingForHandlersAndTellSoAtTheEnd)
{
    Make(3);
    watcher->Start();
    ASSERT_TRUE(gate.WaitFor(2));
    Rename(speaker);
    EXPECT_EQ(watcher->Stop(), S_OK);
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Stopping);
    std::this_thread::sleep_for(moment);
    EXPECT_THAT(TraceWith("! DeviceWatcher.Stopped"), IsEmpty());
    EXPECT_THAT(HeardAtTheEnd(), UnorderedElementsAre(addedSpeaker, addedMouse, stopped)) << "what was only due is not";
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Stopped);
    EXPECT_EQ(watcher->Start(), S_OK);
    EXPECT_THAT(recorder->Heard(), UnorderedElementsAre(addedSpeaker, addedMouse));
}

TEST_F(EventThreads, AreAllWaitedFor)
{
    Make(2);
    EXPECT_EQ(watcher->Start(), S_OK);
    ASSERT_TRUE(gate.WaitFor(2));
    Gate lampsGate;
    EventRegistrationToken token{};
    watcher->add_Updated(
        On<UpdateHandler>([&](IDeviceWatcher*, IDeviceInformationUpdate*) { return lampsGate.Pass(); }).Get(), &token);
    Rename(mouse);
    EXPECT_EQ(SimulatorWaitIdle(0), 0);
    gate.Open();
    ASSERT_TRUE(lampsGate.WaitFor(1));
    EXPECT_EQ(SimulatorWaitIdle(100), 0) << "one thread of two is still at it";
    lampsGate.Open();
    EXPECT_TRUE(WaitIdle());
}

TEST_F(EventThreads, AreAllHeld)
{
    Make(2);
    gate.Open();
    SimulatorHoldEvents();
    watcher->Start();
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Added", 2));
    EXPECT_THAT(recorder->HeardSoFar(), IsEmpty());
    SimulatorReleaseEvents();
    EXPECT_THAT(recorder->Heard(), UnorderedElementsAre(addedSpeaker, addedMouse));
}

TEST_F(EventThreads, AreCutOffByAReset)
{
    Make(2);
    SimulatorHoldEvents();
    watcher->Start();
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Added", 2));
    SimulatorReset();
    EXPECT_THAT(recorder->Heard(), IsEmpty());
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Aborted);
}

TEST_F(EventThreads, EndWithTheWatcherThatIsLetGoOf)
{
    Make(2);
    watcher->Start();
    ASSERT_TRUE(gate.WaitFor(2));
    watcher.Reset();
    EXPECT_THAT(HeardAtTheEnd(), UnorderedElementsAre(addedSpeaker, addedMouse));
    EXPECT_THAT(TraceWith("! DeviceWatcher.Stopped"), IsEmpty());
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
}

TEST_F(EventThreads, FollowTheScenariosTimes)
{
    Load(Room("appears-ms = 20\nleaves-ms = 80\n[[device.change]]\nat-ms = 60\n"
              "property = 'System.ItemNameDisplay'\nvalue = 'Late'\n",
              {}, "enumeration-completes-ms = 40\nevent-threads = 4"));
    watcher = MakeWatcher();
    recorder = std::make_unique<Recorder>(watcher);
    for (std::uint32_t run = 1; run <= 2; ++run)
    {
        watcher->Start();
        ASSERT_TRUE(WaitForCall("! DeviceWatcher.Removed(#1", run));
        // On a busy machine events of different times are due at once, and then come side by side: what orders them is
        // the endpoint, and the completion behind all that came before it.
        auto const heard = recorder->Heard();
        std::vector<std::string> ofTheSpeaker;
        std::ranges::copy_if(heard, std::back_inserter(ofTheSpeaker),
                             [](std::string const& event) { return event.find(speaker) != std::string::npos; });
        EXPECT_THAT(ofTheSpeaker,
                    ElementsAre(addedSpeaker, std::string("Updated ") + speaker + " System.ItemNameDisplay",
                                std::string("Removed ") + speaker));
        EXPECT_EQ(heard.size(), 5u);
        auto const end = std::ranges::find(heard, completed);
        EXPECT_NE(end, heard.end());
        EXPECT_NE(std::find(heard.begin(), end, addedMouse), end);
        EXPECT_NE(std::find(heard.begin(), end, addedSpeaker), end);
        watcher->Stop();
        EXPECT_THAT(recorder->Heard(), ElementsAre(stopped));
    }
}
