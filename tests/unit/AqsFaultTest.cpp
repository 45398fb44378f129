// What the query language of the simulated platform refuses.
#include "simulator/query/Aqs.h"

#include <gmock/gmock.h>

#include <cstddef>
#include <string>
#include <vector>

using namespace simulator;
using testing::ElementsAre;
using testing::EndsWith;

namespace
{
    using AqsFault = testing::TestWithParam<std::string_view>;

    std::string Fault(std::string_view query)
    {
        try
        {
            Query::Parse(query);
        }
        catch (QueryError const& error)
        {
            return error.what();
        }
        return "accepted";
    }

    Properties Pairable()
    {
        return {{"System.Devices.Aep.CanPair", true}};
    }

    std::string Nested(std::size_t depth, std::string_view opening, std::string_view closing)
    {
        std::string query;
        for (std::size_t level = 0; level < depth; ++level)
        {
            query += opening;
        }
        query += "System.Devices.Aep.CanPair:=System.StructuredQueryType.Boolean#True";
        for (std::size_t level = 0; level < depth; ++level)
        {
            query += closing;
        }
        return query;
    }
} // namespace

TEST_P(AqsFault, IsRefused)
{
    EXPECT_THROW(Query::Parse(GetParam()), QueryError);
}

INSTANTIATE_TEST_SUITE_P(
    Terms, AqsFault,
    testing::Values("System.ItemNameDisplay", "System.ItemNameDisplay \"x\"", "System.ItemNameDisplay=\"x\"",
                    "System.ItemNameDisplay:", "System.ItemNameDisplay:=", "System.ItemNameDisplay:= ",
                    "System.ItemNameDisplay:NOT", "System.ItemNameDisplay:==\"x\"", "System.ItemNameDisplay:!\"x\"",
                    "System.ItemNameDisplay:~\"x\"", "System.ItemNameDisplay:=\"x", R"(System.ItemNameDisplay:="x"")",
                    R"(System.ItemNameDisplay:=""")", R"(System.ItemNameDisplay:="x"y")", "System.ItemNameDisplay:=[",
                    "System.ItemNameDisplay:=[x]", "System.ItemNameDisplay::=\"x\"",
                    "System.ItemNameDisplay:=\"x\" \"y\"", ":=\"x\"", "\"x\"", "[]", "5",
                    "System.Devices.Aep.NoSuchThing:=5", "NoSuchThing:=[]",
                    "{A35996AB-11CF-4935-8B61-A6761081ECDF} 13:=5"));

INSTANTIATE_TEST_SUITE_P(
    Types, AqsFault,
    testing::Values(
        "System.Devices.Aep.CanPair:=1", "System.Devices.Aep.Bluetooth.IssueInquiry:=1",
        "System.Devices.Aep.CanPair:=True", "System.Devices.Aep.CanPair:=\"System.StructuredQueryType.Boolean#True\"",
        "System.Devices.Aep.CanPair:=System.StructuredQueryType.Boolean#Maybe",
        "System.Devices.Aep.CanPair:>System.StructuredQueryType.Boolean#True",
        "System.Devices.Aep.SignalStrength:=strong", "System.Devices.Aep.SignalStrength:=\"5\"",
        "System.Devices.Aep.SignalStrength:=2147483648", "System.Devices.Aep.SignalStrength:=5x",
        "System.Devices.Aep.SignalStrength:=+-5", "System.Devices.Aep.SignalStrength:<[]",
        "System.Devices.Aep.SignalStrength:~~5", "System.Devices.Aep.SignalStrength:~>5", "System.ItemNameDisplay:~![]",
        "System.ItemNameDisplay:~=[]", "System.ItemNameDisplay:=System.StructuredQueryType.Boolean#True",
        "System.ItemNameDisplay:=5", "System.ItemNameDisplay:<\"x\"", "System.ItemNameDisplay:>=\"x\"",
        "System.Devices.Aep.SignalStrength:<=[]",
        "System.Devices.Aep.CanPair:>=System.StructuredQueryType.Boolean#True", "System.Devices.Aep.ProtocolId:<[]",
        "System.ItemNameDisplay:~~[]", "System.Devices.Aep.ProtocolId:=e0cbf06c-cd8b-4647-bb8a-263b43f0f974",
        "System.Devices.Aep.ProtocolId:=\"e0cbf06c-cd8b-4647-bb8a-263b43f0f974\"",
        "System.Devices.Aep.ProtocolId:={e0cbf06c-cd8b-4647-bb8a-263b43f0f97}",
        "System.Devices.Aep.ProtocolId:={e0cbf06c-cd8b-4647-bb8a-263b43f0f97g}",
        "System.Devices.Aep.ProtocolId:={e0cbf06c-cd8b-4647-bb8a-263b43f0f974",
        "System.Devices.Aep.ProtocolId:=\"Bluetooth\""));

