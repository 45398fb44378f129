// What vorlinkctl doctor shows of each check.
#include "host/Text.h"
#include "host/doctor/Finding.h"

#include <gmock/gmock.h>

#include <sstream>

using namespace host;
using testing::HasSubstr;

namespace
{
    Finding const warning{"data file", Verdict::Warning, "2 LE devices, and 1 malformed line",
                          "Mend it, or delete the file."};
} // namespace

TEST(Finding, IsARowWithAHint)
{
    EXPECT_EQ(LayOut(warning, 80), "warning  data file  2 LE devices, and 1 malformed line\n"
                                   "                    -> Mend it, or delete the file.\n");
    EXPECT_EQ(LayOut({"folder", Verdict::Ok, "writable", ""}, 80), "ok       folder     writable\n");
}

TEST(Finding, IsBelowItsHeadWhereItIsNarrow)
{
    EXPECT_EQ(LayOut(warning, 30), "warning  data file\n"
                                   "  2 LE devices, and 1\n"
                                   "  malformed line\n"
                                   "  -> Mend it, or delete the\n"
                                   "  file.\n");
}

TEST(Finding, StaysWithinTheColumns)
{
    for (std::size_t columns = 20; columns < 100; ++columns)
    {
        std::istringstream lines(LayOut(warning, columns));
        for (std::string line; std::getline(lines, line);)
        {
            EXPECT_LE(Columns(line), columns);
        }
    }
}

TEST(Finding, IsHarmless)
{
    EXPECT_THAT(LayOut({"scenario", Verdict::Problem, "a\x1b[2J", "b\x07"}, 80), HasSubstr("a\\x1B[2J"));
    EXPECT_THAT(LayOut({"scenario", Verdict::Problem, "a\x1b[2J", "b\x07"}, 80), HasSubstr("b\\x07"));
}

TEST(Findings, AreSummedUp)
{
    Finding const ok{"folder", Verdict::Ok, "", ""};
    Finding const unknown{"radio", Verdict::Unknown, "", ""};
    Finding const problem{"library", Verdict::Problem, "", ""};
    EXPECT_EQ(Summary({ok, unknown}), "No problems.");
    EXPECT_EQ(Summary({ok, warning}), "No problems, 1 warning.");
    EXPECT_EQ(Summary({problem, warning, problem, warning}), "2 problems, 2 warnings.");
    EXPECT_FALSE(HasProblem({ok, unknown, warning}));
    EXPECT_TRUE(HasProblem({ok, problem}));
}

TEST(Entries, AreCountedAsTheLibraryReadsThem)
{
    EXPECT_EQ(CheckEntries("").text, "no LE devices in MyLEData");
    EXPECT_EQ(CheckEntries("Tag=C1D2E3F4A5B6\n").text, "1 LE device in MyLEData");
    EXPECT_EQ(CheckEntries("Tag=C1D2E3F4A5B6\n\nLamp=00").text, "2 LE devices in MyLEData");
    EXPECT_EQ(CheckEntries("Tag=C1D2E3F4A5B6\n\nLamp=00").verdict, Verdict::Ok);
}

TEST(Entries, ThatAreMalformedAreAWarning)
{
    for (auto const* const line : {"Tag", "=C1D2E3F4A5B6", "Tag=", "A=B=C1D2E3F4A5B6"})
    {
        auto const finding = CheckEntries("Lamp=00\n" + std::string(line) + "\n");
        EXPECT_EQ(finding.verdict, Verdict::Warning) << line;
        EXPECT_EQ(finding.text, "1 LE device in MyLEData, and 1 malformed line") << line;
    }
}
