// What a scenario may say, as its reader asks for it.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace simulator
{
    // A key that was asked for, whether it was there or not.
    struct KeyNote
    {
        std::string table; // "device.pairing"; empty at the top
        std::string key;
        std::string takes;                   // "0 to 100", "time", "name or number", ...
        std::string otherwise;               // as TOML; empty where nothing is set then
        std::vector<std::string_view> names; // those that it takes
    };
} // namespace simulator
