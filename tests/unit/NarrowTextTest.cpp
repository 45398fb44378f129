// Texts of the platform in the code pages of the library's.
#include "pairing/NarrowText.h"

#include <gtest/gtest.h>

using vorlink::CodePage;
using vorlink::NarrowText;

TEST(NarrowText, Utf8KeepsEveryCharacter)
{
    EXPECT_EQ(NarrowText(L"K\u00fcche \U0001F50A", CodePage::Utf8), "K\xc3\xbc"
                                                                    "che \xf0\x9f\x94\x8a");
}

TEST(NarrowText, AsciiIsTheSameInEveryCodePage)
{
    for (auto const page : {CodePage::Ansi, CodePage::Oem, CodePage::Utf8})
    {
        EXPECT_EQ(NarrowText(L"Speaker 2", page), "Speaker 2");
    }
}

TEST(NarrowText, HalfOfACharacterBecomesTheReplacementCharacter)
{
    constexpr wchar_t text[] = {L'a', 0xD800, L'z', 0xDC00, L'\0'};
    EXPECT_EQ(NarrowText(text, CodePage::Utf8), "a\xef\xbf\xbdz\xef\xbf\xbd");
}

TEST(NarrowText, EmptyTextIsEmpty)
{
    EXPECT_EQ(NarrowText(L"", CodePage::Utf8), "");
}

TEST(NarrowText, CodePagesAreTheSystemsNumbers)
{
    EXPECT_EQ(static_cast<unsigned>(CodePage::Ansi), 0u);
    EXPECT_EQ(static_cast<unsigned>(CodePage::Oem), 1u);
    EXPECT_EQ(static_cast<unsigned>(CodePage::Utf8), 65001u);
}
