// The LE data store's text and its questions, without a file.
#include "pairing/LeData.h"

#include <gmock/gmock.h>

#include <sstream>
#include <string>
#include <utility>

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using vorlink::LeData;

namespace
{
    // What a text adds to a store, and what is echoed meanwhile.
    struct Loaded
    {
        LeData store;
        std::string echo;
    };

    Loaded Load(std::string const& text, LeData store = {})
    {
        std::istringstream stream(text);
        std::string echo;
        vorlink::ReadLeData(stream, store, echo);
        return {std::move(store), echo};
    }
} // namespace

TEST(LeDataLines, KeyAndValueAreTakenAndEchoed)
{
    auto const loaded = Load("AA=BB\n");
    EXPECT_THAT(loaded.store, ElementsAre(Pair("AA", "BB")));
    EXPECT_EQ(loaded.echo, "AA:BB\n");
}

TEST(LeDataLines, WhatFollowsASecondEqualsSignIsIgnored)
{
    auto const loaded = Load("AA=BB=CC\nDD=EE=\nFF=GG==HH\n");
    EXPECT_THAT(loaded.store, ElementsAre(Pair("AA", "BB"), Pair("DD", "EE"), Pair("FF", "GG")));
    EXPECT_EQ(loaded.echo, "AA:BB\nDD:EE\nFF:GG\n");
}

TEST(LeDataLines, LinesWithoutKeyOrValueAreSkippedSilently)
{
    auto const loaded = Load("AA\nAA=\n=BB\n\n=\n==\nAA==BB\n=AA=BB\n");
    EXPECT_THAT(loaded.store, IsEmpty());
    EXPECT_EQ(loaded.echo, "");
}

TEST(LeDataLines, TheFirstValueOfAKeyIsKeptAndEachLineEchoed)
{
    auto const loaded = Load("AA=first\nAA=second\n");
    EXPECT_THAT(loaded.store, ElementsAre(Pair("AA", "first")));
    EXPECT_EQ(loaded.echo, "AA:first\nAA:second\n");
}

TEST(LeDataLines, WhatTheStoreHoldsAlreadyIsKept)
{
    auto const loaded = Load("AA=file\nBB=file\n", {{"AA", "memory"}, {"CC", "memory"}});
    EXPECT_THAT(loaded.store, ElementsAre(Pair("AA", "memory"), Pair("BB", "file"), Pair("CC", "memory")));
}

TEST(LeDataLines, CarriageReturnsBeforeLineFeedsAreNoPartOfTheValue)
{
    auto const loaded = Load("AA=BB\r\n\r\nCC=\r\nDD=EE=FF\r\n");
    EXPECT_THAT(loaded.store, ElementsAre(Pair("AA", "BB"), Pair("DD", "EE")));
    EXPECT_EQ(loaded.echo, "AA:BB\nDD:EE\n");
}

TEST(LeDataLines, OnlyTheCarriageReturnAtTheLineFeedGoes)
{
    EXPECT_THAT(Load("A\rA=B\rB\r\n").store, ElementsAre(Pair("A\rA", "B\rB")));
    EXPECT_THAT(Load("AA=BB\r\r\n").store, ElementsAre(Pair("AA", "BB\r")));
}

TEST(LeDataLines, TheLastLineNeedsNoLineFeed)
{
    EXPECT_THAT(Load("AA=BB\nCC=DD").store, ElementsAre(Pair("AA", "BB"), Pair("CC", "DD")));
}

TEST(LeDataLines, BlanksAndBytesOutsideAsciiArePartOfTheTexts)
{
    EXPECT_THAT(Load(" Z\xc3\xab =\tC1 \n").store, ElementsAre(Pair(" Z\xc3\xab ", "\tC1 ")));
}

TEST(LeDataLines, EntriesAreWrittenInTheOrderOfTheirKeysBytes)
{
    LeData const store = {{"b", "2"}, {"\xc3\xab", "4"}, {"B", "1"}, {"ba", "3"}};
    std::string text;
    std::string echo;
    vorlink::WriteLeData(store, text, echo);
    EXPECT_EQ(text, "B=1\nb=2\nba=3\n\xc3\xab=4\n");
    EXPECT_EQ(echo, "B:1\nb:2\nba:3\n\xc3\xab:4\n");
}

TEST(LeDataLines, WhatIsWrittenLoadsTheSame)
{
    LeData const store = {{"Tag", "C1D2E3F4A5B6"}, {"Zo\xc3\xab's", "A4C1385E220F"}};
    std::string text;
    std::string echo;
    vorlink::WriteLeData(store, text, echo);
    EXPECT_EQ(Load(text).store, store);
}

TEST(LeDataQuestions, AValueIsKnownByAnyPartOfIt)
{
    LeData const store = {{"Tag", "C1D2E3F4A5B6"}, {"Other", "000000000000"}};
    EXPECT_TRUE(vorlink::HasValue(store, "C1D2E3F4A5B6"));
    EXPECT_TRUE(vorlink::HasValue(store, "D2E3"));
    EXPECT_TRUE(vorlink::HasValue(store, ""));
    EXPECT_FALSE(vorlink::HasValue(store, "c1d2"));
    EXPECT_FALSE(vorlink::HasValue(store, "C1D2E3F4A5B6&"));
    EXPECT_FALSE(vorlink::HasValue(store, "Tag")) << "a key";
}

TEST(LeDataQuestions, AnEmptyStoreKnowsNothing)
{
    EXPECT_FALSE(vorlink::HasValue({}, "C1"));
    EXPECT_FALSE(vorlink::HasValue({}, ""));
    EXPECT_EQ(vorlink::ValueOf({}, "Tag"), "");
}

TEST(LeDataQuestions, AValueIsFoundByItsWholeKey)
{
    LeData const store = {{"Tag", "C1"}};
    EXPECT_EQ(vorlink::ValueOf(store, "Tag"), "C1");
    EXPECT_EQ(vorlink::ValueOf(store, "Ta"), "");
    EXPECT_EQ(vorlink::ValueOf(store, "C1"), "");
}
