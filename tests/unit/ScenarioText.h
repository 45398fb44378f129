// Scenarios as texts, and what is read of them.
#pragma once

#include "simulator/scenario/Scenario.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace test
{
    inline constexpr std::string_view speakerAddress = "address = \"a4:c1:38:5e:22:0f\"\n";

    inline simulator::Scenario Parse(std::string_view toml)
    {
        return simulator::ParseScenario(toml, "test.toml");
    }

    inline std::string FaultsOf(std::string_view toml)
    {
        try
        {
            Parse(toml);
        }
        catch (simulator::ScenarioError const& error)
        {
            return error.what();
        }
        return "no fault";
    }

    // One device with the address above and more keys or tables of its own.
    inline std::string Device(std::string_view more)
    {
        return "[[device]]\n" + std::string(speakerAddress) + std::string(more);
    }

    inline simulator::Endpoint OnlyEndpoint(std::string_view more)
    {
        auto const scenario = Parse(Device(more));
        EXPECT_EQ(scenario.endpoints.size(), 1u);
        return scenario.endpoints.at(0);
    }
} // namespace test
