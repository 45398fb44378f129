// The scenario that a process begins with.
#pragma once

#include "simulator/scenario/Scenario.h"

#include <string>

namespace simulator
{
    struct FirstScenario
    {
        Scenario scenario;
        std::string fault; // all of them, one a line; the scenario is empty then
    };

    // The file that VORLINK_SCENARIO names, or the built-in default, with the pairing state of the state file. A
    // fault of either file goes to standard error.
    FirstScenario LoadFirstScenario();
} // namespace simulator
