// The query language of the simulated platform: what it selects.
#include "tests/unit/AqsDevices.h"

#include <gtest/gtest.h>

#include <string>

using namespace simulator;
using namespace test;

namespace
{
    // The letters of a query stand for properties that hold (T) or do not (F), to test how terms combine;
    // I stands for the instruction to look for devices.
    bool Combines(std::string_view pattern)
    {
        std::string query;
        for (auto const character : pattern)
        {
            query += character == 'T'   ? "System.Devices.Aep.CanPair:=System.StructuredQueryType.Boolean#True"
                     : character == 'F' ? "System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#True"
                     : character == 'I'
                         ? "System.Devices.Aep.Bluetooth.IssueInquiry:=System.StructuredQueryType.Boolean#True"
                     : character == '&' ? "AND"
                     : character == '|' ? "OR"
                     : character == '!' ? "NOT "
                                        : std::string(1, character);
        }
        return Selects(query, Speaker());
    }

    struct LibraryFilter
    {
        std::string_view query;
        std::string_view protocol;
        bool pairableOnly;
    };

    using AqsLibraryFilter = testing::TestWithParam<LibraryFilter>;

    constexpr LibraryFilter libraryFilters[] = {
        {R"((System.Devices.Aep.ProtocolId:= "{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}") )", classicId, false},
        {R"((System.Devices.Aep.ProtocolId:= "{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}") AND(System.Devices.Aep.CanPair:= System.StructuredQueryType.Boolean#True OR System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#True))",
         classicId, true},
        {R"((System.Devices.Aep.ProtocolId:="{bb7bb05e-5972-42b5-94fc-76eaa7084d49}") )", leId, false},
        {R"((System.Devices.Aep.ProtocolId:="{bb7bb05e-5972-42b5-94fc-76eaa7084d49}") AND (System.Devices.Aep.CanPair:=System.StructuredQueryType.Boolean#True OR System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#True))",
         leId, true},
    };
} // namespace

TEST_P(AqsLibraryFilter, PicksItsProtocolInADualModeNeighbourhood)
{
    auto const query = Query::Parse(GetParam().query);
    for (auto const protocol : {classicId, leId})
    {
        for (auto const canPair : {true, false})
        {
            for (auto const isPaired : {true, false})
            {
                auto const pairable = canPair || isPaired;
                auto const wanted = protocol == GetParam().protocol && (pairable || !GetParam().pairableOnly);
                EXPECT_EQ(query.Matches(Device(protocol, canPair, isPaired)), wanted)
                    << protocol << " can pair " << canPair << " is paired " << isPaired;
            }
        }
    }
    EXPECT_FALSE(query.Matches({}));
}

INSTANTIATE_TEST_SUITE_P(All, AqsLibraryFilter, testing::ValuesIn(libraryFilters));

TEST(Aqs, PlatformSelectorForUnpairedDevicesIsUnderstood)
{
    constexpr auto selector =
        R"(System.Devices.DevObjectType:=5 AND System.Devices.Aep.ProtocolId:="{E0CBF06C-CD8B-4647-BB8A-263B43F0F974}" AND (System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#False OR System.Devices.Aep.Bluetooth.IssueInquiry:=System.StructuredQueryType.Boolean#True))";
    auto device = Device(classicId, true, false);
    EXPECT_FALSE(Selects(selector, device));
    device["System.Devices.DevObjectType"] = std::uint32_t{5};
    EXPECT_TRUE(Selects(selector, device));
    device["System.Devices.Aep.IsPaired"] = true;
    EXPECT_FALSE(Selects(selector, device));
}

TEST(Aqs, TermsCombine)
{
    EXPECT_TRUE(Combines("T & T"));
    EXPECT_FALSE(Combines("T & F"));
    EXPECT_FALSE(Combines("F & T"));
    EXPECT_TRUE(Combines("T | F"));
    EXPECT_TRUE(Combines("F | T"));
    EXPECT_FALSE(Combines("F | F"));
    EXPECT_FALSE(Combines("! T"));
    EXPECT_TRUE(Combines("! F"));
    EXPECT_TRUE(Combines("! ! T"));
    EXPECT_TRUE(Combines("T & T & T"));
    EXPECT_FALSE(Combines("T & T & F"));
    EXPECT_TRUE(Combines("F | F | T"));
}

TEST(Aqs, AndAndOrBindFromLeftToRight)
{
    EXPECT_FALSE(Combines("T | T & F"));
    EXPECT_FALSE(Combines("T | F & F"));
    EXPECT_TRUE(Combines("T | (F & F)"));
    EXPECT_TRUE(Combines("T | F & T"));
    EXPECT_TRUE(Combines("F & F | T"));
    EXPECT_FALSE(Combines("F & F | T & F"));
    EXPECT_TRUE(Combines("T | T & F | T"));
    EXPECT_FALSE(Combines("(T | T) & F"));
    EXPECT_FALSE(Combines("F & (F | T)"));
}

