#include "host/log/LogPage.h"
#include "host/page/PageTexts.h"
#include "tests/host/log/LogLines.h"

#include <gmock/gmock.h>

#include <string>
#include <string_view>

using namespace host;
using namespace test;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

namespace
{
    std::string Data(std::string const& log)
    {
        std::string data;
        WriteLogPageData(LogContents(log), "log.log", 0, [&](std::string_view piece) { data += piece; });
        return data;
    }

    std::string Page(std::string const& log)
    {
        std::string page;
        WriteLogPage(LogContents(log), "log.log", 0, "c0ffee", [&](std::string_view piece) { page += piece; });
        return page;
    }

    std::size_t CountOf(std::string_view text, std::string_view part)
    {
        std::size_t count = 0;
        for (auto at = text.find(part); at != std::string_view::npos; at = text.find(part, at + 1))
        {
            ++count;
        }
        return count;
    }
} // namespace

TEST(LogPageData, HasRunsRecordsAndFunctions)
{
    auto const data = Data(AsksToPair(0, "Tag") + EndsPairing(7, "Paired") + "garbage");
    EXPECT_THAT(data, HasSubstr("\"gapMs\":1000,"));
    EXPECT_THAT(data, HasSubstr("[0,\"Pairing of \\\"Tag\\\"\",1,\"Paired after 7 ms\",1767348000000,1767348000007,"
                                "1767348000007]"));
    EXPECT_THAT(data,
                HasSubstr("[1767348000000,0,0,1253,0,\"Call  Pair entry name -\\u003ETag\",\"the host asks to pair "
                          "\\\"Tag\\\"\"]"));
    EXPECT_THAT(data, HasSubstr("[1767348000007,0,0,796,1,"));
    EXPECT_THAT(data, HasSubstr("\"functions\":[\n\"SubVorlink::PairedDevice\",\n\"SubVorlink::PairingDevice\"]"));
}

TEST(LogPageData, WithoutATimeHasNone)
{
    EXPECT_THAT(Data("garbage"), HasSubstr("[null,-1,5,0,0,\"garbage\",\"\"]"));
}

TEST(LogPageData, OfNothingIsEmpty)
{
    EXPECT_THAT(Data(""), HasSubstr("\"runs\":[],\"records\":[],\"functions\":[]}"));
}

TEST(LogPageData, NothingInItEndsItsElement)
{
    auto const data = Data(SeesPhone(0, "</script><!--&amp;\u2028\u2029\u202E\x1b\"\\\xff"));
    EXPECT_THAT(data, Not(HasSubstr("<")));
    EXPECT_THAT(data, Not(HasSubstr(">")));
    EXPECT_THAT(data, Not(HasSubstr("&")));
    EXPECT_THAT(data, Not(HasSubstr("\u2028")));
    EXPECT_THAT(data, HasSubstr(R"(\u003C/script\u003E\u003C!--\u0026amp;\\u2028\\u2029\\u202E\\x1B\"\\\\\\xFF)"));
}

TEST(LogPageData, AFunctionsNameIsForeignTextToo)
{
    auto const data = Data(LogLine(0, "<b>\x1b", 1, "message"));
    EXPECT_THAT(data, HasSubstr(R"("functions":[)"
                                "\n"
                                R"("\u003Cb\u003E\\x1B"])"));
}

TEST(LogPage, IsWholeAndLoadsNothing)
{
    auto const page = Page(SeesPhone(0, "</script><script>alert(1)</script>{{data}}{{nonce}}"));
    EXPECT_THAT(page, testing::StartsWith("<!doctype html>"));
    EXPECT_THAT(page, testing::EndsWith("</html>\n"));
    EXPECT_EQ(CountOf(page, "</script>"), 2u) << "the data's and its own";
    EXPECT_EQ(CountOf(page, "c0ffee"), 4u) << "named twice by the policy, once by style and script each";
    for (auto const* const foreign : {"http:", "https:", "src=", "url(", "@import"})
    {
        EXPECT_THAT(page, Not(HasSubstr(foreign)));
    }
    EXPECT_THAT(page, AllOf(HasSubstr(std::string(logPageStyle)), HasSubstr(std::string(logPageScript))));
}

TEST(PageTexts, DoNotEndTheirElements)
{
    for (auto const text : {pageStyle, pageScript, logPageStyle, logPageScript, tracePageStyle, tracePageScript})
    {
        EXPECT_THAT(std::string(text),
                    AllOf(Not(HasSubstr("</")), Not(HasSubstr("innerHTML")), Not(testing::IsEmpty())));
    }
}
