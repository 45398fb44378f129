// Cutting a text at a pattern.
#include "pairing/SplitText.h"

#include <gmock/gmock.h>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;
using vorlink::SplitText;

TEST(SplitText, CutsBetweenDelimiters)
{
    EXPECT_THAT(SplitText("a&b&c", "&"), ElementsAre("a", "b", "c"));
}

TEST(SplitText, DoubledDelimiterGivesAnEmptyPiece)
{
    EXPECT_THAT(SplitText("a&&b", "&"), ElementsAre("a", "", "b"));
}

TEST(SplitText, LeadingDelimiterGivesAnEmptyPiece)
{
    EXPECT_THAT(SplitText("&a", "&"), ElementsAre("", "a"));
}

TEST(SplitText, DelimiterAtTheEndGivesNoEmptyPiece)
{
    EXPECT_THAT(SplitText("a&", "&"), ElementsAre("a"));
}

TEST(SplitText, TextWithoutAMatchIsOnePiece)
{
    EXPECT_THAT(SplitText("abc", ":"), ElementsAre("abc"));
}

TEST(SplitText, EmptyTextIsOneEmptyPiece)
{
    EXPECT_THAT(SplitText("", ":"), ElementsAre(""));
}

TEST(SplitText, DelimiterIsAPattern)
{
    EXPECT_THAT(SplitText("a1b22c", "[0-9]+"), ElementsAre("a", "b", "c"));
}

// One that stands for itself is split by without the pattern's machinery.
TEST(SplitText, DelimiterWithoutAMeaningSplitsAsThePatternOfIt)
{
    constexpr std::string_view letters = "&-a:";
    constexpr std::size_t texts = 4 * 4 * 4 * 4 * 4;
    for (std::size_t text = 0; text < texts; ++text)
    {
        std::string written;
        for (auto rest = text; rest != 0; rest /= letters.size())
        {
            written += letters[rest % letters.size()];
        }
        EXPECT_EQ(SplitText(written, "&"), SplitText(written, "[&]")) << written;
        EXPECT_EQ(SplitText(written, "-a"), SplitText(written, "-[a]")) << written;
    }
}

TEST(SplitText, ADelimiterOfNothingIsAPatternToo)
{
    EXPECT_EQ(SplitText("ab", ""), SplitText("ab", "()"));
}

TEST(SplitText, MalformedPatternIsToldOnStandardOutputAndGivesNothing)
{
    testing::internal::CaptureStdout();
    auto const pieces = SplitText("a(b", "(");
    std::string const output = testing::internal::GetCapturedStdout();
    EXPECT_THAT(pieces, IsEmpty());
    EXPECT_THAT(output, StartsWith("error:"));
    EXPECT_GT(output.size(), std::string("error:\n").size()) << "the pattern error's own text follows at once";
    EXPECT_EQ(output.find('\n'), output.size() - 1) << "one line";
}
