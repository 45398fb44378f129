#include "host/trace/TraceListing.h"
#include "tests/host/log/LogLines.h"
#include "tests/host/trace/TraceLines.h"

#include <gtest/gtest.h>

#include <string>

using namespace host;
using namespace test;

namespace
{
    constexpr std::int64_t tenOClock = 1'767'348'000'000'000;

    LogLayout Layout(std::size_t columns = 0)
    {
        return {columns, [](LogTone tone, std::string_view text) {
                    auto const mark = tone == LogTone::Bad ? "*" : tone == LogTone::Pair ? "_" : "";
                    return mark + std::string(text) + mark;
                }};
    }

    std::string Listed(std::string const& rest, std::size_t columns = 0, bool severalProcesses = false)
    {
        auto const line = ReadPlatformLine(TraceLine(1'234'567, 0, rest));
        return ListPlatformLine(line.value(), tenOClock, severalProcesses, Layout(columns));
    }
} // namespace

TEST(TraceListing, ShowsACall)
{
    EXPECT_EQ(Listed(CallOf("DeviceWatcher.get_Status", R"("#1")", "", R"("Created")")),
              "     1.234567  36      DeviceWatcher.get_Status(#1) -> Created  12 µs\n");
    EXPECT_EQ(Listed(CallOf("DeviceWatcher.remove_Added", R"("#1")", "4"), 0, true),
              "     1.234567  32/36   DeviceWatcher.remove_Added(#1, 4)  12 µs\n");
    EXPECT_EQ(Listed(CallOf("A.B", "null", "null")), "     1.234567  36      A.B(null)  12 µs\n");
}

TEST(TraceListing, MarksEventsAndFailures)
{
    EXPECT_EQ(Listed(EventOf("DeviceWatcher.Stopped", R"("#1")")),
              "     1.234567  40      _! DeviceWatcher.Stopped(#1)_\n");
    EXPECT_EQ(Listed(CallOf("A.B", R"("#1")", "", "null", "0x80004005")),
              "     1.234567  36      *A.B(#1) -> 0x80004005*  12 µs\n");
}

TEST(TraceListing, ShowsARecordToTheMillisecond)
{
    EXPECT_EQ(ListLogRecord(LogRecord(1234, "SubVorlink::PairedDevice", 1253, "Call  Pair entry name ->Tag"), tenOClock,
                            Layout()),
              "     1.234     log     Call  Pair entry name ->Tag  = the host asks to pair \"Tag\"\n");
}

TEST(TraceListing, BreaksLinesWhereTheWindowEnds)
{
    auto const call = CallOf("A.B", R"("#1")", "one two three four five six seven eight nine ten");
    EXPECT_EQ(Listed(call, 61), "     1.234567  36      A.B(#1, one two three four five six \n"
                                "                       seven eight nine ten)  12 µs\n");
    EXPECT_EQ(Listed(call, 40), "     1.234567  36      \n    A.B(#1, one two three four five six \n"
                                "    seven eight nine ten)  12 µs\n");
}

TEST(TraceListing, CannotSteerATerminal)
{
    EXPECT_EQ(Listed(CallOf("A.B", "null", "\\u001b[2J\\n")), "     1.234567  36      A.B(\\x1B[2J\\x0A)  12 µs\n");
}

TEST(TraceListing, ShortensIdentifiers)
{
    EXPECT_EQ(WithShortIdentifiers("#1, Bluetooth#Bluetooth00:1a:7d:da:71:13-a4:c1:38:5e:22:0f, "
                                   "\"BluetoothLE#BluetoothLE00:1a:7d:da:71:13-a4:c1:38:5e:22:0f\""),
              "#1, Classic a4:c1:38:5e:22:0f, \"LE a4:c1:38:5e:22:0f\"");
    for (auto const* const other : {"Bluetooth#Bluetooth00:1a:7d:da:71:13-a4:c1:38:5e:22:0",
                                    "Bluetooth#Bluetooth00:1a:7d:da:71:13+a4:c1:38:5e:22:0f",
                                    "Bluetooth#Bluetooth-without-an-address", "Bluetooth#Bluetooth", ""})
    {
        EXPECT_EQ(WithShortIdentifiers(other), other);
    }
}

TEST(TraceListing, TellsDurations)
{
    EXPECT_EQ(DescribeMicroseconds(999), "999 µs");
    EXPECT_EQ(DescribeMicroseconds(1000), "1.000 ms");
    EXPECT_EQ(DescribeMicroseconds(999'999), "999.999 ms");
    EXPECT_EQ(DescribeMicroseconds(2'500'000), "2.500 s");
}
