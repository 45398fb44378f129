#include "host/log/LogSteps.h"
#include "tests/host/log/LogLines.h"

#include <gtest/gtest.h>

#include <string>

using namespace host;
using test::LogRecord;

namespace
{
    std::string MeaningOf(std::string const& function, int line, std::string const& message)
    {
        auto const record = LogRecord(0, function, line, message);
        auto const* const step = FindLogStep(record);
        return step ? FillIn(step->meaning, LogTexts(*step, record.message)) : "none";
    }
} // namespace

TEST(LogSteps, SayWhatTheLibraryMeans)
{
    EXPECT_EQ(MeaningOf("SubVorlink::UnpairedCurrent", 1180, "ble data is bad "), "no LE side is known of it");
    EXPECT_EQ(MeaningOf("SubVorlink::GetDeviceforName", 435, "tname  is A ,name is B "),
              "the search matched \"A\" for \"B\"");
    EXPECT_EQ(MeaningOf("SubVorlink::GetDeviceforName", 437, "CLassic id is: X#Y  ,pair status : 0 , isPaired is:  1"),
              "it cannot be paired anew, and is paired");
}

TEST(LogSteps, TellBareNamesApartByTheirLine)
{
    EXPECT_EQ(MeaningOf("SubVorlink::GetDeviceforName", 399, "Tag"), "the search for \"Tag\" begins");
    EXPECT_EQ(MeaningOf("SubVorlink::GetDeviceforName", 416, "Tag"), "a device is looked at: \"Tag\"");
    EXPECT_EQ(MeaningOf("SubVorlink::GetDeviceforName", 416, "tname  is A ,name is B "),
              "a device is looked at: \"tname  is A ,name is B \"");
}

TEST(LogSteps, TellTheTwoFailuresOfTheLeSideApart)
{
    EXPECT_NE(MeaningOf("SubVorlink::UnpairBleDevice", 1071, "unpaired device failed"),
              MeaningOf("SubVorlink::UnpairBleDevice", 1089, "unpaired device failed"));
}

TEST(LogSteps, KnowNoOtherMessage)
{
    EXPECT_EQ(MeaningOf("SubVorlink::PairedDevice", 1253, "Call  Pair"), "none");
    EXPECT_EQ(MeaningOf("SubVorlink::PairedDevice", 1253, "  Call  Pair entry name ->A"), "none");
    EXPECT_EQ(MeaningOf("ReadLine", 503, "file exists"), "none");
    EXPECT_EQ(MeaningOf("Strange", 503, "file exist"), "none");
}

TEST(LogSteps, KnowAMessageThatDamageHasMadeLonger)
{
    EXPECT_EQ(MeaningOf("ReadLine", 503, "file exist\n2026-01-"), "the listing is there");
    EXPECT_EQ(MeaningOf("SubVorlink::PairedDevice", 1253, "Call  Pair entry name ->A\nB"),
              "the host asks to pair \"A\\x0AB\"")
        << "which a name may do by itself";
}

TEST(LogSteps, ShowNamesHarmlessly)
{
    EXPECT_EQ(MeaningOf("OnDeviceAdded", 111, "OnDeviceAdded    name = \x1b[2J{1}\xff "),
              "a device that can be paired is seen: \"\\x1B[2J{1}\\xFF\"");
}

TEST(LogSteps, CutWhatIsNoName)
{
    auto const meaning = MeaningOf("SubVorlink::GetDeviceforName", 399, std::string(1'000'000, 'x'));
    EXPECT_LT(meaning.size(), 1100u);
    EXPECT_NE(meaning.find("x…\" begins"), std::string::npos);
}

TEST(LogTexts, AreWhatTheStarsStandFor)
{
    LogStep const step{"", "a*b*", LogFlow::Other, LogPart::Goes, ""};
    EXPECT_EQ(LogTexts(step, "a1b2b3"), (std::vector<std::string_view>{"1", "2b3"}));
    EXPECT_EQ(LogTexts(step, "ab"), (std::vector<std::string_view>{"", ""}));
    EXPECT_TRUE(LogTexts(step, "a").empty());
}
