#include "host/Text.h"
#include "host/log/LogListing.h"
#include "tests/host/log/LogLines.h"

#include <gmock/gmock.h>

#include <sstream>
#include <string>

using namespace host;
using namespace test;
using testing::HasSubstr;

namespace
{
    LogLayout Layout(std::size_t columns)
    {
        return {columns, [](LogTone, std::string_view text) { return std::string(text); }};
    }

    std::string List(Record const& record, std::size_t columns, std::optional<std::int64_t> since = std::nullopt,
                     std::int64_t longestGap = 0)
    {
        return ListRecord({record, FindLogStep(record), LogFlow::Pair, since, longestGap}, Layout(columns));
    }

    std::size_t Widest(std::string const& text)
    {
        std::istringstream lines(text);
        std::size_t widest = 0;
        for (std::string line; std::getline(lines, line);)
        {
            widest = std::max(widest, Columns(line));
        }
        return widest;
    }

    Record Match()
    {
        return LogRecord(7, "SubVorlink::GetDeviceforName", 435,
                         "tname  is 台所のスピーカー ,name is 台所のスピーカー ");
    }
} // namespace

TEST(LogListing, ARecordIsALineWhereLinesAreLong)
{
    EXPECT_EQ(List(LogRecord(7, "SubVorlink::UnpairedCurrent", 1180, "ble data is bad "), 0, 3),
              "  10:00:00 007   +3 ms  pair    ble data is bad   = no LE side is known of it\n");
}

TEST(LogListing, AMeaningStandsBelowWhereItDoesNotFitBeside)
{
    EXPECT_EQ(List(LogRecord(7, "ReadLine", 488, "Readline entry"), 80),
              "  10:00:00 007          pair    Readline entry\n"
              "                                = lets 3 s pass, then has the system list its \n"
              "                                  devices\n");
}

TEST(LogListing, FitsTheWidth)
{
    auto const id = LogRecord(0, "Strange", 1, std::string(500, 'x'));
    for (std::size_t const columns : {40U, 59U, 60U, 80U, 200U})
    {
        EXPECT_LE(Widest(List(Match(), columns, 123'456)), columns);
        EXPECT_LE(Widest(List(id, columns, -5)), columns);
        EXPECT_GE(Widest(List(id, columns)), columns - 1) << "and uses it";
    }
}

TEST(LogListing, KeepsTheMessageLetterForLetter)
{
    std::string letters;
    for (char const letter : List(LogRecord(0, "Strange", 1, std::string(90, 'x') + " \t" + std::string(90, 'y')), 40))
    {
        letters += letter == 'x' || letter == 'y' || letter == '\\' ? std::string(1, letter) : "";
    }
    EXPECT_EQ(letters, std::string(90, 'x') + "\\x" + std::string(90, 'y'));
}

TEST(LogListing, MarksASilence)
{
    auto const record = Match();
    EXPECT_THAT(List(record, 0, 1500, 1500), HasSubstr("1.5 s of silence, the longest here\n"));
    EXPECT_THAT(List(record, 0, 1500, 3000), HasSubstr("1.5 s of silence\n"));
    EXPECT_THAT(List(record, 0, 999, 999), testing::Not(HasSubstr("silence")));
    EXPECT_THAT(List(record, 0, -3000, 0), HasSubstr("the clock goes back by 3.0 s\n"));
}

TEST(LogListing, AHeadingTellsTheEnd)
{
    LogRun const run{LogFlow::Pair, "Pairing of \"Tag\"", LogEnd::Good, "Paired", 0, 1200, 1200, 2, 1200};
    EXPECT_EQ(ListHeading(run, "2026-01-02 10:00:00 007", true, Layout(0)),
              "\n2026-01-02 10:00:00  Pairing of \"Tag\": Paired after 1.2 s\n");
    EXPECT_EQ(ListHeading(run, "2026-01-02 10:00:00 007", true, Layout(40)),
              "\n2026-01-02 10:00:00\nPairing of \"Tag\": Paired after 1.2 s\n");
    EXPECT_EQ(ListHeading(run, "2026-01-02 10:00:00 007", false, Layout(0)),
              "\n2026-01-02 10:00:00  Pairing of \"Tag\"\n");
}

TEST(LogListing, CutsWhatIsLongerThanAnyRecord)
{
    auto const shown = List(LogRecord(0, "Strange", 1, std::string(10'300, 'x')), 0);
    EXPECT_THAT(shown, HasSubstr("x … and 60 bytes more\n"));
    EXPECT_LT(shown.size(), 10'400u);
}