INSTANTIATE_TEST_SUITE_P(Structure, AqsFault,
                         testing::Values("(", ")", "()", "AND", "OR", "NOT", "(System.ItemNameDisplay:=[]",
                                         "System.ItemNameDisplay:=[])", "System.ItemNameDisplay:=[] AND",
                                         "AND System.ItemNameDisplay:=[]", "System.ItemNameDisplay:=[] OR",
                                         "OR System.ItemNameDisplay:=[]", "NOT NOT",
                                         "System.ItemNameDisplay:=[] AND OR System.ItemNameDisplay:=[]",
                                         "System.ItemNameDisplay:=[] and System.ItemNameDisplay:=[]",
                                         "System.ItemNameDisplay:=[] or System.ItemNameDisplay:=[]",
                                         "not System.ItemNameDisplay:=[]",
                                         "System.ItemNameDisplay:= AND System.ItemNameDisplay:=[]",
                                         "System.ItemNameDisplay:(\"a\" OR \"b\")", "()System.ItemNameDisplay:=[]"));

TEST(AqsFaults, NameTheirPlace)
{
    EXPECT_THAT(Fault("(System.ItemNameDisplay:=5)"), EndsWith("at byte 25"));
}

TEST(AqsFaults, NameTheirPlaceBehindAZeroToo)
{
    using namespace std::string_view_literals;
    EXPECT_EQ(Fault(" a\0b:=5"sv), "no property is named 'a?b' at byte 1");
}

TEST(AqsFaults, HostileNestingIsRefused)
{
    EXPECT_TRUE(Query::Parse(Nested(64, "(", ")")).Matches(Pairable()));
    EXPECT_TRUE(Query::Parse(Nested(64, "NOT ", "")).Matches(Pairable()));
    EXPECT_THROW(Query::Parse(Nested(65, "(", ")")), QueryError);
    EXPECT_THROW(Query::Parse(Nested(65, "NOT ", "")), QueryError);
    EXPECT_THROW(Query::Parse(Nested(1'000'000, "(", ")")), QueryError);
    EXPECT_THROW(Query::Parse(Nested(1'000'000, "NOT ", "")), QueryError);
    EXPECT_THROW(Query::Parse(Nested(1'000'000, "(NOT ", ")")), QueryError);
}

TEST(AqsFaults, AnyTruncationEitherParsesOrIsRefused)
{
    constexpr std::string_view query =
        R"(NOT (System.Devices.Aep.ProtocolId:≠{e0cbf06c-cd8b-4647-bb8a-263b43f0f974} OR System.ItemNameDisplay:~<"Ki") System.Devices.Aep.SignalStrength:NOT[])";
    std::vector<std::size_t> accepted;
    for (std::size_t length = 0; length <= query.size(); ++length)
    {
        try
        {
            Query::Parse(std::string(query.substr(0, length)));
            accepted.push_back(length);
        }
        catch (QueryError const&)
        {
            continue;
        }
    }
    // Nothing at all; up to the closing parenthesis and the blank after it; everything.
    auto const closing = query.find(')') + 1;
    EXPECT_THAT(accepted, ElementsAre(0u, closing, closing + 1, query.size()));
}
