// The scenario that a process begins with.
#pragma once

#include "simulator/scenario/Scenario.h"

#include <filesystem>
#include <string>

namespace simulator
{
    struct FirstScenario
    {
        Scenario scenario;
        std::string fault; // "file:line: reason"; the scenario is empty then
    };

    // Where the pairing state is kept from one process to the next; empty when it is not.
    std::filesystem::path StateFile();

    // The file that VORLINK_SCENARIO names, or the built-in default, with the pairing state of the state file. A
    // fault of either file goes to standard error.
    FirstScenario LoadFirstScenario();
} // namespace simulator
