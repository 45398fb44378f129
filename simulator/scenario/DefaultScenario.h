#pragma once

#include <string_view>

namespace simulator
{
    // The neighbourhood of a process that names no other: TOML text, with the better part of a second of life in it.
    std::string_view DefaultScenario();
} // namespace simulator