TEST(Aqs, JuxtapositionIsAnd)
{
    EXPECT_TRUE(Combines("T T"));
    EXPECT_FALSE(Combines("T F"));
    EXPECT_FALSE(Combines("(T)(F)"));
    EXPECT_TRUE(Combines("F F | T"));    // (F F) OR T
    EXPECT_FALSE(Combines("F (F | T)")); // unlike this
    EXPECT_FALSE(Combines("T | F F"));   // (T OR F) F
    EXPECT_TRUE(Combines("T | (F F)"));
    EXPECT_TRUE(Combines("T !F"));
}

TEST(Aqs, NotBindsTighterThanAnd)
{
    EXPECT_FALSE(Combines("!F & F"));
    EXPECT_TRUE(Combines("!(F & F)"));
    EXPECT_TRUE(Combines("!T | T"));
    EXPECT_FALSE(Combines("!(T | T)"));
    EXPECT_TRUE(Combines("T & !F"));
}

TEST(Aqs, AQuoteWithinQuotesIsDoubled)
{
    Properties const blue = {{"System.ItemNameDisplay", R"(The "blue" one)"}};
    EXPECT_TRUE(Selects(R"(System.ItemNameDisplay:="The ""blue"" one")", blue));
    EXPECT_FALSE(Selects(R"(System.ItemNameDisplay:="The ""green"" one")", blue));
    EXPECT_TRUE(Selects(R"(System.ItemNameDisplay:~~"""")", blue));
    EXPECT_FALSE(Selects(R"(System.ItemNameDisplay:~~"""""")", blue));
    EXPECT_TRUE(Selects(R"(System.ItemNameDisplay:~~"""BLUE"""AND System.ItemNameDisplay:~>"one")", blue));
    EXPECT_TRUE(Selects(R"(System.ItemNameDisplay:="")", {{"System.ItemNameDisplay", ""}}));
}

TEST(Aqs, AnInstructionSelectsAndExcludesNothing)
{
    for (auto const* const pattern : {"T | I", "I | T", "T & I", "I & T", "T I", "!I T", "T & !I", "(I) & T", "(I I) T",
                                      "F | I | T", "T & I & T", "F & I | T", "I", "!I", "(I | I)"})
    {
        EXPECT_TRUE(Combines(pattern)) << pattern;
    }
    for (auto const* const pattern : {"F | I", "I | F", "F & I", "I & F", "F I", "!I F", "F | !I", "(I) | F",
                                      "(I | I) | F", "T & (F | I)", "T & (I | F)", "I | T & F", "!(T | I)"})
    {
        EXPECT_FALSE(Combines(pattern)) << pattern;
    }
}

TEST(Aqs, AnInstructionIsNoProperty)
{
    constexpr std::string_view instruction =
        "system.devices.aep.bluetooth.ISSUEINQUIRY:=System.StructuredQueryType.Boolean#False";
    for (auto const& value : {Value{}, Value{true}, Value{false}})
    {
        EXPECT_TRUE(Selects(instruction, {{"System.Devices.Aep.Bluetooth.IssueInquiry", value}}));
    }
    EXPECT_TRUE(Selects(instruction, {}));
    EXPECT_FALSE(Query::Parse(instruction).IsBlank());
}

TEST(Aqs, EmptyAndBlankTextMatchEverything)
{
    for (auto const* const text : {"", " ", " \t\r\n"})
    {
        EXPECT_TRUE(Selects(text, {}));
        EXPECT_TRUE(Selects(text, Speaker()));
        EXPECT_EQ(Query::Parse(text).IsBlank(), *text != '\0');
    }
    EXPECT_FALSE(Query::Parse(" System.ItemNameDisplay:=[] ").IsBlank());
}

TEST(Aqs, LongFlatQueriesAreFine)
{
    std::string query = "System.Devices.Aep.SignalStrength:=0";
    for (int number = 1; number < 10'000; ++number)
    {
        query += " OR System.Devices.Aep.SignalStrength:=-" + std::to_string(number);
    }
    EXPECT_TRUE(Selects(query, Speaker()));
}

TEST(Aqs, LongMixedQueriesAreFine)
{
    std::string pattern = "F";
    for (int repeats = 0; repeats < 50'000; ++repeats)
    {
        pattern += " | T & F";
    }
    EXPECT_FALSE(Combines(pattern));
    EXPECT_TRUE(Combines(pattern + " | T"));
}

TEST(Aqs, QueryOutlivesItsText)
{
    auto text = std::string("System.ItemNameDisplay:=\"Kitchen Speaker\"");
    auto const query = Query::Parse(text);
    auto const copy = query;
    text.assign(text.size(), 'x');
    EXPECT_TRUE(query.Matches(Speaker()));
    EXPECT_TRUE(copy.Matches(Speaker()));
}
