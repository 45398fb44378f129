// The pairing state as text.
#include "simulator/scenario/PairingState.h"

#include <gtest/gtest.h>

using namespace simulator;

namespace
{
    std::string FaultOf(std::string const& text)
    {
        try
        {
            ParsePairingState(text, "state");
        }
        catch (ScenarioError const& error)
        {
            return error.what();
        }
        return {};
    }
} // namespace

TEST(PairingState, IsALineAnEndpoint)
{
    EXPECT_EQ(PairingStateText({{"one", true}, {"two with blanks ", false}}),
              "paired one\nunpaired two with blanks \n");
}

TEST(PairingState, IsReadAsItWasWritten)
{
    PairingState const state{{"one", true}, {"two with blanks ", false}, {"paired ", true}};
    EXPECT_EQ(ParsePairingState(PairingStateText(state), "state"), state);
}

TEST(PairingState, PassesOverBlankLinesAndCarriageReturns)
{
    EXPECT_EQ(ParsePairingState("\r\npaired one\r\n\nunpaired two", "state"),
              (PairingState{{"one", true}, {"two", false}}));
}

TEST(PairingState, LeavesOutAnIdentifierWithALineBreak)
{
    EXPECT_EQ(PairingStateText({{"one\npaired two", true}, {"three\r", true}}), "");
}

TEST(PairingState, FaultHasItsLine)
{
    EXPECT_EQ(FaultOf("paired one\nsomething else\n"),
              "state:2: 'paired' or 'unpaired' and an identifier are expected");
    EXPECT_NE(FaultOf("paired "), "");
    EXPECT_NE(FaultOf("Paired one"), "");
    EXPECT_NE(FaultOf(std::string("\0", 1)), "");
}

TEST(PairingState, AppliesToTheEndpointsThatItNames)
{
    auto scenario = ParseScenario("[[device]]\naddress = '00:00:00:00:00:01'\nprotocols = ['classic', 'le']\n"
                                  "is-paired = true\n",
                                  "scenario");
    ApplyPairingState({{scenario.endpoints[1].id, false}, {"unknown", true}}, scenario);
    EXPECT_EQ(scenario.endpoints[0].properties["System.Devices.Aep.IsPaired"], Value(true));
    EXPECT_EQ(scenario.endpoints[1].properties["System.Devices.Aep.IsPaired"], Value(false));
}
