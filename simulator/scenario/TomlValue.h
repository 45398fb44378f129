// TOML text as values.
#pragma once

#include "simulator/scenario/Scenario.h"
#include "simulator/scenario/Toml.h"

namespace simulator
{
    // Throws ScenarioError at the first fault.
    toml::table ParseToml(std::string_view toml, std::string_view source);

    // What a node holds, as a fault tells it: "'text'", "12", "a list".
    std::string Describe(toml::node const& node);

    // "true or false is expected"
    std::string_view Expected(PropertyKind kind);

    // The value that a node holds for a property of this kind, if it does. Kind::Unknown takes nothing.
    std::optional<Value> ReadValue(toml::node const& node, PropertyKind kind);
} // namespace simulator
