#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

struct ChildResult
{
    DWORD exitCode;
    std::string output;
    std::string error;
};

// The folder of the running test program, which holds the built programs and libraries as well.
std::filesystem::path BinFolder();

// Runs a program in the current directory and waits for its end. Arguments are UTF-8, without quotation marks.
// A program that does not end in time is ended, and the test fails.
ChildResult RunChild(std::filesystem::path const& program, std::vector<std::string> const& arguments);

ChildResult RunVorlinkctl(std::vector<std::string> const& arguments);
