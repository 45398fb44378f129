#pragma once

#include <string_view>

namespace simulator
{
    // The neighbourhood of a process that names no other: TOML text, with a second or two of life in it.
    std::string_view DefaultScenario();
} // namespace simulator
