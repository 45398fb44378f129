#pragma once

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string_view>

namespace test
{
    // The programs that this test starts from now on meet the neighbourhood of this scenario.
    inline void UseScenario(std::string_view toml)
    {
        auto const path = std::filesystem::current_path() / "scenario.toml";
        std::ofstream(path, std::ios::binary) << toml;
        SetEnvironmentVariableW(L"VORLINK_SCENARIO", path.c_str());
    }
} // namespace test
