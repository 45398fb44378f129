// Pairings: which report comes, to which context, and when.
#include "tests/support/Trace.h"
#include "tests/wrapper/CHost.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <cstring>

using namespace test;

static_assert(sizeof(vorlink_pair_report) == 304);
static_assert(offsetof(vorlink_pair_report, struct_size) == 0);
static_assert(offsetof(vorlink_pair_report, paired) == 4);
static_assert(offsetof(vorlink_pair_report, address) == 8);
static_assert(offsetof(vorlink_pair_report, name) == 16);
static_assert(offsetof(vorlink_pair_report, address_text) == 272);
static_assert(sizeof(vorlink_version_number) == 32);
static_assert(offsetof(vorlink_version_number, text) == 12);

namespace
{
    PairInbox first;
    PairInbox second;

    vorlink_pair_report Pair(std::string const& name)
    {
        EXPECT_EQ(vorlink_pair(Open(), name.c_str(), OnPaired, &first), VORLINK_OK) << vorlink_last_error();
        EXPECT_TRUE(first.WaitFor(1));
        return first.At(0);
    }

    void ExpectNobody(vorlink_pair_report const& report)
    {
        EXPECT_EQ(report.paired, 0);
        EXPECT_EQ(report.address, 0u);
        EXPECT_STREQ(report.address_text, "");
    }

    void VORLINK_C_CALL PairSecond(void* context, vorlink_pair_report const* report)
    {
        OnPaired(&first, report);
        EXPECT_EQ(vorlink_pair(static_cast<vorlink_t*>(context), "Nobody", OnPaired, &second), VORLINK_OK)
            << vorlink_last_error();
    }
} // namespace

TEST(Pair, ReportsTheDeviceThatWasPaired)
{
    Load(prompt + Device("Tag", tagAddress, pairsAtOnce));
    auto const report = Pair("Tag");
    EXPECT_EQ(report.struct_size, sizeof report);
    EXPECT_EQ(report.paired, 1);
    EXPECT_EQ(report.address, 0xC1D2E3F4A5B6u);
    EXPECT_STREQ(report.name, "Tag");
    EXPECT_STREQ(report.address_text, "c1d2e3f4a5b6");
}

TEST(Pair, ReportsTheDeviceThatWasNotPaired)
{
    Load(prompt + Device("Tag", "00:00:00:00:00:0a", "[device.pairing]\nduration-ms = 0\nstatus = 'AccessDenied'"));
    auto const report = Pair("Tag");
    EXPECT_EQ(report.paired, 0);
    EXPECT_EQ(report.address, 10u);
    EXPECT_STREQ(report.address_text, "00000000000a");
}

TEST(Pair, ReportsThatNobodyHasTheNameBeforeItReturns)
{
    Load(prompt);
    ASSERT_EQ(vorlink_pair(Open(), "Nobody", OnPaired, &first), VORLINK_OK);
    ASSERT_EQ(first.Count(), 1u);
    EXPECT_EQ(first.ThreadOf(0), GetCurrentThreadId());
    ExpectNobody(first.At(0));
    EXPECT_STREQ(first.At(0).name, "Nobody");
}

TEST(Pair, ALongNameReachesTheLibraryWholeAndTheReportCut)
{
    std::string const name(300, 'n');
    Load(prompt + Device(name, tagAddress, "[device.pairing]\nduration-ms = 0\nstatus = 'Failed'"));
    auto const report = Pair(name);
    EXPECT_EQ(report.address, 0xC1D2E3F4A5B6u);
    EXPECT_EQ(std::string(report.name), name.substr(0, 255));
    EXPECT_STREQ(report.address_text, "c1d2e3f4a5b6");
}

TEST(Pair, ALongNameIsCutBetweenCharacters)
{
    Load(prompt);
    auto const report = Pair(std::string(254, 'n') + "\u00EB, and on");
    EXPECT_EQ(std::string(report.name), std::string(254, 'n'));
}

TEST(Pair, TheNameIsCopied)
{
    Load(prompt + slowTag);
    char name[] = "Tag";
    ASSERT_EQ(vorlink_pair(Open(), name, OnPaired, &first), VORLINK_OK);
    std::memset(name, '?', sizeof name - 1);
    CompletePairing(1);
    ASSERT_TRUE(first.WaitFor(1));
    EXPECT_STREQ(first.At(0).name, "Tag");
}

TEST(Pair, ACallbackMayBeginTheNext)
{
    Load(prompt + slowTag);
    auto* const vorlink = Open();
    ASSERT_EQ(vorlink_pair(vorlink, "Tag", PairSecond, vorlink), VORLINK_OK);
    CompletePairing(1);
    ASSERT_TRUE(second.WaitFor(1));
    EXPECT_EQ(first.Count(), 1u);
    EXPECT_STREQ(second.At(0).name, "Nobody");
}

TEST(Pair, ACallbackInsideTheCallMayBeginTheNext)
{
    Load(prompt + slowTag);
    auto* const vorlink = Open();
    ASSERT_EQ(vorlink_pair(vorlink, "Nobody as well", PairSecond, vorlink), VORLINK_OK);
    EXPECT_EQ(first.Count(), 1u);
    EXPECT_EQ(second.Count(), 1u);
    EXPECT_EQ(vorlink_pair(vorlink, "Tag", OnPaired, &first), VORLINK_OK) << "nothing lasts";
}

TEST(PairPhone, PairsWhatTheWatcherHasSeen)
{
    Load(patient + Device("Tag", tagAddress, pairsAtOnce));
    auto* const vorlink = Open();
    PhoneInbox phones;
    std::int32_t started = 0;
    ASSERT_EQ(vorlink_start_phone_watcher(vorlink, OnPhone, &phones, &started), VORLINK_OK);
    ASSERT_TRUE(WaitIdle());
    ASSERT_EQ(vorlink_pair_phone(vorlink, "Tag", OnPaired, &first), VORLINK_OK) << vorlink_last_error();
    ASSERT_TRUE(first.WaitFor(1));
    EXPECT_EQ(first.At(0).paired, 1);
    EXPECT_EQ(first.At(0).address, 0xC1D2E3F4A5B6u);
}

TEST(PairPhone, ReportsThatNobodyHasTheNameBeforeItReturns)
{
    Load(prompt);
    ASSERT_EQ(vorlink_pair_phone(Open(), "Tag", OnPaired, &first), VORLINK_OK);
    ASSERT_EQ(first.Count(), 1u);
    ExpectNobody(first.At(0));
}
