// A record's bytes, and what becomes of one that is too long.
#include "log/Record.h"

#include <gmock/gmock.h>

#include <array>
#include <chrono>
#include <cstdlib>
#include <ctime>
#include <span>
#include <string>

using testing::EndsWith;
using testing::HasSubstr;
using vorlink::FormatInto;
using vorlink::RecordHead;

namespace
{
    using std::chrono::system_clock;

    std::string Build(RecordHead const& head, char const* format, ...) VORLINK_PRINTF(2, 3);

    std::string Build(RecordHead const& head, char const* format, ...)
    {
        std::string buffer(vorlink::recordCapacity, '\0');
        std::va_list arguments;
        va_start(arguments, format);
        buffer.resize(vorlink::BuildRecord(buffer, head, format, arguments));
        va_end(arguments);
        return buffer;
    }

    RecordHead Head()
    {
        return {system_clock::time_point(), R"(C:\source\SubVorlink)", 1145, "SubVorlink::UnpairedCurrent"};
    }

    std::size_t BuildIn(std::span<char> buffer, char const* format, ...) VORLINK_PRINTF(2, 3);

    std::size_t BuildIn(std::span<char> buffer, char const* format, ...)
    {
        std::va_list arguments;
        va_start(arguments, format);
        auto const length = vorlink::BuildRecord(buffer, Head(), format, arguments);
        va_end(arguments);
        return length;
    }

    constexpr std::size_t timestampLength = 23;
    constexpr char headText[] = "[File:SubVorlink][Line:1145][Function:SubVorlink::UnpairedCurrent] ";

    // The process's, from now on.
    void SetTimeZone(char const* zone)
    {
#ifdef _WIN32
        _putenv_s("TZ", zone);
        _tzset();
#else
        setenv("TZ", zone, 1);
        tzset();
#endif
    }

    // How long a message may be for the record to be just as long as its buffer.
    constexpr std::size_t longestMessage =
        vorlink::recordCapacity - timestampLength - (sizeof headText - 1) - sizeof '\n';
} // namespace

TEST(Record, PiecesFollowWithoutSeparators)
{
    std::string const record = Build(Head(), "Entery unpaired  name-> %s", "Headset");
    EXPECT_EQ(record.substr(timestampLength), std::string(headText) + "Entery unpaired  name-> Headset\n");
}

TEST(Record, TimestampIsLocalTimeWithMilliseconds)
{
    SetTimeZone("TST-3"); // three hours ahead of UTC
    auto head = Head();
    head.time = system_clock::from_time_t(1'709'791'502) + std::chrono::milliseconds(47); // 06:05:02 UTC
    EXPECT_EQ(Build(head, "x").substr(0, timestampLength), "2024-03-07 09:05:02 047");
}

TEST(Record, MillisecondsAreCutNotRounded)
{
    auto head = Head();
    head.time = system_clock::from_time_t(1'700'000'000) + std::chrono::microseconds(999'900);
    EXPECT_EQ(Build(head, "x").substr(timestampLength - 4, 4), " 999");
}

TEST(Record, OnlyTheTextBehindTheLastBackslashIsTheFile)
{
    auto head = Head();
    head.sourcePath = R"(a\b\c.cpp)";
    EXPECT_THAT(Build(head, "x"), HasSubstr("[File:c.cpp][Line:"));
}

TEST(Record, MessageThatEndsInALineFeedGivesAnEmptyLine)
{
    EXPECT_THAT(Build(Head(), "%llu     paired success\n", 12ull), EndsWith("] 12     paired success\n\n"));
}

TEST(Record, OfExactlyTheBuffersSizeIsWhole)
{
    std::string const message(longestMessage, 'm');
    std::string const record = Build(Head(), "%s", message.c_str());
    EXPECT_EQ(record.size(), vorlink::recordCapacity);
    EXPECT_THAT(record, EndsWith("] " + message + "\n"));
}

TEST(Record, LongerThanTheBufferIsCutAndKeepsItsLineFeed)
{
    std::string const message(longestMessage + 1, 'm');
    std::string const record = Build(Head(), "%s", message.c_str());
    EXPECT_EQ(record.size(), vorlink::recordCapacity);
    EXPECT_THAT(record, EndsWith("] " + std::string(longestMessage, 'm') + "\n"));
}

TEST(Record, MuchLongerThanTheBufferIsCut)
{
    std::string const message(100'000, 'm');
    EXPECT_EQ(Build(Head(), "%s", message.c_str()).size(), vorlink::recordCapacity);
}

TEST(Record, FunctionNameLongerThanTheBufferLeavesRoomForTheLineFeed)
{
    std::string const function(20'000, 'f');
    auto head = Head();
    head.functionName = function.c_str();
    std::string const record = Build(head, "message");
    EXPECT_EQ(record.size(), vorlink::recordCapacity);
    EXPECT_EQ(record.back(), '\n');
}

TEST(Record, InABufferOfOneByteIsItsLineFeed)
{
    std::array<char, 1> buffer{};
    EXPECT_EQ(BuildIn(buffer, "message"), 1u);
    EXPECT_EQ(buffer[0], '\n');
}

TEST(FormatInto, ReturnsTheNumberOfCharacters)
{
    std::array<char, 16> buffer{};
    EXPECT_EQ(FormatInto(buffer, "%d-%s", 12, "ab"), 5);
    EXPECT_STREQ(buffer.data(), "12-ab");
}

TEST(FormatInto, CutsWhatDoesNotFit)
{
    std::array<char, 4> buffer{};
    EXPECT_EQ(FormatInto(buffer, "%s", "abcdef"), 3);
    EXPECT_STREQ(buffer.data(), "abc");
}

// mingw-w64's own vsnprintf knows no failure: what it cannot convert, it writes as it can.
#ifndef __MINGW32__
TEST(Record, MessageWhoseFormattingFailsTakesTheBlankBeforeItAlong)
{
    // No multibyte text for this character in the C locale: formatting it fails.
    std::string const record = Build(Head(), "ab%lc", static_cast<wint_t>(0xFFFF));
    EXPECT_THAT(record, EndsWith("[Function:SubVorlink::UnpairedCurrent]\n"));
}

TEST(Record, MessageWhoseFormattingFailsTakesNothingFromAnEmptyHead)
{
    std::array<char, 1> buffer{};
    EXPECT_EQ(BuildIn(buffer, "%lc", static_cast<wint_t>(0xFFFF)), 1u);
    EXPECT_EQ(buffer[0], '\n');
}

TEST(FormatInto, ReturnsMinusOneWhenFormattingFails)
{
    std::array<char, 16> buffer{};
    EXPECT_EQ(FormatInto(buffer, "%lc", static_cast<wint_t>(0xFFFF)), -1);
}
#endif
