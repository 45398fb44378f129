// Every status that the platform may answer an unpairing with, for either endpoint: what the host hears, what the
// log holds then, and what comes behind.
#include "tests/library/UnpairHost.h"

#include <gmock/gmock.h>

#include <windows.h>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    struct Status
    {
        int number;
        char const* name;
    };

    void PrintTo(Status const& status, std::ostream* stream)
    {
        *stream << status.name;
    }

    std::string NameOf(testing::TestParamInfo<Status> const& test)
    {
        return test.param.name;
    }

    // 5 is one that the platform does not define.
    constexpr Status statuses[] = {
        {0, "Unpaired"},     {1, "AlreadyUnpaired"}, {2, "OperationAlreadyInProgress"},
        {3, "AccessDenied"}, {4, "Failed"},          {5, "Unknown"},
    };

    using ClassicStatus = testing::TestWithParam<Status>;
    using LeStatus = testing::TestWithParam<Status>;

    void ExpectClassicOutcome(bool unpaired)
    {
        ASSERT_TRUE(UnpairHost::WaitFor(1));
        auto const call = UnpairHost::At(0);
        EXPECT_EQ(call.success, unpaired);
        EXPECT_EQ(call.reserved, 0);
        EXPECT_EQ(LogOf(classicUnpairing, call.log), ClassicRecords(unpaired));
        EXPECT_TRUE(UnpairHost::StaysAt(1));
        EXPECT_EQ(LogOf(classicUnpairing), ClassicRecords(unpaired));
        EXPECT_THAT(LogOf(leUnpairing), IsEmpty());
    }

    // The success is recorded behind the callback, the failure before it.
    void ExpectLeOutcome(bool unpaired)
    {
        ASSERT_TRUE(UnpairHost::WaitFor(1));
        auto const call = UnpairHost::At(0);
        EXPECT_EQ(call.success, unpaired);
        EXPECT_EQ(call.reserved, 0);
        auto const begin = Record(1066, leUnpairing, "ble   destStr is " + std::string(tagAddress) + " ");
        auto const end = unpaired ? Record(1083, leUnpairing, "unpaired device success")
                                  : Record(1089, leUnpairing, "unpaired device failed");
        EXPECT_THAT(LogOf(leUnpairing, call.log), SizeIs(unpaired ? 1u : 2u)) << "at the callback";
        ASSERT_TRUE(WaitForRecords(leUnpairing, 2));
        EXPECT_TRUE(UnpairHost::StaysAt(1));
        EXPECT_THAT(LogOf(leUnpairing), ElementsAre(begin, end));
    }
} // namespace

TEST_P(ClassicStatus, IsReportedWhenItComesAtOnce)
{
    Load(TagUnpairing("classic", GetParam().number, "0"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    EXPECT_EQ(UnpairHost::Count(), 1u);
    ExpectClassicOutcome(GetParam().number == 0);
    EXPECT_EQ(UnpairHost::At(0).thread, GetCurrentThreadId());
}

TEST_P(ClassicStatus, IsReportedWhenItComesLater)
{
    Load(TagUnpairing("classic", 0, "'never'"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(SimulateUnpairingCompletes(ClassicId(tagAddress).c_str(), GetParam().number)) << SimulatorLastError();
    ExpectClassicOutcome(GetParam().number == 0);
    EXPECT_NE(UnpairHost::At(0).thread, GetCurrentThreadId());
}

INSTANTIATE_TEST_SUITE_P(Unpair, ClassicStatus, testing::ValuesIn(statuses), NameOf);

TEST_P(LeStatus, IsReportedWhenItComesAtOnce)
{
    Load(TagUnpairing("le", GetParam().number, "0"));
    auto const vorlink = MakeLoggingVorlink();
    KnowLe(*vorlink, knownTag);
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ExpectLeOutcome(GetParam().number == 0);
}

TEST_P(LeStatus, IsReportedWhenItComesLater)
{
    Load(TagUnpairing("le", 0, "'never'"));
    auto const vorlink = MakeLoggingVorlink();
    KnowLe(*vorlink, knownTag);
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(WaitForCall("UnpairAsync(" + LeId(tagAddress)));
    ASSERT_TRUE(SimulateUnpairingCompletes(LeId(tagAddress).c_str(), GetParam().number)) << SimulatorLastError();
    ExpectLeOutcome(GetParam().number == 0);
}

INSTANTIATE_TEST_SUITE_P(Unpair, LeStatus, testing::ValuesIn(statuses), NameOf);

TEST(UnpairOutcome, OfAnLeEndpointThatIsNotPairedIsFailure)
{
    Load(PairedTag("'classic', 'le'", "[device.le]\nis-paired = false\n"));
    auto const vorlink = MakeLoggingVorlink();
    KnowLe(*vorlink, knownTag);
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ExpectLeOutcome(false);
    EXPECT_TRUE(WaitForCall("-> AlreadyUnpaired"));
}

TEST(UnpairOutcome, OfASecondCallBesideTheFirstIsFailure)
{
    Load(TagUnpairing("classic", 0, "'never'"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_FALSE(UnpairHost::At(0).success);
    ASSERT_TRUE(SimulateUnpairingCompletes(ClassicId(tagAddress).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(UnpairHost::WaitFor(2));
    EXPECT_TRUE(UnpairHost::At(1).success);
}
