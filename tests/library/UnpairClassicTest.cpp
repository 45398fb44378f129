// The Classic side of unpairing, from outside: how the device is found, what the platform is asked, what follows.
#include "tests/library/UnpairHost.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <thread>

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    constexpr char pending[] = "[device.classic.unpairing]\nduration-ms = 'never'\n";

    std::string EntryRecord()
    {
        return Record(1145, classicUnpairing, "Entery unpaired  name-> Tag");
    }

    std::chrono::milliseconds DurationOf(Vorlink& vorlink, std::string const& name)
    {
        auto const start = std::chrono::steady_clock::now();
        vorlink.UnpairedCurrent(name, UnpairHost::Callback);
        return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    }
} // namespace

TEST(UnpairClassic, WithoutLeDataReportsSuccessBehindItsRecords)
{
    Load(PairedTag("'classic'"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    auto const call = UnpairHost::At(0);
    EXPECT_TRUE(call.success);
    EXPECT_EQ(call.reserved, 0);
    std::vector<std::string> const records = {
        EntryRecord(),
        Record(1174, classicUnpairing, "unpaired Classic Blueth,start unpaired ble device " + std::string(tagAt)),
        Record(1177, classicUnpairing, "device Id -> "), Record(1180, classicUnpairing, "ble data is bad ")};
    EXPECT_EQ(LogOf(classicUnpairing, call.log), records) << "at the callback";
    EXPECT_TRUE(UnpairHost::StaysAt(1));
    EXPECT_EQ(LogOf(classicUnpairing), records) << "and nothing behind it";
}

TEST(UnpairClassic, EntryIsRecordedBeforeTheLookup)
{
    Load(PairedTag("'classic'"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    auto const log = Log();
    ASSERT_GE(log.size(), 2u);
    EXPECT_EQ(log[0], EntryRecord());
    EXPECT_EQ(log[1], Record(399, "SubVorlink::GetDeviceforName", "Tag"));
}

TEST(UnpairClassic, AsksThePlatformInThisOrder)
{
    Load(PairedTag("'classic'"));
    MakeVorlink()->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    auto calls = WithoutTokens(Trace());
    std::erase_if(calls, [](std::string const& call) { return call.starts_with("!"); });
    auto const id = ClassicId(tagAt);
    EXPECT_THAT(calls, ElementsAre("DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties("
                                   "\"(System.Devices.Aep.ProtocolId:= \"{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}\") \", "
                                   "[\"System.Devices.Aep.DeviceAddress\", \"System.Devices.Aep.IsConnected\"], "
                                   "AssociationEndpoint) -> #1",
                                   "DeviceWatcher.add_Added(#1)", "DeviceWatcher.add_Updated(#1)",
                                   "DeviceWatcher.add_EnumerationCompleted(#1)", "DeviceWatcher.Start(#1)",
                                   "DeviceInformation.get_Name(" + id + ") -> \"Tag\"",
                                   "DeviceInformation.get_Pairing(" + id + ")",
                                   "DeviceInformationPairing.get_IsPaired(" + id + ") -> true",
                                   "DeviceInformationPairing.get_CanPair(" + id + ") -> true",
                                   "DeviceInformation.get_Id(" + id + ") -> \"" + id + "\"",
                                   "DeviceInformation.get_Pairing(" + id + ")",
                                   "DeviceInformationPairing.UnpairAsync(" + id + ")",
                                   "DeviceUnpairingResult.get_Status(" + id + ") -> Unpaired",
                                   "DeviceInformation.get_Id(" + id + ") -> \"" + id + "\""));
}

TEST(UnpairClassic, WithoutLeDataAsksForNoLeEndpoint)
{
    Load(PairedTag("'classic', 'le'"));
    MakeVorlink()->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::StaysAt(1));
    EXPECT_THAT(Trace({"DeviceInformation.CreateWatcher"}), SizeIs(1));
    EXPECT_THAT(Trace({"DeviceInformationPairing.UnpairAsync("}),
                ElementsAre("DeviceInformationPairing.UnpairAsync(" + ClassicId(tagAt) + ")"));
}

TEST(UnpairClassic, LeDataOfAnotherNameDoesNotCount)
{
    Load(PairedTag("'classic', 'le'"));
    auto const vorlink = MakeLoggingVorlink();
    KnowLe(*vorlink, "Other=" + std::string(tagAt) + "\n");
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
    EXPECT_THAT(Log(), Contains(Record(1180, classicUnpairing, "ble data is bad ")));
}

TEST(UnpairClassic, FindsADeviceThatCanNeitherPairNorIsPaired)
{
    Load(prompt + Device("Tag", tagAt, "can-pair = false"));
    auto const vorlink = MakeVorlink();
    EXPECT_LT(DurationOf(*vorlink, "Tag"), std::chrono::milliseconds(2900));
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_FALSE(UnpairHost::At(0).success); // already unpaired
}

TEST(UnpairClassic, LongNameMayBePartOfTheDevices)
{
    Load(prompt + Device("Kitchen Speaker 2 (left)", tagAt, "is-paired = true\n[device.unpairing]\nduration-ms = 0"));
    MakeVorlink()->UnpairedCurrent("Kitchen Speaker 2", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
}

TEST(UnpairClassic, FindsADeviceThatAppearsDuringTheSearch)
{
    Load(PairedTag("'classic'", "[device.classic]\nappears-ms = 'never'\n", patient));
    auto const vorlink = MakeVorlink();
    std::thread caller([&] { vorlink->UnpairedCurrent("Tag", UnpairHost::Callback); });
    EXPECT_TRUE(WaitForCall("DeviceWatcher.Start(#1)"));
    EXPECT_TRUE(SimulateDeviceAppears(ClassicId(tagAt).c_str())) << SimulatorLastError();
    EXPECT_TRUE(UnpairHost::WaitFor(1));
    caller.join();
    EXPECT_TRUE(UnpairHost::At(0).success);
}

TEST(UnpairClassic, PendingUnpairingGivesTheHostItsThreadBack)
{
    Load(PairedTag("'classic'", pending));
    auto const vorlink = MakeLoggingVorlink();
    EXPECT_LT(DurationOf(*vorlink, "Tag"), std::chrono::milliseconds(2900));
    EXPECT_TRUE(UnpairHost::StaysAt(0)) << "the platform has not answered";
    EXPECT_THAT(LogOf(classicUnpairing), ElementsAre(EntryRecord()));
    ASSERT_TRUE(SimulateUnpairingCompletes(ClassicId(tagAt).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_NE(UnpairHost::At(0).thread, GetCurrentThreadId());
}

TEST(UnpairClassic, KeepsItsDeviceWhenAnotherLookupTakesTheSlot)
{
    Load(PairedTag("'classic'", pending) + Device("Other", "00:00:00:00:00:01", "is-paired = true"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    vorlink->UnpairedCurrent("Other", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    ASSERT_TRUE(SimulateUnpairingCompletes(ClassicId(tagAt).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(UnpairHost::WaitFor(2));
    EXPECT_THAT(LogOf(classicUnpairing),
                Contains(Record(1174, classicUnpairing,
                                "unpaired Classic Blueth,start unpaired ble device " + std::string(tagAt))));
}

TEST(UnpairClassic, IdentifierWithoutDashHasNoPieceAndIsUnpairedAllTheSame)
{
    Load(PairedTag("'classic'", "[device.classic]\nid = 'Bluetooth#odd'"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
    EXPECT_THAT(LogOf(classicUnpairing),
                Contains(Record(1174, classicUnpairing, "unpaired Classic Blueth,start unpaired ble device ")));
}

TEST(UnpairClassic, PieceIsWhatStandsBetweenTheFirstTwoDashesInUtf8)
{
    Load(PairedTag("'classic'", "[device.classic]\nid = 'Bluetooth#x-\xc3\xbc:5e-rest'"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_THAT(
        LogOf(classicUnpairing),
        Contains(Record(1174, classicUnpairing, "unpaired Classic Blueth,start unpaired ble device \xc3\xbc:5e")));
}

TEST(UnpairClassic, LeavesTheStoreAndItsFileAsTheyAre)
{
    Load(PairedTag("'classic'"));
    auto const vorlink = MakeVorlink();
    KnowLe(*vorlink, "AA=BB\r\nrest");
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_EQ(ReadFile("MyLEData"), "AA=BB\r\nrest");
}

TEST(UnpairClassic, UnknownNameIsMetWithSilence)
{
    Load(PairedTag("'classic'"));
    auto const vorlink = MakeLoggingVorlink();
    EXPECT_LT(DurationOf(*vorlink, "Nobody"), std::chrono::milliseconds(2900)) << "the enumeration is complete";
    EXPECT_TRUE(UnpairHost::StaysAt(0));
    EXPECT_THAT(Log(), ElementsAre(Record(1145, classicUnpairing, "Entery unpaired  name-> Nobody"),
                                   Record(399, "SubVorlink::GetDeviceforName", "Nobody"),
                                   Record(416, "SubVorlink::GetDeviceforName", "Tag")));
    EXPECT_THAT(Trace({"DeviceInformationPairing."}), IsEmpty());
}

TEST(UnpairClassic, NameOfAnLeEndpointAloneIsUnknown)
{
    Load(PairedTag("'le'"));
    auto const vorlink = MakeVorlink();
    KnowLe(*vorlink, "Tag=" + std::string(tagAt) + "\n");
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    EXPECT_TRUE(UnpairHost::StaysAt(0));
    EXPECT_THAT(Trace({"DeviceInformationPairing."}), IsEmpty());
}

TEST(SlowUnpairClassic, UnknownNameGivesTheHostItsThreadBackAfterThreeSecondsAtTheLatest)
{
    Load(PairedTag("'classic'", "", patient));
    auto const vorlink = MakeVorlink();
    auto const duration = DurationOf(*vorlink, "Nobody");
    EXPECT_GE(duration, std::chrono::milliseconds(2990));
    EXPECT_LT(duration, std::chrono::milliseconds(4500));
    EXPECT_TRUE(UnpairHost::StaysAt(0));
}
