// The plug-and-play tool as a scenario plays it, for the library and for the tool's own process.
#pragma once

#include "tests/support/Neighbourhood.h"

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

    // In the place of WinExec, which does not wait for the tool: a machine with much to do needs longer for it than the
    // library's fixed time.
    inline UINT WINAPI RunToItsEnd(char const* command, UINT)
    {
        std::string line = command;
        STARTUPINFOA startup{};
        startup.cb = sizeof startup;
        PROCESS_INFORMATION process{};
        if (!CreateProcessA(nullptr, line.data(), nullptr, nullptr, FALSE, CREATE_NO_WINDOW, nullptr, nullptr, &startup,
                            &process))
        {
            return ERROR_FILE_NOT_FOUND;
        }
        WaitForSingleObject(process.hProcess, INFINITE);
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        return 33; // as for every success
    }

    inline constexpr char tagPiece[] = "C1D2E3F4A5B6";
    inline constexpr char tagInstance[] =
        R"(Instance ID:                BTHLE\Dev_c1d2e3f4a5b6\8&1a2b3c4d&0&C1D2E3F4A5B6)";

    // "Tag", of both protocols: paired over Classic at once, then listed as an LE device.
    inline std::string Tag(std::string const& more = "")
    {
        return Device("Tag", tagAddress,
                      "protocols = ['classic', 'le']\nlisted = true\n" + more + "\n[device.pairing]\nduration-ms = 0");
    }

    inline bool ListingExists()
    {
        return std::filesystem::exists("ble.jpg");
    }
} // namespace test
