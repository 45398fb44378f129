#include "host/trace/TraceContents.h"
#include "tests/host/log/LogLines.h"
#include "tests/host/trace/TraceLines.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using namespace host;
using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    std::string const start = CallOf("DeviceWatcher.Start", R"("#1")");

    std::vector<std::uint64_t> Numbers(TraceContents const& trace)
    {
        std::vector<std::uint64_t> numbers;
        for (std::size_t at = 0; at < trace.Size(); ++at)
        {
            numbers.push_back(trace.Read(at).number);
        }
        return numbers;
    }

    // "log 0", "trace 1", ...
    std::vector<std::string> Merged(std::string const& trace, std::string const& log)
    {
        std::vector<std::string> merged;
        for (auto const& moment : MergeByTime(TraceContents(trace), LogContents(log)))
        {
            merged.push_back((moment.isRecord ? "log " : "trace ") + std::to_string(moment.index));
        }
        return merged;
    }
} // namespace

TEST(TraceContents, HasWhatALineTells)
{
    TraceContents const trace(
        TraceLine(1'234'567, 7, CallOf("DeviceWatcher.get_Status", R"("#1")", "rest", R"("Created")", "0x8000000E")));
    ASSERT_EQ(trace.Size(), 1u);
    auto const line = trace.Read(0);
    EXPECT_EQ(line.us, 1'767'348'001'234'567);
    EXPECT_EQ(line.time, "2026-01-02 10:00:01 234");
    EXPECT_EQ(line.utc, "2026-01-02T09:00:01.234567Z");
    EXPECT_EQ(line.process, 32u);
    EXPECT_EQ(line.number, 7u);
    EXPECT_EQ(line.thread, 36u);
    EXPECT_FALSE(line.isEvent);
    EXPECT_EQ(line.name, "DeviceWatcher.get_Status");
    EXPECT_EQ(line.object, "#1");
    EXPECT_EQ(line.arguments, "rest");
    EXPECT_EQ(line.result, "Created");
    EXPECT_EQ(line.code, "0x8000000E");
    EXPECT_EQ(line.took, 12);
    EXPECT_TRUE(line.Failed());
    EXPECT_EQ(trace.Failures(), 1u);
}

TEST(TraceContents, AnEventHasNoDurationAndASuccessIsNoFailure)
{
    TraceContents const trace(TraceLine(0, 0, EventOf("DeviceWatcher.Stopped", "null")) +
                              TraceLine(1, 1, CallOf("A.B", "null", "", "null", "0x00000001")));
    EXPECT_TRUE(trace.Read(0).isEvent);
    EXPECT_EQ(trace.Read(0).object, std::nullopt);
    EXPECT_EQ(trace.Read(0).code, std::nullopt);
    EXPECT_EQ(trace.Read(0).took, std::nullopt);
    EXPECT_EQ(trace.Failures(), 0u);
}

TEST(TraceContents, IsInTheOrderInWhichLinesBegan)
{
    // A call is written when it has returned; two lines may have one time.
    TraceContents const trace(TraceLine(300, 3, start) + TraceLine(100, 2, start) + TraceLine(100, 1, start) +
                              TraceLine(50, 9, start, 8));
    EXPECT_THAT(Numbers(trace), ElementsAre(9, 1, 2, 3));
    EXPECT_EQ(trace.Processes(), 2u);
}

TEST(TraceContents, SkipsWhatIsNoLineAndKnowsWhere)
{
    auto const good = TraceLine(0, 0, start);
    auto const with = [&](std::string text, std::string const& before, std::string const& after) {
        return text.replace(text.find(before), before.size(), after);
    };
    TraceContents const trace("garbage\n" + good + "\n[]\n{}\n" + good.substr(0, 40) + "\n" +
                              with(good, "\"call\"", "\"cry\"") + with(good, "\"thread\":36", "\"thread\":\"36\"") +
                              with(good, "01-02 10", "02-30 10") + with(good, "00.000000Z", "00.001000Z") +
                              with(good, "00 000\"", "00 000 \"") + with(good, "DeviceWatcher", "\xFF") +
                              with(good, "02 10:", "02 24:") + with(good, "00.000000Z", "00.000Z") +
                              good.substr(0, good.size() - 1));
    EXPECT_THAT(trace.Garbage(), ElementsAre(1, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14));
    EXPECT_EQ(trace.Size(), 2u) << "the last one needs no line feed";
}

TEST(TraceContents, OfAnEmptyFileIsEmpty)
{
    EXPECT_EQ(TraceContents("").Size(), 0u);
    EXPECT_THAT(TraceContents("").Garbage(), IsEmpty());
    EXPECT_THAT(Merged("", AsksToPair(0, "Tag")), IsEmpty());
}

TEST(TraceContents, MergesWithTheLogByTime)
{
    EXPECT_THAT(Merged(TraceLine(7'999, 0, start) + TraceLine(8'000, 1, start) + TraceLine(8'001, 2, start),
                       AsksToPair(8, "Tag") + AsksToPair(8, "Tag") + AsksToPair(7, "Tag") + "garbage"),
                ElementsAre("log 2", "trace 0", "log 0", "log 1", "trace 1", "trace 2"));
}

TEST(TraceContents, TakesOfTheLogWhatIsOfItsTime)
{
    EXPECT_THAT(Merged(TraceLine(20'000'000, 0, start) + TraceLine(30'000'000, 1, start),
                       "no record\n" + AsksToPair(9'999, "Tag") + AsksToPair(10'000, "Tag") +
                           AsksToPair(40'000, "Tag") + AsksToPair(40'001, "Tag")),
                ElementsAre("log 2", "trace 0", "trace 1", "log 3"));
}
