// A value for a property, from TOML.
#include "simulator/scenario/Scenario.h"

#include <gtest/gtest.h>

#include <cstdint>

using namespace simulator;

TEST(ScenarioValue, FollowsThePropertysKind)
{
    EXPECT_EQ(ParseValue("System.Devices.Aep.IsPaired", "true"), Value{true});
    EXPECT_EQ(ParseValue("system.devices.aep.ispaired", "false"), Value{false});
    EXPECT_EQ(ParseValue("System.Devices.Aep.SignalStrength", "-2147483648"), Value{INT32_MIN});
    EXPECT_EQ(ParseValue("System.ItemNameDisplay", "\"Zoë\""), Value{"Zoë"});
    EXPECT_EQ(ParseValue("System.ItemNameDisplay", "'a \"b\"'"), Value{"a \"b\""});
    EXPECT_EQ(ParseValue("System.Devices.Aep.ModelId", "\"{BB7BB05E-5972-42b5-94fc-76eaa7084d49}\""),
              Value{Guid{"{bb7bb05e-5972-42b5-94fc-76eaa7084d49}"}});
    EXPECT_EQ(ParseValue("System.ItemNameDisplay", ""), Value{});
}

TEST(ScenarioValue, RefusesEverythingElse)
{
    for (auto const* const toml : {"\"true\"", "1", "1.0", "True", "[true]", "true false", "true\nother = 1", " ", "\"",
                                   "true\nvalue = true", "{a = true}"})
    {
        EXPECT_THROW(ParseValue("System.Devices.Aep.IsPaired", toml), ScenarioError) << toml;
    }
    EXPECT_THROW(ParseValue("System.Devices.Aep.SignalStrength", "2147483648"), ScenarioError);
    EXPECT_THROW(ParseValue("System.Devices.Aep.Colour", "1"), ScenarioError);
    EXPECT_THROW(ParseValue("System.Devices.Aep.Colour", ""), ScenarioError);
}
