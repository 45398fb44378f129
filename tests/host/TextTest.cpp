#include "host/Text.h"

#include <gtest/gtest.h>

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
