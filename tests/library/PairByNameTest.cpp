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
    constexpr char paired[] = "SubVorlink::PairedDevice";
    constexpr char lookup[] = "SubVorlink::GetDeviceforName";
    constexpr char ceremony[] = "SubVorlink::PairingDevice";

    constexpr char address[] = "a4:c1:38:5e:22:0f";

    char const* const selector = R"("(System.Devices.Aep.ProtocolId:= "{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}") )"
                                 R"(AND(System.Devices.Aep.CanPair:= System.StructuredQueryType.Boolean#True OR )"
                                 R"q(System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#True)")q";

    std::unique_ptr<Vorlink> Logging()
    {
        auto vorlink = MakeVorlink();
        vorlink->SetLogEnabled(true);
        return vorlink;
    }
} // namespace

TEST(PairByName, FoundDeviceIsPairedAndReported)
{
    Load(prompt + Device("Headset", address));
    auto const vorlink = Logging();
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
    Load(prompt + Device("Headset", address, "[device.pairing]\nduration-ms = 0"));
    Logging()->PairedDevice("Headset", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    auto records = Log();
    std::erase_if(records, [](std::string const& record) { // of the reader, whose thread has just begun
        return record.find("[Function:ReadLine]") != std::string::npos;
    });
    EXPECT_THAT(records,
                ElementsAre(Record(1253, paired, "Call  Pair entry name ->Headset"), Record(399, lookup, "Headset"),
                            Record(416, lookup, "Headset"), Record(435, lookup, "tname  is Headset ,name is Headset "),
                            Record(437, lookup,
                                   "CLassic id is: " + ClassicId(address) + "  ,pair status : 1 , isPaired is:  0"),
                            Record(796, ceremony, "DevicePairingResultStatus::Paired")));
}

TEST(PairByName, CallsToThePlatformInTheirOrder)
{
    Load(prompt + Device("Headset", address, "[device.pairing]\nduration-ms = 0"));
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
    Logging()->PairedDevice("Nobody", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    auto const report = Host::At(0);
    EXPECT_EQ(report.address, 0u);
    EXPECT_EQ(report.paired, 0);
    EXPECT_EQ(Text(report.name), "Nobody");
    EXPECT_EQ(Text(report.addressText), "");
    EXPECT_EQ(Host::ThreadOf(0), GetCurrentThreadId());
    // The operation's own two, and the lookup's one for the requested text.
    EXPECT_THAT(Log(), ElementsAre(Record(1253, paired, "Call  Pair entry name ->Nobody"),
                                   Record(399, lookup, "Nobody"), Record(1260, paired, "Not Found dest  device")));
}

TEST(PairByName, UnknownNameIsRecordedBeforeTheReport)
{
    Load(prompt);
    Logging()->PairedDevice("Nobody", KeepLogThenReport);
    EXPECT_THAT(LogOf(paired, logAtReport), ElementsAre(Record(1253, paired, "Call  Pair entry name ->Nobody"),
                                                        Record(1260, paired, "Not Found dest  device")));
}

TEST(PairByName, ReportNamesTheRequestedTextAndNotTheDevice)
{
    Load(prompt + Device("Kitchen Speaker 2 (left)", address, "[device.pairing]\nduration-ms = 0"));
    MakeVorlink()->PairedDevice("Kitchen Speaker 2", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 1);
    EXPECT_EQ(Text(Host::At(0).name), "Kitchen Speaker 2");
}

TEST(PairByName, UnknownNameLeavesTheNameOfAPendingPairingAndReplacesItsCallback)
{
    Load(prompt + Device("Headset", address, "[device.pairing]\nduration-ms = 'never'"));
    auto const vorlink = MakeVorlink();
    vorlink->PairedDevice("Headset", Host::Callback);
    vorlink->PairedDevice("Nobody", OtherHost::Callback);
    EXPECT_EQ(OtherHost::Count(), 1u);
    ASSERT_TRUE(WaitForCall("Accept("));
    ASSERT_TRUE(SimulatePairingCompletes(ClassicId(address).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(OtherHost::WaitFor(2));
    EXPECT_EQ(Text(OtherHost::At(1).name), "Headset");
    EXPECT_EQ(OtherHost::At(1).address, 0xa4c1385e220fu);
    EXPECT_EQ(Host::Count(), 0u);
}

TEST(PairByName, EmptyNameIsLookedUpLikeAnyOther)
{
    Load(prompt + Device("Headset", address));
    Logging()->PairedDevice("", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Text(Host::At(0).name), "");
    EXPECT_THAT(Log(), ElementsAre(Record(1253, paired, "Call  Pair entry name ->"), Record(399, lookup, ""),
                                   Record(416, lookup, "Headset"), Record(1260, paired, "Not Found dest  device")));
}

TEST(PairByName, EmptyNameMatchesADeviceWithoutAName)
{
    Load(prompt + Device("", address, "[device.pairing]\nduration-ms = 0"));
    MakeVorlink()->PairedDevice("", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 1);
}

TEST(PairByName, TwoCallsStartTwoCeremoniesAndReportToTheLatestCallback)
{
    Load(prompt + Device("Headset", address, "[device.pairing]\nduration-ms = 'never'") +
         Device("Speaker", "a4:c1:38:5e:22:10", "[device.pairing]\nduration-ms = 'never'"));
    auto const vorlink = MakeVorlink();
    vorlink->PairedDevice("Headset", Host::Callback);
    vorlink->PairedDevice("Speaker", OtherHost::Callback);
    ASSERT_TRUE(WaitForCall("Accept(", 2));
    ASSERT_TRUE(SimulatePairingCompletes(ClassicId(address).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(OtherHost::WaitFor(1));
    ASSERT_TRUE(SimulatePairingCompletes(ClassicId("a4:c1:38:5e:22:10").c_str(), 19)) << SimulatorLastError();
    ASSERT_TRUE(OtherHost::WaitFor(2));
    EXPECT_EQ(Host::Count(), 0u);
    // The earlier ceremony reports its own device's address under the later name.
    EXPECT_EQ(OtherHost::At(0).address, 0xa4c1385e220fu);
    EXPECT_EQ(OtherHost::At(0).paired, 1);
    EXPECT_EQ(Text(OtherHost::At(0).name), "Speaker");
    EXPECT_EQ(OtherHost::At(1).paired, 0);
    EXPECT_EQ(Text(OtherHost::At(1).addressText), "a4c1385e2210");
}

TEST(PairByName, TwoPendingPairingsOfOneNameAreBothReported)
{
    constexpr char other[] = "a4:c1:38:5e:22:10";
    Load(prompt + Device("Headset", address, "[device.pairing]\nduration-ms = 'never'") +
         Device("Headset", other, "[device.pairing]\nduration-ms = 'never'"));
    auto const vorlink = MakeVorlink();
    vorlink->PairedDevice("Headset", Host::Callback);
    ASSERT_TRUE(SimulatorWaitIdle(20'000)); // the other one is queued then, and the next call takes it first
    vorlink->PairedDevice("Headset", Host::Callback);
    ASSERT_TRUE(WaitForCall("Accept(", 2));
    EXPECT_EQ(Host::Count(), 0u);
    ASSERT_TRUE(SimulatePairingCompletes(ClassicId(other).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(Host::WaitFor(1));
    ASSERT_TRUE(SimulatePairingCompletes(ClassicId(address).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(Host::WaitFor(2));
    EXPECT_EQ(Host::At(0).address, 0xa4c1385e2210u);
    EXPECT_EQ(Host::At(1).address, 0xa4c1385e220fu);
    for (std::size_t report = 0; report < 2; ++report)
    {
        EXPECT_EQ(Host::At(report).paired, 1);
        EXPECT_EQ(Text(Host::At(report).name), "Headset");
    }
    ASSERT_TRUE(SimulatorWaitIdle(20'000));
    EXPECT_EQ(Host::Count(), 2u);
}

TEST(PairByName, SecondCallForTheSameDeviceIsAnsweredByThePlatformAndNotReported)
{
    Load(prompt + Device("Headset", address, "[device.pairing]\nduration-ms = 'never'"));
    auto const vorlink = MakeVorlink();
    vorlink->PairedDevice("Headset", Host::Callback);
    ASSERT_TRUE(WaitForCall("Accept("));
    vorlink->PairedDevice("Headset", OtherHost::Callback);
    ASSERT_TRUE(WaitForCall("-> OperationAlreadyInProgress"));
    ASSERT_TRUE(SimulatePairingCompletes(ClassicId(address).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(OtherHost::WaitFor(1));
    EXPECT_EQ(OtherHost::At(0).paired, 1);
    EXPECT_EQ(Host::Count(), 0u);
}

TEST(PairByName, ReturnsWhileThePlatformIsStillPairing)
{
    Load(prompt + Device("Headset", address, "[device.pairing]\nduration-ms = 'never'"));
    MakeVorlink()->PairedDevice("Headset", Host::Callback);
    EXPECT_EQ(Host::Count(), 0u);
    ASSERT_TRUE(WaitForCall("Accept("));
    EXPECT_EQ(Host::Count(), 0u);
}
