// What watchers report, when, on which thread.
#include "tests/simulator/Recorder.h"

#include <windows.h>
#include <objbase.h>

#include <cstdint>
#include <thread>

using namespace client;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    std::string const addedSpeaker = std::string("Added ") + speaker;
    std::string const addedMouse = std::string("Added ") + mouse;
    std::string const addedLamp = std::string("Added ") + lamp;
    constexpr auto completed = "EnumerationCompleted in status 2";
    constexpr auto pairedOnly = "System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#True";
    constexpr auto leOnly = "System.Devices.Aep.ProtocolId:=\"{bb7bb05e-5972-42b5-94fc-76eaa7084d49}\"";

    class WatcherEvents : public SimulatorTest
    {
    protected:
        static std::vector<std::string> HeardBy(Com<IDeviceWatcher> const& watcher)
        {
            Recorder recorder(watcher);
            EXPECT_EQ(watcher->Start(), S_OK);
            auto heard = recorder.Heard();
            EXPECT_EQ(watcher->Stop(), S_OK);
            recorder.Heard();
            return heard;
        }
    };
} // namespace

TEST_F(WatcherEvents, BeginWithEveryDeviceThenCompletion)
{
    EXPECT_THAT(HeardBy(MakeWatcher()), ElementsAre(addedSpeaker, addedMouse, completed));
}

TEST_F(WatcherEvents, FollowTheFilter)
{
    EXPECT_THAT(HeardBy(MakeWatcher(pairedOnly)), ElementsAre(addedMouse, completed));
    EXPECT_THAT(HeardBy(MakeWatcher(leOnly)), ElementsAre(addedMouse, completed));
}

TEST_F(WatcherEvents, KnowAssociationEndpointsOnly)
{
    for (auto const kind : {DeviceInformationKind::DeviceInterface, DeviceInformationKind::Device,
                            DeviceInformationKind::AssociationEndpointContainer})
    {
        Com<IDeviceWatcher> watcher;
        ASSERT_EQ(TryMakeWatcher({}, {}, watcher, kind), S_OK);
        EXPECT_THAT(HeardBy(watcher), ElementsAre(completed));
    }
    Com<IDeviceWatcher> watcher; // without a kind it looks for interfaces
    ASSERT_EQ(Statics()->CreateWatcherAqsFilter(nullptr, watcher.Put()), S_OK);
    EXPECT_THAT(HeardBy(watcher), ElementsAre(completed));
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
    EXPECT_THAT(recorder.Threads(), testing::Not(testing::Contains(GetCurrentThreadId())));
    EXPECT_THAT(recorder.Threads(), testing::SizeIs(5));
}

TEST_F(WatcherEvents, ComeInTheMultithreadedApartment)
{
    auto const watcher = MakeWatcher();
    EventRegistrationToken token{};
    std::atomic<int> apartment{-1};
    watcher->add_EnumerationCompleted(On<WatcherHandler>([&](IDeviceWatcher*, ::IInspectable*) {
                                          APTTYPE type{};
                                          APTTYPEQUALIFIER qualifier{};
                                          CoGetApartmentType(&type, &qualifier);
                                          apartment = type;
                                          return S_OK;
                                      }).Get(),
                                      &token);
    watcher->Start();
    WaitIdle();
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
                               Trace();
                           }).join();
                           return S_OK;
                       }).Get(),
                       &token);
    watcher->Start();
    WaitIdle();
    EXPECT_EQ(TraceLines("! DeviceWatcher.Added(#1").size(), 2u);
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

TEST_F(WatcherEvents, ReportArrivalsAndDepartures)
{
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    recorder.Heard();
    EXPECT_EQ(SimulateDeviceAppears(lamp), 1);
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedLamp));
    EXPECT_EQ(SimulateDeviceLeaves(lamp), 1);
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Removed ") + lamp));
    EXPECT_EQ(SimulateDeviceAppears(lamp), 1);
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedLamp));
}

TEST_F(WatcherEvents, LeaveOutLateComersWhereTheScenarioSaysSo)
{
    Play(Room({}, {}, "enumeration-completes-ms = 0\nappear-after-completion = false"));
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    recorder.Heard();
    SimulateDeviceAppears(lamp);
    SimulateDeviceChanges(lamp, "System.ItemNameDisplay", "\"Bright\"");
    SimulateDeviceLeaves(lamp);
    EXPECT_THAT(recorder.Heard(), IsEmpty());
    SimulateDeviceAppears(lamp);
    watcher->Stop();
    recorder.Heard();
    watcher->Start(); // a new search finds it
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedSpeaker, addedMouse, addedLamp, completed));
}

