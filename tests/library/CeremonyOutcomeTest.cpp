// The ceremony's outcomes: what the host hears, what the log says.
#include "tests/support/Host.h"
#include "tests/support/KeptLog.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    constexpr char address[] = "a4:c1:38:5e:22:0f";

    void PairWithStatus(int status)
    {
        Load(prompt +
             Device("Headset", address, "[device.pairing]\nduration-ms = 0\nstatus = " + std::to_string(status)));
        auto const vorlink = MakeLoggingVorlink();
        vorlink->PairedDevice("Headset", Host::Callback);
    }

    struct Outcome
    {
        int status;
        char const* name;
        int line;
    };

    void PrintTo(Outcome const& outcome, std::ostream* stream)
    {
        *stream << outcome.name;
    }

    using CeremonyOutcome = testing::TestWithParam<Outcome>;

    constexpr Outcome outcomes[] = {
        {0, "Paired", 796},
        {1, "NotReadyToPair", 956},
        {2, "NotPaired", 942},
        {3, "AlreadyPaired", 825},
        {4, "ConnectionRejected", 877},
        {5, "TooManyConnections", 1036},
        {6, "HardwareFailure", 903},
        {7, "AuthenticationTimeout", 864},
        {8, "AuthenticationNotAllowed", 851},
        {9, "AuthenticationFailure", 838},
        {10, "NoSupportedProfiles", 929},
        {11, "ProtectionLevelCouldNotBeMet", 983},
        {12, "AccessDenied", 810},
        {13, "InvalidCeremonyData", 916},
        {14, "PairingCanceled", 969},
        {16, "RequiredHandlerNotRegistered", 1023},
        {17, "RejectedByHandler", 996},
        {18, "RemoteDeviceHasAssociation", 1010},
        {19, "Failed", 890},
    };
} // namespace

TEST_P(CeremonyOutcome, IsReportedAndRecorded)
{
    auto const& outcome = GetParam();
    PairWithStatus(outcome.status);
    ASSERT_EQ(Host::Count(), 1u);
    auto const report = Host::At(0);
    bool const paired = outcome.status == 0;
    EXPECT_EQ(report.address, 0xa4c1385e220fu);
    EXPECT_EQ(report.paired, paired ? 1 : 0);
    EXPECT_EQ(Text(report.name), "Headset");
    EXPECT_EQ(Text(report.addressText), paired ? "" : "a4c1385e220f");
    std::string const message = std::string("DevicePairingResultStatus::") + outcome.name;
    if (outcome.status == 3)
    {
        EXPECT_THAT(LogOf(ceremony), ElementsAre(Record(818, ceremony, "181149781336591     paired success\n"),
                                                 Record(825, ceremony, message)));
    }
    else
    {
        EXPECT_THAT(LogOf(ceremony), ElementsAre(Record(outcome.line, ceremony, message)));
    }
}

INSTANTIATE_TEST_SUITE_P(All, CeremonyOutcome, testing::ValuesIn(outcomes),
                         [](auto const& test) { return std::string(test.param.name); });

TEST(CeremonyOutcome, OperationAlreadyInProgressIsNeitherReportedNorRecorded)
{
    PairWithStatus(15);
    EXPECT_EQ(Host::Count(), 0u);
    EXPECT_THAT(LogOf(ceremony), IsEmpty());
    EXPECT_THAT(Trace(),
                Contains("DevicePairingResult.get_Status(" + ClassicId(address) + ") -> OperationAlreadyInProgress"));
}

TEST(CeremonyOutcome, StatusAboveTheKnownOnesIsNeitherReportedNorRecorded)
{
    PairWithStatus(20);
    EXPECT_EQ(Host::Count(), 0u);
    EXPECT_THAT(LogOf(ceremony), IsEmpty());
}

TEST(CeremonyOutcome, NegativeStatusIsNeitherReportedNorRecorded)
{
    PairWithStatus(-1);
    EXPECT_EQ(Host::Count(), 0u);
    EXPECT_THAT(LogOf(ceremony), IsEmpty());
}

TEST(CeremonyOutcome, AlreadyPairedDeviceIsSentToThePlatformAllTheSame)
{
    Load(prompt + Device("Headset", address, "is-paired = true\n[device.pairing]\nduration-ms = 0"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->PairedDevice("Headset", Host::Callback);
    ASSERT_TRUE(Host::WaitFor(1));
    EXPECT_EQ(Host::At(0).paired, 0);
    EXPECT_EQ(Text(Host::At(0).name), "Headset");
    EXPECT_EQ(Text(Host::At(0).addressText), "a4c1385e220f");
    ASSERT_TRUE(WaitIdle());
    EXPECT_THAT(LogOf(ceremony), ElementsAre(Record(818, ceremony, "181149781336591     paired success\n"),
                                             Record(825, ceremony, "DevicePairingResultStatus::AlreadyPaired")));
}

TEST(CeremonyOutcome, ReportComesBeforeTheStatusRecord)
{
    Load(prompt + Device("Headset", address, pairsAtOnce));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->PairedDevice("Headset", KeepLogThenReport);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_THAT(LogOf(ceremony, logAtReport), IsEmpty());
    EXPECT_THAT(LogOf(ceremony), SizeIs(1));
}

TEST(CeremonyOutcome, PairedSuccessRecordOfAlreadyPairedComesBeforeTheReport)
{
    Load(prompt + Device("Headset", address, "[device.pairing]\nduration-ms = 0\nstatus = 'AlreadyPaired'"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->PairedDevice("Headset", KeepLogThenReport);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_THAT(LogOf(ceremony, logAtReport), SizeIs(1));
    EXPECT_THAT(LogOf(ceremony), SizeIs(2));
}
