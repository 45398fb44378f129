// Which device a name finds, told by the log.
#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"

#include <gmock/gmock.h>

using namespace test;
using testing::Contains;
using testing::Not;

namespace
{
    constexpr char address[] = "a4:c1:38:5e:22:0f";

    bool Finds(std::string const& device, std::string const& name)
    {
        Load(prompt + Device(device, address, pairsAtOnce));
        auto const vorlink = MakeLoggingVorlink();
        vorlink->PairedDevice(name, Host::Callback);
        EXPECT_EQ(Host::Count(), 1u);
        return Host::At(0).paired == 1;
    }
} // namespace

TEST(NameLookup, ShortNameMustBeEqual)
{
    EXPECT_TRUE(Finds("Speaker", "Speaker"));
}

TEST(NameLookup, ShortNameIsNotFoundInALongerOne)
{
    EXPECT_FALSE(Finds("Speaker 2", "Speaker"));
}

TEST(NameLookup, LongNameIsFoundInALongerOne)
{
    EXPECT_TRUE(Finds("Kitchen Speaker 2 (left)", "Kitchen Speaker 2"));
    EXPECT_THAT(Log(), Contains(Record(444, lookup, "tname  is Kitchen Speaker 2 (left) ,name is Kitchen Speaker 2 ")));
    EXPECT_THAT(
        Log(),
        Contains(Record(446, lookup, "CLassic id is: " + ClassicId(address) + "  ,pair status : 1 , isPaired is:  0")));
}

TEST(NameLookup, FourteenBytesMatchALongerName)
{
    EXPECT_TRUE(Finds("x12345678901234x", "12345678901234"));
}

TEST(NameLookup, ThirteenBytesDoNotMatchALongerName)
{
    EXPECT_FALSE(Finds("x1234567890123x", "1234567890123"));
}

TEST(NameLookup, ExactMatchOfALongNameTakesTheContainmentBranch)
{
    EXPECT_TRUE(Finds("Kitchen Speaker", "Kitchen Speaker"));
    EXPECT_THAT(Log(), Contains(Record(444, lookup, "tname  is Kitchen Speaker ,name is Kitchen Speaker ")));
    EXPECT_THAT(Log(), Not(Contains(Record(435, lookup, "tname  is Kitchen Speaker ,name is Kitchen Speaker "))));
}

TEST(NameLookup, LetterCaseCounts)
{
    EXPECT_FALSE(Finds("speaker", "Speaker"));
}

TEST(NameLookup, PairedStateIsRecordedBehindCanPair)
{
    Load(prompt + Device("Mouse", address, "can-pair = false\nis-paired = true\n[device.pairing]\nduration-ms = 0"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->PairedDevice("Mouse", Host::Callback);
    EXPECT_THAT(
        Log(),
        Contains(Record(437, lookup, "CLassic id is: " + ClassicId(address) + "  ,pair status : 0 , isPaired is:  1")));
}

TEST(NameLookup, FirstReportedDeviceOfTheNameWins)
{
    Load(prompt + Device("Other", "00:00:00:00:00:01") + Device("Speaker", "00:00:00:00:00:02", pairsAtOnce) +
         Device("Speaker", "00:00:00:00:00:03", pairsAtOnce));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->PairedDevice("Speaker", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).address, 2u);
    auto const log = Log();
    ASSERT_GE(log.size(), 4u);
    EXPECT_EQ(log[2], Record(416, lookup, "Other"));
    EXPECT_EQ(log[3], Record(416, lookup, "Speaker"));
}

TEST(NameLookup, LeEndpointsOfTheNameAreNotLookedAt)
{
    Load(prompt + Device("Speaker", address, "protocols = ['le']"));
    MakeVorlink()->PairedDevice("Speaker", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 0);
}

TEST(NameLookup, DeviceThatCannotPairAndIsNotPairedIsNotLookedAt)
{
    Load(prompt + Device("Speaker", address, "can-pair = false"));
    MakeVorlink()->PairedDevice("Speaker", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 0);
}
