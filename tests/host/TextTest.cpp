#include "host/Text.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

using namespace host;

TEST(Harmless, LeavesOrdinaryTextAlone)
{
    EXPECT_EQ(Harmless("Kitchen Speaker"), "Kitchen Speaker");
    EXPECT_EQ(Harmless("Küche 🔊 \xEF\xBF\xBD 台所"), "Küche 🔊 \xEF\xBF\xBD 台所");
    EXPECT_EQ(Harmless(""), "");
}

TEST(Harmless, SpellsControlCharacters)
{
    EXPECT_EQ(Harmless("\x1b[2J"), "\\x1B[2J");
    EXPECT_EQ(Harmless(std::string_view("\0\t\r\n\x7f", 5)), "\\x00\\x09\\x0D\\x0A\\x7F");
    EXPECT_EQ(Harmless("\xC2\x9B"
                       "2J"),
              "\\u009B2J"); // the one-character form of escape and bracket
}

TEST(Harmless, SpellsWhatReordersALine)
{
    EXPECT_EQ(Harmless("\u202Egpj.exe"), "\\u202Egpj.exe");
    EXPECT_EQ(Harmless("\u2066\u200F\u061C"), "\\u2066\\u200F\\u061C");
}

TEST(Harmless, SpellsBytesThatAreNotUtf8)
{
    EXPECT_EQ(Harmless("\x80"), "\\x80");                            // a continuation without a beginning
    EXPECT_EQ(Harmless("a\xC3"), "a\\xC3");                          // cut off
    EXPECT_EQ(Harmless("\xC3("), "\\xC3(");                          // broken off
    EXPECT_EQ(Harmless("\xC0\x9B"), "\\xC0\\x9B");                   // longer than need be
    EXPECT_EQ(Harmless("\xED\xA0\x80"), "\\xED\\xA0\\x80");          // half a surrogate pair
    EXPECT_EQ(Harmless("\xF4\x90\x80\x80"), "\\xF4\\x90\\x80\\x80"); // beyond the last character
    EXPECT_EQ(Harmless("\xFF"), "\\xFF");
}

TEST(Harmless, LeavesABackslashAloneThatBeginsNoSpelling)
{
    EXPECT_EQ(Harmless("C:\\users\\Dev_1\\"), "C:\\users\\Dev_1\\");
}

TEST(Harmless, DoublesABackslashThatWouldBeginOne)
{
    EXPECT_EQ(Harmless("\\x41"), "\\\\x41");
    EXPECT_EQ(Harmless("\\u0041"), "\\\\u0041");
    EXPECT_EQ(Harmless("\\\x07"), "\\\\\\x07");
}

TEST(Harmless, IsReadBack)
{
    for (auto const* const name :
         {"Zoë's Phone", "a\nb", "\\", "\\\\", "\\x41", "\\x4", "\x1b[0m", "\u202Ex", "\xFF\xC3", "\xC2\x9B"})
    {
        EXPECT_EQ(FromHarmless(Harmless(name)), name);
    }
}

TEST(Harmless, IsReadBackWhateverTheText)
{
    std::mt19937 random(20'261'121);
    constexpr char bytes[] = "\\\\\\xu0149AFaf\n\x1b\x80\xC3\xA9\xE2\x80\xAE";
    for (int round = 0; round < 20'000; ++round)
    {
        std::string text(random() % 9, ' ');
        for (auto& byte : text)
        {
            byte = bytes[random() % (sizeof bytes - 1)];
        }
        ASSERT_EQ(FromHarmless(Harmless(text)), text) << Harmless(text);
    }
}

TEST(FromHarmless, TakesOtherTextAsItStands)
{
    EXPECT_EQ(FromHarmless("C:\\users"), "C:\\users");
    EXPECT_EQ(FromHarmless("\\x4"), "\\x4");
    EXPECT_EQ(FromHarmless("\\"), "\\");
}

TEST(Columns, OfATerminal)
{
    EXPECT_EQ(Columns("Zoë"), 3u);
    EXPECT_EQ(Columns("台所"), 4u);
    EXPECT_EQ(Columns("📱"), 2u);
    EXPECT_EQ(Columns("e\u0301"), 1u);
}

TEST(FitColumns, EndsWithAnEllipsisWhereSomethingIsLeftOut)
{
    EXPECT_EQ(FitColumns("Kitchen", 7), "Kitchen");
    EXPECT_EQ(FitColumns("Kitchen", 6), "Kitch…");
    EXPECT_EQ(FitColumns("台所台所", 6), "台所…") << "no half of a character";
    EXPECT_EQ(FitColumns("Kitchen", 0), "");
}

TEST(PadColumns, FillsUp)
{
    EXPECT_EQ(PadColumns("台", 4), "台  ");
    EXPECT_EQ(PadColumns("Kitchen", 4), "Kit…");
}

TEST(WrapColumns, BreaksAtBlanks)
{
    EXPECT_EQ(WrapColumns("one two three", 7), "one two\nthree");
    EXPECT_EQ(WrapColumns("one two three", 3), "one\ntwo\nthree") << "a word that does not fit stays whole";
    EXPECT_EQ(WrapColumns("one", 2), "one");
    EXPECT_EQ(WrapColumns("a  b", 80), "a  b");
    EXPECT_EQ(WrapColumns("", 80), "");
}
