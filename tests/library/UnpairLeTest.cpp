// The LE side of unpairing, from outside: it follows the Classic side when the data store knows the device.
#include "tests/library/UnpairHost.h"
#include "tests/support/LiveObjects.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <windows.h>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    // Without the end of the first run's registrations: its watcher may be gone already.
    std::vector<std::string> CallsOfLeSide()
    {
        auto calls = WithoutTokens(Trace());
        std::erase_if(calls, [](std::string const& call) {
            return call.starts_with("!") || call.starts_with("DeviceWatcher.remove_");
        });
        auto begin = calls.begin();
        for (auto call = calls.begin(); call != calls.end(); ++call)
        {
            begin = call->find("bb7bb05e") != std::string::npos ? call : begin;
        }
        return {begin, calls.end()};
    }
} // namespace

TEST(UnpairLe, BothEndpointsAreUnpairedOnceEachAndTheHostHearsOnce)
{
    auto const vorlink = UnpairTag(PairedTag("'classic', 'le'"));
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
    EXPECT_EQ(UnpairHost::At(0).reserved, 0);
    EXPECT_TRUE(UnpairHost::StaysAt(1));
    EXPECT_THAT(Trace({"DeviceInformationPairing.UnpairAsync("}),
                ElementsAre("DeviceInformationPairing.UnpairAsync(" + ClassicId(tagAddress) + ")",
                            "DeviceInformationPairing.UnpairAsync(" + LeId(tagAddress) + ")"));
}

TEST(UnpairLe, BeginsBehindTheRecordOfTheStoresPiece)
{
    auto const vorlink = UnpairTag(PairedTag("'classic', 'le'"));
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_THAT(LogOf(classicUnpairing),
                ElementsAre(Record(1145, classicUnpairing, "Entery unpaired  name-> Tag"),
                            Record(1174, classicUnpairing,
                                   "unpaired Classic Blueth,start unpaired ble device " + std::string(tagAddress)),
                            Record(1177, classicUnpairing, "device Id -> " + std::string(tagAddress))));
    EXPECT_EQ(LogOf(leUnpairing).at(0), Record(1066, leUnpairing, "ble   destStr is " + std::string(tagAddress) + " "));
}

TEST(UnpairLe, AsksThePlatformInThisOrder)
{
    auto const vorlink = UnpairTag(PairedTag("'classic', 'le'"));
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    auto const id = LeId(tagAddress);
    EXPECT_THAT(CallsOfLeSide(),
                ElementsAre("DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties("
                            "\"(System.Devices.Aep.ProtocolId:=\"{bb7bb05e-5972-42b5-94fc-76eaa7084d49}\") \", "
                            "[\"System.Devices.Aep.DeviceAddress\", \"System.Devices.Aep.IsConnected\"], "
                            "AssociationEndpoint) -> #2",
                            "DeviceWatcher.add_Added(#2)", "DeviceWatcher.add_Updated(#2)",
                            "DeviceWatcher.add_EnumerationCompleted(#2)", "DeviceWatcher.Start(#2)",
                            "DeviceInformation.get_Id(" + id + ") -> \"" + id + "\"",
                            "DeviceInformation.get_Pairing(" + id + ")",
                            "DeviceInformationPairing.get_IsPaired(" + id + ") -> true",
                            "DeviceInformationPairing.get_CanPair(" + id + ") -> true",
                            "DeviceInformation.get_Id(" + id + ") -> \"" + id + "\"",
                            "DeviceInformation.get_Pairing(" + id + ")",
                            "DeviceInformationPairing.UnpairAsync(" + id + ")",
                            "DeviceUnpairingResult.get_Status(" + id + ") -> Unpaired"));
}

TEST(UnpairLe, RunsOnAThreadOfItsOwn)
{
    auto const vorlink = UnpairTag(PairedTag("'classic', 'le'"));
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    unsigned long classic = 0;
    unsigned long le = 0;
    for (auto const& line : TraceLines())
    {
        classic = line.text.starts_with("DeviceWatcher.Start(#1)") ? line.thread : classic;
        le = line.text.starts_with("DeviceWatcher.Start(#2)") ? line.thread : le;
    }
    EXPECT_EQ(classic, GetCurrentThreadId());
    EXPECT_NE(le, 0u);
    EXPECT_NE(le, classic);
    EXPECT_NE(UnpairHost::At(0).thread, classic);
}

TEST(UnpairLe, ClassicSideReportsNothingOfItsOwn)
{
    auto const vorlink = UnpairTag(PairedTag("'classic', 'le'", "[device.le.unpairing]\nduration-ms = 'never'\n"));
    EXPECT_TRUE(WaitForCall("UnpairAsync(" + LeId(tagAddress)));
    EXPECT_TRUE(UnpairHost::StaysAt(0));
    EXPECT_THAT(LogOf(leUnpairing), SizeIs(1));
    ASSERT_TRUE(SimulateUnpairingCompletes(LeId(tagAddress).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
}

TEST(UnpairLe, AnswerMayComeLongAfterTheThreadsEnd)
{
    auto const vorlink = UnpairTag(PairedTag("'classic', 'le'", "[device.le.unpairing]\nduration-ms = 'never'\n"));
    EXPECT_TRUE(WaitForCall("UnpairAsync(" + LeId(tagAddress)));
    Sleep(700); // the thread lasts for 400 ms
    ASSERT_TRUE(SimulateUnpairingCompletes(LeId(tagAddress).c_str(), 0)) << SimulatorLastError();
    EXPECT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(WaitForRecords(leUnpairing, 2));
}

TEST(UnpairLe, FailedClassicSideEndsItBeforeItBegins)
{
    auto const vorlink =
        UnpairTag(PairedTag("'classic', 'le'", "[device.classic.unpairing]\nstatus = 'AccessDenied'\n"));
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_FALSE(UnpairHost::At(0).success);
    EXPECT_TRUE(UnpairHost::StaysAt(1));
    EXPECT_THAT(Trace({"DeviceInformation.CreateWatcher"}), SizeIs(1));
    EXPECT_THAT(LogOf(leUnpairing), IsEmpty());
}

TEST(UnpairLe, LeavesNoneOfThePlatformsObjectsBehind)
{
    auto const vorlink = UnpairTag(PairedTag("'classic', 'le'"));
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    ASSERT_TRUE(WaitIdle());
    auto const first = SimulatorLiveObjects();
    ASSERT_TRUE(SimulateDeviceChanges(ClassicId(tagAddress).c_str(), "System.Devices.Aep.IsPaired", "true"));
    ASSERT_TRUE(SimulateDeviceChanges(LeId(tagAddress).c_str(), "System.Devices.Aep.IsPaired", "true"));
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(2));
    ASSERT_TRUE(WaitIdle());
    EXPECT_TRUE(LiveObjectsFallTo(first)) << "each unpairing lets go of all that it took";
}
