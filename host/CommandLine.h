#pragma once

#include "host/ExitCode.h"
#include "host/Subcommand.h"

#include <string>
#include <variant>

namespace host
{
    // What to print instead of working: help or version on standard output, a usage error on standard error.
    struct EarlyExit
    {
        ExitCode code;
        std::string text;
    };

    // Reads the process's command line; every text is UTF-8.
    std::variant<Action, EarlyExit> ReadCommandLine();
} // namespace host
