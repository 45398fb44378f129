#include "host/Records.h"
#include "host/log/LogContents.h"
#include "host/log/LogText.h"
#include "tests/host/log/LogLines.h"

#include <gmock/gmock.h>

#include <random>
#include <string>
#include <string_view>
#include <vector>

using namespace host;
using namespace test;
using testing::ElementsAre;

namespace
{
    // Pieces of logs, whole and damaged.
    std::string RandomLog(std::mt19937& random)
    {
        using namespace std::string_literals;
        std::vector<std::string> const pieces = {AsksToPair(0, "Tag"),
                                                 SearchesFor(1, "A\nB\n"),
                                                 EndsPairing(5, "Paired\n"),
                                                 LogLine(5, "", 1, "of no function"),
                                                 SeesPhone(0, "A"),
                                                 "\n",
                                                 "\0\xff\x80 garbage"s,
                                                 "2026-01-02 10:00:0",
                                                 "[File:SubVorlink][Line:1]\n",
                                                 "\r\n"};
        std::string log;
        for (auto left = random() % 12; left != 0; --left)
        {
            auto const& piece = pieces[random() % pieces.size()];
            log += piece.substr(0, random() % 4 == 0 ? random() % piece.size() : piece.size());
        }
        return log;
    }

    std::vector<Record> RecordsOneByOne(std::string_view text)
    {
        std::vector<Record> records;
        while (!text.empty())
        {
            auto const taken = ReadRecords(TakeRecordText(text, true));
            EXPECT_EQ(taken.size(), 1u);
            records.insert(records.end(), taken.begin(), taken.end());
        }
        return records;
    }
} // namespace

TEST(LogText, OneByOneTheRecordsAreTheSame)
{
    std::mt19937 random(20'260'102);
    for (int round = 0; round < 3000; ++round)
    {
        auto const log = RandomLog(random);
        ASSERT_EQ(RecordsOneByOne(log), ReadRecords(log)) << log;
    }
}

TEST(LogText, ARecordThatMayGoOnWaits)
{
    auto const first = AsksToPair(0, "Tag");
    auto const both = first + AsksToPair(1, "Tag");
    std::string_view rest(both);
    EXPECT_EQ(TakeRecordText(rest, false), first);
    EXPECT_EQ(TakeRecordText(rest, false), "");
    EXPECT_EQ(rest, AsksToPair(1, "Tag")) << "nothing is taken";
    EXPECT_EQ(TakeRecordText(rest, true), AsksToPair(1, "Tag"));
    EXPECT_EQ(TakeRecordText(rest, true), "");
}

TEST(LogContents, KeepsTheRecordsOfARunTogether)
{
    LogContents const contents("cut off\n" + AsksToPair(0, "Tag") + SeesPhone(1, "A") +
                               LogLine(2, "Strange", 1, "message") + SearchesFor(3, "Tag") + "\n" + EndsPhones(4, 1));
    std::vector<std::vector<std::uint32_t>> blocks;
    for (auto const& block : contents.Blocks())
    {
        blocks.push_back(block.records);
    }
    EXPECT_THAT(blocks, ElementsAre(ElementsAre(0), ElementsAre(1, 4), ElementsAre(2, 5), ElementsAre(3)));
    EXPECT_EQ(contents.Read(4).message, "Tag\n");
    EXPECT_EQ(contents.Read(0).message, "cut off");
    EXPECT_EQ(contents.Size(), 6u);
}

TEST(LogContents, OfNothingIsEmpty)
{
    LogContents const contents("");
    EXPECT_EQ(contents.Size(), 0u);
    EXPECT_TRUE(contents.Blocks().empty());
}
