// Which endpoints are paired, as text: what one process leaves to the next.
#pragma once

#include "simulator/scenario/Scenario.h"

#include <map>
#include <string>
#include <string_view>

namespace simulator
{
    using PairingState = std::map<std::string, bool>; // by identifier

    // A line an endpoint, "paired <identifier>" or "unpaired <identifier>". One whose identifier holds a line
    // break is left out.
    std::string PairingStateText(PairingState const& state);

    // Throws ScenarioError. Blank lines and carriage returns before a line feed are passed over.
    PairingState ParsePairingState(std::string_view text, std::string_view sourceName);

    // Endpoints that the state does not name stay as the scenario has them.
    void ApplyPairingState(PairingState const& state, Scenario& scenario);
} // namespace simulator
