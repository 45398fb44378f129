// Format strings of strangers, without arguments.
#include "pairing/FormatText.h"

#include <gtest/gtest.h>

using vorlink::FormatWithoutArguments;

TEST(FormatText, PlainTextStandsAsItIs)
{
    EXPECT_EQ(FormatWithoutArguments("Headset"), "Headset");
}

TEST(FormatText, DoubledPercentBecomesOne)
{
    EXPECT_EQ(FormatWithoutArguments("100%% cotton"), "100% cotton");
    EXPECT_EQ(FormatWithoutArguments("%%%%"), "%%");
}

TEST(FormatText, ConversionsReadNothingAndStandAsTheyAre)
{
    EXPECT_EQ(FormatWithoutArguments("%s%n%d%100000d%*x"), "%s%n%d%100000d%*x");
    EXPECT_EQ(FormatWithoutArguments("%%%s"), "%%s");
}

TEST(FormatText, LonePercentAtTheEndStands)
{
    EXPECT_EQ(FormatWithoutArguments("50%"), "50%");
}

TEST(FormatText, EmptyStaysEmpty)
{
    EXPECT_EQ(FormatWithoutArguments(""), "");
}
