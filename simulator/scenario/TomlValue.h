// TOML text as values: every fault is a ScenarioError that names its line.
#pragma once

#include "simulator/scenario/Scenario.h"
#include "simulator/scenario/Toml.h"

namespace simulator
{
    toml::table ParseToml(std::string_view toml, std::string_view source);

    [[noreturn]] void Fail(toml::source_region const& where, std::string_view source, std::string_view reason);

    // The value that a node holds for a property of this kind. Kind::Unknown takes nothing.
    Value ReadValue(toml::node const& node, std::string_view source, PropertyKind kind);
} // namespace simulator
