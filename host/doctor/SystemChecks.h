// The checks of what the system and the folder have for the library.
#pragma once

#include "host/doctor/Finding.h"

#include <filesystem>

namespace host
{
    // The plug-and-play tool, whose listing tells the library of LE devices.
    Finding CheckTool(std::filesystem::path const& tool = L"C:/Windows/System32/pnputil.exe");

    // The library's data store in this folder.
    Finding CheckDataFile(std::filesystem::path const& folder);

    Finding CheckFolder(std::filesystem::path const& folder);

    // In which the library compares names.
    Finding CheckCodePage(unsigned ansi, unsigned oem);
} // namespace host
