#include "tests/host/Neighbourhood.h"

#include <windows.h>

#include <filesystem>
#include <fstream>

void UseScenario(std::string_view toml)
{
    auto const path = std::filesystem::current_path() / "scenario.toml";
    std::ofstream{path, std::ios::binary} << toml;
    SetEnvironmentVariableW(L"VORLINK_SCENARIO", path.c_str());
}
