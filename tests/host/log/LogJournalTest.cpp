#include "host/log/LogJournal.h"
#include "tests/host/log/LogLines.h"

#include <gmock/gmock.h>

#include <optional>
#include <string>
#include <vector>

using namespace host;
using namespace test;
using testing::ElementsAre;

namespace
{
    struct Reading
    {
        std::vector<LogEntry> entries;
        std::vector<LogRun> runs;
    };

    Reading Read(std::string const& log)
    {
        LogJournal journal;
        std::vector<LogEntry> entries;
        for (auto const& record : ReadRecords(log))
        {
            entries.push_back(journal.Take(record));
        }
        journal.Finish();
        return {entries, journal.Runs()};
    }

    std::vector<std::string> Titles(std::string const& log)
    {
        std::vector<std::string> titles;
        for (auto const& run : Read(log).runs)
        {
            titles.push_back(run.title + ": " + DescribeEnd(run));
        }
        return titles;
    }

    std::vector<std::size_t> RunsOf(std::string const& log)
    {
        std::vector<std::size_t> runs;
        for (auto const& entry : Read(log).entries)
        {
            runs.push_back(entry.run);
        }
        return runs;
    }
} // namespace

TEST(LogJournal, APairingIsARun)
{
    auto const log = AsksToPair(0, "Tag") + SearchesFor(10, "Tag") + EndsPairing(1234, "Paired");
    EXPECT_THAT(Titles(log), ElementsAre("Pairing of \"Tag\": Paired after 1.2 s"));
    EXPECT_THAT(RunsOf(log), ElementsAre(0, 0, 0));
    auto const read = Read(log);
    EXPECT_EQ(read.entries[1].flow, LogFlow::Pair) << "the search is the pairing's";
    EXPECT_EQ(read.entries[2].inRun, 1224);
    EXPECT_EQ(read.runs[0].longestGap, 1224);
    EXPECT_EQ(read.runs[0].records, 3u);
}

TEST(LogJournal, EachStatusButOneIsAFailure)
{
    for (auto const* const status : {"AlreadyPaired", "ConnectionRejected", "Failed", "RejectedByHandler"})
    {
        auto const read = Read(AsksToPair(0, "Tag") + EndsPairing(1, status));
        EXPECT_EQ(read.runs[0].end, LogEnd::Bad) << status;
    }
    EXPECT_EQ(Read(AsksToPair(0, "Tag") + EndsPairing(1, "Paired")).runs[0].end, LogEnd::Good);
}

TEST(LogJournal, WhatIsUnderWayAtOnceIsToldApart)
{
    auto const log = AsksToPair(0, "Tag") + EndsPairing(100, "Paired") + BeginsToLearn(110) + SeesPhone(200, "A") +
                     AsksToUnpair(300, "Tag") + SearchesFor(310, "Tag") + LogLine(400, "ReadLine", 503, "file exist") +
                     LogLine(500, "SubVorlink::UnpairedCurrent", 1180, "ble data is bad ") + EndsPhones(600, 1) +
                     LogLine(610, "ReadLine", 527, "add new succes  c1d2");
    EXPECT_THAT(RunsOf(log), ElementsAre(0, 0, 1, 2, 3, 3, 1, 3, 2, 1));
    EXPECT_THAT(Titles(log), ElementsAre("Pairing of \"Tag\": Paired after 100 ms",
                                         "Learning the LE side of \"Tag\": Learnt c1d2 after 500 ms",
                                         "Search for phones: Over; devices seen: 1 after 400 ms",
                                         "Unpairing of \"Tag\": Unpaired; no LE side is known after 200 ms"));
}

TEST(LogJournal, ARunWithoutAnEndLastsUntilTheNextRequest)
{
    EXPECT_THAT(
        Titles(AsksToPair(0, "Slow") + SeesPhone(2000, "A") + AsksToUnpair(90'000, "Tag") + SearchesFor(95'000, "Tag")),
        ElementsAre("Pairing of \"Slow\": no end is logged within 1 min 30 s",
                    "Search for phones: no end is logged within 25.0 s",
                    "Unpairing of \"Tag\": no end is logged within 5.0 s"));
    EXPECT_THAT(Titles(AsksToPair(0, "Slow")), ElementsAre("Pairing of \"Slow\": no end is logged"));
}

