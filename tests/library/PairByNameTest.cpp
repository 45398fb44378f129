// Pairing by name, from outside: the host's callback, the log byte for byte, and the platform's calls.
#include "tests/support/Host.h"
#include "tests/support/KeptLog.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <windows.h>

using namespace test;
using testing::ElementsAre;

namespace
{
    constexpr char address[] = "a4:c1:38:5e:22:0f";

    char const* const selector = R"("(System.Devices.Aep.ProtocolId:= "{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}") )"
                                 R"(AND(System.Devices.Aep.CanPair:= System.StructuredQueryType.Boolean#True OR )"
                                 R"q(System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#True)")q";
} // namespace

TEST(PairByName, FoundDeviceIsPairedAndReported)
{
    Load(prompt + Device("Headset", address));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->PairedDevice("Headset", Host::Callback);
    ASSERT_TRUE(Host::WaitFor(1));
    auto const report = Host::At(0);
    EXPECT_EQ(report.address, 0xa4c1385e220fu);
    EXPECT_EQ(report.paired, 1);
    EXPECT_EQ(Text(report.name), "Headset");
    EXPECT_EQ(Text(report.addressText), "");
    EXPECT_NE(Host::ThreadOf(0), GetCurrentThreadId()) << "the platform completed it later";
}

TEST(PairByName, RecordsOfASuccessByteForByte)
{
    Load(prompt + Device("Headset", address, pairsAtOnce));
    MakeLoggingVorlink()->PairedDevice("Headset", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    auto records = Log();
    std::erase_if(records, [](std::string const& record) { // of the reader, whose thread has just begun
        return record.find("[Function:ReadLine]") != std::string::npos;
    });
    EXPECT_THAT(records,
                ElementsAre(Record(1253, pairByName, "Call  Pair entry name ->Headset"), Record(399, lookup, "Headset"),
                            Record(416, lookup, "Headset"), Record(435, lookup, "tname  is Headset ,name is Headset "),
                            Record(437, lookup,
                                   "CLassic id is: " + ClassicId(address) + "  ,pair status : 1 , isPaired is:  0"),
                            Record(796, ceremony, "DevicePairingResultStatus::Paired")));
}

TEST(PairByName, CallsToThePlatformInTheirOrder)
{
    Load(prompt + Device("Headset", address, pairsAtOnce));
    MakeVorlink()->PairedDevice("Headset", Host::Callback);
    auto const id = ClassicId(address);
    auto const thread = GetCurrentThreadId();
    std::vector<std::string> ours;
    for (auto const& line : TraceLines())
    {
        if (line.thread == thread && !IsProjectionsOwn(line.text))
        {
            ours.push_back(line.text);
        }
    }
    EXPECT_THAT(WithoutTokens(ours),
                ElementsAre("DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties(" +
                                std::string(selector) + ", null, AssociationEndpoint) -> #1",
                            "DeviceWatcher.add_Added(#1)", "DeviceWatcher.add_Updated(#1)",
                            "DeviceWatcher.add_EnumerationCompleted(#1)", "DeviceWatcher.Start(#1)",
                            "DeviceInformation.get_Name(" + id + ") -> \"Headset\"",
                            "DeviceInformation.get_Pairing(" + id + ")",
                            "DeviceInformationPairing.get_IsPaired(" + id + ") -> false",
                            "DeviceInformationPairing.get_CanPair(" + id + ") -> true",
                            "DeviceInformation.get_Id(" + id + ") -> \"" + id + "\"",
                            "DeviceInformation.get_Id(" + id + ") -> \"" + id + "\"",
                            "DeviceInformation.get_Pairing(" + id + ")",
                            "DeviceInformationPairing.get_Custom(" + id + ")",
                            "DeviceInformationCustomPairing.add_PairingRequested(" + id + ")",
                            "DeviceInformationCustomPairing.PairWithProtectionLevelAsync(" + id +
                                ", ConfirmOnly, EncryptionAndAuthentication)",
                            "DeviceInformationCustomPairing.remove_PairingRequested(" + id + ")",
                            "DevicePairingResult.get_Status(" + id + ") -> Paired"));
}

TEST(PairByName, UnknownNameGivesExactlyThreeRecordsAndOneReportBeforeReturning)
{
    Load(prompt);
    MakeLoggingVorlink()->PairedDevice("Nobody", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    auto const report = Host::At(0);
    EXPECT_EQ(report.address, 0u);
    EXPECT_EQ(report.paired, 0);
    EXPECT_EQ(Text(report.name), "Nobody");
    EXPECT_EQ(Text(report.addressText), "");
    EXPECT_EQ(Host::ThreadOf(0), GetCurrentThreadId());
    // The operation's own two, and the lookup's one for the requested text.
    EXPECT_THAT(Log(), ElementsAre(Record(1253, pairByName, "Call  Pair entry name ->Nobody"),
                                   Record(399, lookup, "Nobody"), Record(1260, pairByName, "Not Found dest  device")));
}

TEST(PairByName, UnknownNameIsRecordedBeforeTheReport)
{
    Load(prompt);
    MakeLoggingVorlink()->PairedDevice("Nobody", KeepLogThenReport);
    EXPECT_THAT(LogOf(pairByName, logAtReport), ElementsAre(Record(1253, pairByName, "Call  Pair entry name ->Nobody"),
                                                            Record(1260, pairByName, "Not Found dest  device")));
}

TEST(PairByName, ReportNamesTheRequestedTextAndNotTheDevice)
{
    Load(prompt + Device("Kitchen Speaker 2 (left)", address, pairsAtOnce));
    MakeVorlink()->PairedDevice("Kitchen Speaker 2", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 1);
    EXPECT_EQ(Text(Host::At(0).name), "Kitchen Speaker 2");
}

TEST(PairByName, EmptyNameIsLookedUpLikeAnyOther)
{
    Load(prompt + Device("Headset", address));
    MakeLoggingVorlink()->PairedDevice("", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Text(Host::At(0).name), "");
    EXPECT_THAT(Log(), ElementsAre(Record(1253, pairByName, "Call  Pair entry name ->"), Record(399, lookup, ""),
                                   Record(416, lookup, "Headset"), Record(1260, pairByName, "Not Found dest  device")));
}

TEST(PairByName, EmptyNameMatchesADeviceWithoutAName)
{
    Load(prompt + Device("", address, pairsAtOnce));
    MakeVorlink()->PairedDevice("", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 1);
}
