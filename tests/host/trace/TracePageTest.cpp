#include "host/trace/TracePage.h"
#include "tests/host/log/LogLines.h"
#include "tests/host/trace/TraceLines.h"

#include <gmock/gmock.h>

#include <string>

using namespace host;
using namespace test;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{
    constexpr char speaker[] = R"("Bluetooth#Bluetooth00:1a:7d:da:71:13-a4:c1:38:5e:22:0f")";

    std::string Data(std::string const& lines, std::string const& records = {}, std::size_t left = 0)
    {
        TraceContents const trace(lines);
        LogContents const log(records);
        std::string data;
        WriteTracePageData(trace, log, MergeByTime(trace, log), left, {"trace.jsonl", "log.log"},
                           [&](std::string_view piece) { data += piece; });
        return data;
    }
} // namespace

TEST(TracePageData, HasCallsEventsAndRecords)
{
    auto const data = Data(TraceLine(1000, 0, CallOf("A.Make", "null", "1", R"("#1")")) +
                               TraceLine(2000, 1, EventOf("A.Added", R"("#1")", "x")) +
                               TraceLine(3000, 2, CallOf("A.Get", speaker, "", "null", "0x80004005")),
                           AsksToPair(2, "Tag"));
    EXPECT_THAT(data, HasSubstr("[1767348000001000,0,0,0,0,\"A.Make(1) -\\u003E #1\",null,12],\n"
                                "[1767348000002000,2,-1,-1,1,\"Call  Pair entry name -\\u003ETag\",\"the host "
                                "asks to pair \\\"Tag\\\"\",null],\n"
                                "[1767348000002000,1,1,0,2,\"A.Added(#1, x)\",null,null]"));
    EXPECT_THAT(data, HasSubstr("[1767348000003000,0,0,1,3,\"A.Get(Classic a4:c1:38:5e:22:0f) -\\u003E "
                                "0x80004005\",\"0x80004005\",12]"));
    EXPECT_THAT(data, HasSubstr("\"objects\":[\n\"#1\",\n\"Classic a4:c1:38:5e:22:0f\"]"));
    EXPECT_THAT(data, HasSubstr("\"threads\":[\n\"36\",\n\"40\"]"));
}

TEST(TracePageData, TellsProcessesApart)
{
    auto const data = Data(TraceLine(1, 0, CallOf("A.B", R"("#1")"), 8) + TraceLine(2, 0, CallOf("A.B", R"("#1")"), 9) +
                           TraceLine(3, 1, CallOf("A.B", speaker), 9));
    EXPECT_THAT(data, HasSubstr("\"objects\":[\n\"#1 of 8\",\n\"#1 of 9\",\n\"Classic a4:c1:38:5e:22:0f\"]"));
    EXPECT_THAT(data, HasSubstr("\"threads\":[\n\"8/36\",\n\"9/36\"]"));
}

TEST(TracePageData, LeavesOutTheOldest)
{
    auto const data = Data(TraceLine(1, 0, CallOf("A.B", "null")) + TraceLine(2, 1, CallOf("C.D", "null")), {}, 1);
    EXPECT_THAT(data, AllOf(HasSubstr("\"left\":1,"), HasSubstr("C.D"), Not(HasSubstr("A.B"))));
}

TEST(TracePage, HoldsWhatNamesBring)
{
    TraceContents const trace(TraceLine(0, 0, CallOf("A.B", "null", "</script><script>alert(1)</script>{{nonce}}")));
    LogContents const log("");
    std::string page;
    WriteTracePage(trace, log, MergeByTime(trace, log), 0, {"<b>", ""}, "c0ffee",
                   [&](std::string_view piece) { page += piece; });
    EXPECT_THAT(page, AllOf(StartsWith("<!doctype html>"), EndsWith("</html>\n"), Not(HasSubstr("<script>alert")),
                            Not(HasSubstr("<b>")), HasSubstr("script-src 'nonce-c0ffee'"),
                            HasSubstr("alert(1)\\u003C/script\\u003E{{nonce}}")));
}
