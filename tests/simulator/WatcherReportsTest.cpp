// Which devices watchers report, and which of their changes.
#include "tests/simulator/Recorder.h"

#include <cstdint>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    using WatcherReports = SimulatorTest;
} // namespace

TEST_F(WatcherReports, FollowTheFilter)
{
    EXPECT_THAT(HeardBy(MakeWatcher(pairedOnly)), ElementsAre(addedMouse, completed));
    EXPECT_THAT(HeardBy(MakeWatcher(leOnly)), ElementsAre(addedMouse, completed));
}

TEST_F(WatcherReports, CoverArrivalsAndDepartures)
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

TEST_F(WatcherReports, LeaveOutLateComersWhereTheScenarioSaysSo)
{
    Load(Room({}, {}, "enumeration-completes-ms = 0\nappear-after-completion = false"));
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

TEST_F(WatcherReports, NameChangedPropertiesOnly)
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

TEST_F(WatcherReports, ComeOnlyForDevicesThatWereAdded)
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

TEST_F(WatcherReports, FollowChangesIntoAndOutOfTheFilter)
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

TEST_F(WatcherReports, FollowTheScenariosTimes)
{
    Load(Room("appears-ms = 20\nleaves-ms = 80\n[[device.change]]\nat-ms = 60\n"
              "property = 'System.ItemNameDisplay'\nvalue = 'Late'\n",
              {}, "enumeration-completes-ms = 40"));
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    for (std::uint32_t run = 1; run <= 2; ++run) // each start lives through them anew
    {
        watcher->Start();
        ASSERT_TRUE(WaitForCall("! DeviceWatcher.Removed(#1", run));
        EXPECT_THAT(recorder.Heard(), ElementsAre(addedMouse, addedSpeaker, completed,
                                                  std::string("Updated ") + speaker + " System.ItemNameDisplay",
                                                  std::string("Removed ") + speaker));
        watcher->Stop();
        recorder.Heard();
    }
}

TEST_F(WatcherReports, FollowVerbsAgainstTheScenariosTimes)
{
    Load(Room("appears-ms = 60000\n"));
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedMouse, completed));
    EXPECT_EQ(SimulateDeviceAppears(speaker), 1);
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedSpeaker));
}

TEST_F(WatcherReports, RepeatADeviceThatHasNotLeft)
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

TEST_F(WatcherReports, RepeatADeviceInTheScenariosTime)
{
    Load(Room("appears-ms = 10\nrepeats-ms = 20\n", {}, "enumeration-completes-ms = 30"));
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.EnumerationCompleted(#1"));
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedMouse, addedSpeaker, addedSpeaker, completed));
}

TEST_F(WatcherReports, CoverAnUnfilteredDeviceWhateverTheFilter)
{
    Load(Room("unfiltered = true\ncan-pair = false\n"));
    EXPECT_THAT(HeardBy(MakeWatcher(pairedOnly)), ElementsAre(addedSpeaker, addedMouse, completed));
}