TEST(LogJournal, AnEndThatComesAfterTheNextRequestIsAnEnd)
{
    auto const log = AsksToPair(0, "Slow") + AsksToUnpair(1000, "Tag") + EndsPairing(2000, "Failed");
    EXPECT_THAT(RunsOf(log), ElementsAre(0, 1, 0));
    EXPECT_EQ(Titles(log)[0], "Pairing of \"Slow\": Failed after 2.0 s");
}

TEST(LogJournal, ALogMayBeginInTheMiddle)
{
    EXPECT_THAT(Titles(EndsPairing(0, "Paired")), ElementsAre("Pairing: Paired after 0 ms"));
    auto const search = Read(SearchesFor(0, "Tag"));
    EXPECT_TRUE(search.runs.empty());
    EXPECT_EQ(search.entries[0].flow, LogFlow::Search);
}

TEST(LogJournal, EachWalkThroughThePhonesIsAPairing)
{
    auto const walk = [](int ms, std::string const& name) {
        return LogLine(ms, "SubVorlink::IosPairedDevicce", 1222, "tname is A param name is " + name) +
               LogLine(ms, "SubVorlink::IosPairedDevicce", 1222, "tname is B param name is " + name) +
               LogLine(ms, "SubVorlink::IosPairedDevicce", 1225, "find device ");
    };
    EXPECT_THAT(
        Titles(walk(0, "B") + walk(1000, "A") + EndsPairing(1500, "Paired")),
        ElementsAre("Pairing of \"B\": no end is logged within 1.0 s", "Pairing of \"A\": Paired after 500 ms"));
}

TEST(LogJournal, ASearchForPhonesThatBeginsAnewIsAnother)
{
    auto const first = SeesPhone(0, "A") + SeesPhone(100, "B") + SeesPhone(100, "A");
    EXPECT_EQ(Titles(first).size(), 1u) << "two of one name";
    EXPECT_EQ(Titles(first + SeesPhone(5000, "B")).size(), 1u);
    EXPECT_EQ(Titles(first + SeesPhone(5000, "A")).size(), 2u);
    EXPECT_EQ(Titles(first + SeesPhone(27'000, "C")).size(), 2u) << "longer than the library searches";
}

TEST(LogJournal, WithoutATimeItIsNoRecordOfTheLibrarys)
{
    auto const read = Read("garbage\n" + AsksToPair(0, "Tag"));
    EXPECT_EQ(read.entries[0].run, noLogRun);
    EXPECT_EQ(read.entries[0].inLog, std::nullopt);
    EXPECT_EQ(read.entries[1].inLog, std::nullopt);
}

TEST(LogJournal, TheClockMayGoBack)
{
    auto const read = Read(AsksToPair(5000, "Tag") + SearchesFor(1000, "Tag") + EndsPairing(2000, "Paired"));
    EXPECT_EQ(read.entries[1].inRun, -4000);
    EXPECT_EQ(read.runs[0].longestGap, 1000);
    EXPECT_EQ(DescribeEnd(read.runs[0]), "Paired after -3.0 s");
}

TEST(LogDuration, IsRoundedDown)
{
    EXPECT_EQ(DescribeDuration(0), "0 ms");
    EXPECT_EQ(DescribeDuration(999), "999 ms");
    EXPECT_EQ(DescribeDuration(1099), "1.0 s");
    EXPECT_EQ(DescribeDuration(59'999), "59.9 s");
    EXPECT_EQ(DescribeDuration(125'000), "2 min 5 s");
    EXPECT_EQ(DescribeDuration(11'520'000), "3 h 12 min");
    EXPECT_EQ(DescribeDuration(180'000'000), "2 d 2 h");
    EXPECT_EQ(DescribeDuration(-1500), "-1.5 s");
}
