#pragma once

#include <windows.h>

#include <filesystem>
#include <string>
#include <vector>

namespace test
{
    using Arguments = std::vector<std::string>; // UTF-8, without quotation marks

    struct ChildResult
    {
        DWORD exitCode;
        std::string output;
        std::string error;
    };

    // The folder of the running test program, which holds the built programs and libraries as well.
    std::filesystem::path BinFolder();

    // A new file that a child process can write to by its handle.
    HANDLE FileForChild(wchar_t const* name);

    // Starts a program in the current directory, with these inheritable handles for its output and errors. `flags` are
    // CreateProcess's.
    PROCESS_INFORMATION StartChild(std::filesystem::path const& program, Arguments const& arguments, HANDLE output,
                                   HANDLE error, DWORD flags = 0);

    // Waits for the program's end and closes its handles. One that does not end in time is ended, and the test fails.
    // Returns the exit code.
    DWORD WaitForEnd(PROCESS_INFORMATION const& process);

    // The two in one.
    ChildResult RunChild(std::filesystem::path const& program, Arguments const& arguments);

    ChildResult RunVorlinkctl(Arguments const& arguments);
} // namespace test
