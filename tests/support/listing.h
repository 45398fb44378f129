// The plug-and-play tool as a scenario plays it, for the library and for the tool's own process.
#pragma once

#include "tests/support/neighbourhood.h"

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <string>

namespace test
{
    // The tool runs in a process of its own, which reads the scenario's file.
    inline void LoadWithTool(std::string const& scenario)
    {
        auto const path = std::filesystem::current_path() / "scenario.toml";
        std::ofstream(path, std::ios::binary) << scenario;
        SetEnvironmentVariableW(L"VORLINK_SCENARIO", path.c_str());
        Load(scenario);
    }

    inline constexpr char tagAddress[] = "c1:d2:e3:f4:a5:b6";
    inline constexpr char tagPiece[] = "C1D2E3F4A5B6";
    inline constexpr char tagInstance[] =
        R"(Instance ID:                BTHLE\Dev_c1d2e3f4a5b6\8&1a2b3c4d&0&C1D2E3F4A5B6)";

    // "Tag", of both protocols: paired over Classic at once, then listed as an LE device.
    inline std::string Tag(std::string const& more = "")
    {
        return Device("Tag", tagAddress,
                      "protocols = ['classic', 'le']\nlisted = true\n" + more + "\n[device.pairing]\nduration-ms = 0");
    }
} // namespace test