TEST_F(WatcherEvents, UpdateNamesChangedPropertiesOnly)
{
    auto const watcher = MakeWatcher({}, {"System.Devices.Aep.SignalStrength"});
    Recorder recorder(watcher);
    watcher->Start();
    recorder.Heard();
    SimulateDeviceChanges(speaker, "System.Devices.Aep.SignalStrength", "-42");
    EXPECT_THAT(recorder.Heard(),
                ElementsAre(std::string("Updated ") + speaker + " System.Devices.Aep.SignalStrength"));
    SimulateDeviceChanges(speaker, "System.Devices.Aep.SignalStrength", "-42");
    EXPECT_THAT(recorder.Heard(), IsEmpty()); // no change
    SimulateDeviceChanges(speaker, "System.Devices.Aep.IsConnected", "true");
    EXPECT_THAT(recorder.Heard(), IsEmpty()); // not asked for
    SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"New\"");
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Updated ") + speaker + " System.ItemNameDisplay"));
}

TEST_F(WatcherEvents, ComeOnlyForDevicesThatWereAdded)
{
    auto const watcher = MakeWatcher(pairedOnly);
    Recorder recorder(watcher);
    watcher->Start();
    recorder.Heard();
    SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"New\"");
    SimulateDeviceChanges(lamp, "System.ItemNameDisplay", "\"Dark\"");
    SimulateDeviceLeaves(speaker);
    EXPECT_THAT(recorder.Heard(), IsEmpty());
}

TEST_F(WatcherEvents, FollowChangesIntoAndOutOfTheFilter)
{
    auto const watcher = MakeWatcher(pairedOnly);
    Recorder recorder(watcher);
    watcher->Start();
    recorder.Heard();
    SimulateDeviceChanges(speaker, "System.Devices.Aep.IsPaired", "true");
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedSpeaker));
    SimulateDeviceChanges(speaker, "System.Devices.Aep.IsPaired", "false");
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Removed ") + speaker));
}

TEST_F(WatcherEvents, FollowTheScenariosTimes)
{
    Play(Room("appears-ms = 20\nleaves-ms = 80\n[[device.change]]\nat-ms = 60\n"
              "property = \"System.ItemNameDisplay\"\nvalue = \"Late\"\n",
              {}, "enumeration-completes-ms = 40"));
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    for (std::uint32_t run = 1; run <= 2; ++run) // each start lives through them anew
    {
        watcher->Start();
        ASSERT_EQ(SimulatorWaitForTrace("! DeviceWatcher.Removed(#1", run, patience), 1);
        EXPECT_THAT(recorder.Heard(), ElementsAre(addedMouse, addedSpeaker, completed,
                                                  std::string("Updated ") + speaker + " System.ItemNameDisplay",
                                                  std::string("Removed ") + speaker));
        watcher->Stop();
        recorder.Heard();
    }
}

TEST_F(WatcherEvents, VerbsOverrideTheScenariosTimes)
{
    Play(Room("appears-ms = 60000\n"));
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedMouse, completed));
    EXPECT_EQ(SimulateDeviceAppears(speaker), 1);
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedSpeaker));
}

TEST_F(WatcherEvents, RepeatADeviceThatHasNotLeft)
{
    auto const watcher = MakeWatcher();
    auto const others = MakeWatcher(leOnly);
    Recorder recorder(watcher);
    Recorder othersRecorder(others);
    watcher->Start();
    others->Start();
    recorder.Heard();
    othersRecorder.Heard();
    EXPECT_EQ(SimulateDeviceRepeats(speaker), 1);
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedSpeaker));
    EXPECT_THAT(othersRecorder.Heard(), IsEmpty()) << "it has not reported the device, and does not now";
    EXPECT_EQ(SimulateDeviceLeaves(speaker), 1);
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Removed ") + speaker)) << "once, however often added";
}

TEST_F(WatcherEvents, RepeatADeviceInTheScenariosTime)
{
    Play(Room("appears-ms = 10\nrepeats-ms = 20\n", {}, "enumeration-completes-ms = 30"));
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    ASSERT_EQ(SimulatorWaitForTrace("! DeviceWatcher.EnumerationCompleted(#1", 1, patience), 1);
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedMouse, addedSpeaker, addedSpeaker, completed));
}

TEST_F(WatcherEvents, ReportAnUnfilteredDeviceWhateverTheFilter)
{
    Play(Room("unfiltered = true\ncan-pair = false\n"));
    EXPECT_THAT(HeardBy(MakeWatcher(pairedOnly)), ElementsAre(addedSpeaker, addedMouse, completed));
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
    ASSERT_EQ(SimulatorWaitForTrace("! DeviceWatcher.Added(#1", 1, patience), 1);
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
