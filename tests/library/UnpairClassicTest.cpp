// The Classic side of unpairing, from outside: what the platform is asked, and what follows.
#include "tests/library/UnpairHost.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::SizeIs;

TEST(UnpairClassic, WithoutLeDataReportsSuccessBehindItsRecords)
{
    Load(PairedTag("'classic'"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    auto const call = UnpairHost::At(0);
    EXPECT_TRUE(call.success);
    EXPECT_EQ(call.reserved, 0);
    auto const records = ClassicRecords(true);
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
    EXPECT_EQ(log[0], ClassicRecords(false).at(0));
    EXPECT_EQ(log[1], Record(399, "SubVorlink::GetDeviceforName", "Tag"));
}

TEST(UnpairClassic, AsksThePlatformInThisOrder)
{
    Load(PairedTag("'classic'"));
    MakeVorlink()->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    auto calls = WithoutTokens(Trace());
    std::erase_if(calls, [](std::string const& call) { return call.starts_with("!"); });
    auto const id = ClassicId(tagAddress);
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
                ElementsAre("DeviceInformationPairing.UnpairAsync(" + ClassicId(tagAddress) + ")"));
}

TEST(UnpairClassic, LeDataOfAnotherNameDoesNotCount)
{
    Load(PairedTag("'classic', 'le'"));
    auto const vorlink = MakeLoggingVorlink();
    KnowLe(*vorlink, "Other=" + std::string(tagAddress) + "\n");
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
    EXPECT_THAT(Log(), Contains(Record(1180, classicUnpairing, "ble data is bad ")));
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
