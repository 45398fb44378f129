#include "host/Records.h"

#include <gtest/gtest.h>

#include <string>

using namespace host;

namespace
{
    constexpr char head[] =
        "2024-03-07 09:05:02 047[File:SubVorlink][Line:1145][Function:SubVorlink::UnpairedCurrent] ";

    std::string Line(std::string const& message)
    {
        return head + message + "\n";
    }
} // namespace

TEST(Records, ARecordIsTakenApart)
{
    auto const records = ReadRecords(Line("Entery unpaired  name-> Headset"));
    ASSERT_EQ(records.size(), 1u);
    EXPECT_EQ(records[0], (Record{"2024-03-07 09:05:02 047", 1'709'802'302'047, 1145, "SubVorlink::UnpairedCurrent",
                                  "Entery unpaired  name-> Headset"}));
}

TEST(Records, AnEmptyLogHasNone)
{
    EXPECT_TRUE(ReadRecords("").empty());
}

TEST(Records, TheLastNeedsNoLineFeed)
{
    auto const records = ReadRecords(Line("one") + head + "tw");
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[1].message, "tw");
}

TEST(Records, ALineThatBeginsNoneBelongsToTheOneBefore)
{
    auto const records = ReadRecords(Line("name ->A\nB\n") + Line("next"));
    ASSERT_EQ(records.size(), 2u);
    EXPECT_EQ(records[0].message, "name ->A\nB\n");
    EXPECT_EQ(records[1].message, "next");
}

TEST(Records, WhatStandsBeforeTheFirstIsAMessageAlone)
{
    auto const records = ReadRecords("cut off\nand on\n" + Line("one"));
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[0], (Record{{}, 0, 0, {}, "cut off"}));
    EXPECT_EQ(records[1].message, "and on");
    EXPECT_EQ(records[2].message, "one");
}

TEST(Records, AnAlmostRecordIsNone)
{
    for (std::string const line : {
             "2024-13-07 09:05:02 047[File:SubVorlink][Line:1][Function:ReadLine] x",
             "2024-02-30 09:05:02 047[File:SubVorlink][Line:1][Function:ReadLine] x",
             "2024-03-07 09:60:02 047[File:SubVorlink][Line:1][Function:ReadLine] x",
             "2024-03-07 24:05:02 047[File:SubVorlink][Line:1][Function:ReadLine] x",
             "2024-03-07 09:05:02 47[File:SubVorlink][Line:1][Function:ReadLine] x",
             "2024-03-07 09:05:02 047 [File:SubVorlink][Line:1][Function:ReadLine] x",
             "2024-03-07 09:05:02 047[File:SubVorlink][Line:-1][Function:ReadLine] x",
             "2024-03-07 09:05:02 047[File:SubVorlink][Line:1][Function:ReadLine",
             "2024-03-07 09:05:02 047[File:SubVorlink][Line:1][Function:ReadLine]x",
             " 2024-03-07 09:05:02 047[File:SubVorlink][Line:1][Function:ReadLine] x",
         })
    {
        auto const records = ReadRecords(Line("one") + line + "\n");
        ASSERT_EQ(records.size(), 1u) << line;
        EXPECT_EQ(records[0].message, "one\n" + line);
    }
}

TEST(Records, ALogMayComeInPieces)
{
    auto const text = Line("one") + Line("two\nand more") + Line("three");
    for (std::size_t first = 0; first <= text.size(); ++first)
    {
        RecordReader reader;
        reader.Read(text.substr(0, first));
        reader.Read(text.substr(first));
        EXPECT_EQ(reader.Records(), ReadRecords(text)) << first;
    }
}

TEST(Records, ALineCountsWhenItIsWhole)
{
    RecordReader reader;
    reader.Read(std::string(head) + "one");
    EXPECT_TRUE(reader.Records().empty());
    reader.Read("\n");
    EXPECT_EQ(reader.Records().size(), 1u);
}
