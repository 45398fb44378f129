// Standard output and error, in UTF-8 whether they are a console, a file or a pipe.
#pragma once

#include "host/ExitCode.h"

#include <string_view>

namespace host
{
    // From here on standard output is Print's alone: what the library writes there by the C and C++ streams, its data
    // store and listings, goes nowhere.
    void OpenTerminal();
    void Print(std::string_view text);
    void PrintError(std::string_view text);
    bool ErrorIsConsole();

    // Ends the process at once, running nobody's destructors: a thread of the library may still be at work.
    [[noreturn]] void EndProcess(ExitCode code);
} // namespace host
