// Unpairing: its statuses, and what watchers hear of it.
#include "tests/simulator/CeremonyClient.h"
#include "tests/simulator/Recorder.h"

using namespace test;
using testing::ElementsAre;

namespace
{
    using Status = DeviceUnpairingResultStatus;

    std::string Quick(std::string const& keys = {})
    {
        return "[device.unpairing]\nduration-ms = 0\n" + keys + "\n";
    }

    using Unpairing = SimulatorTest;

    class UnpairingStatus : public Unpairing, public testing::WithParamInterface<int>
    {
    };
} // namespace

TEST_P(UnpairingStatus, IsWhatTheScenarioSays)
{
    Load(Room({}, "[device.unpairing]\nduration-ms = 'never'\n"));
    auto const operation = BeginUnpair(FindDevice(mouse));
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Started);
    ASSERT_EQ(SimulateUnpairingCompletes(mouse, GetParam()), 1);
    EXPECT_EQ(UnpairOutcome(operation), GetParam());
    EXPECT_EQ(IsPaired(FindDevice(mouse)), GetParam() != 0);
}

INSTANTIATE_TEST_SUITE_P(Every, UnpairingStatus, testing::Range(0, 6)); // 5 is one that the platform does not define

TEST_F(Unpairing, WithoutDurationIsOverWhenTheCallReturns)
{
    Load(Room({}, Quick()));
    auto const operation = BeginUnpair(FindDevice(mouse));
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Completed);
    EXPECT_EQ(UnpairOutcome(operation), static_cast<int>(Status::Unpaired));
    Com<IDeviceUnpairingResult> result;
    operation->GetResults(result.Put());
    EXPECT_EQ(ClassNameOf(result.Get()), "Windows.Devices.Enumeration.DeviceUnpairingResult");
}

TEST_F(Unpairing, RefusesWhatIsNotPaired)
{
    EXPECT_EQ(UnpairOutcome(BeginUnpair(FindDevice(speaker))), static_cast<int>(Status::AlreadyUnpaired));
}

TEST_F(Unpairing, OneAtATime)
{
    Load(Room({}, "[device.unpairing]\nduration-ms = 'never'\n"));
    auto const device = FindDevice(mouse);
    auto const first = BeginUnpair(device);
    EXPECT_EQ(UnpairOutcome(BeginUnpair(device)), static_cast<int>(Status::OperationAlreadyInProgress));
    EXPECT_EQ(SimulatePairingCompletes(mouse, 0), 0); // it is no pairing
    EXPECT_EQ(SimulateUnpairingFails(mouse, E_FAIL), 1);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(StatusOf(first), AsyncStatus::Error);
}

TEST_F(Unpairing, IsSeenAsAnUpdate)
{
    Load(Room({}, Quick("effect = 'Updated'")));
    auto const device = FindDevice(mouse);
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    recorder.Heard();
    BeginUnpair(device);
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Updated ") + mouse + " System.Devices.Aep.IsPaired"));
    EXPECT_TRUE(IsPaired(device)); // the old object is a snapshot
}

TEST_F(Unpairing, IsSeenAsARemovalWhereTheScenarioSaysSo)
{
    Load(Room({}, Quick("effect = 'Removed'")));
    auto const device = FindDevice(mouse);
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    recorder.Heard();
    BeginUnpair(device);
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Removed ") + mouse));
    EXPECT_EQ(SimulateDeviceAppears(mouse), 1);
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Added ") + mouse));
}

TEST_F(Unpairing, RemovesFromAWatcherOfPairedDevices)
{
    Load(Room({}, Quick()));
    auto const device = FindDevice(mouse);
    auto const watcher = MakeWatcher(pairedOnly);
    Recorder recorder(watcher);
    watcher->Start();
    recorder.Heard();
    BeginUnpair(device);
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Removed ") + mouse));
}
