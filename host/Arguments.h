#pragma once

#include "host/ExitCode.h"

#include <chrono>
#include <string>
#include <variant>

namespace host
{
    enum class Command
    {
        Pair,
        Unpair,
        Phones,
        PairPhone,
    };

    struct Arguments
    {
        Command command = Command::Pair;
        std::string name; // empty for Phones
        bool log = false;
        bool learn = false; // after a pairing, wait for what the library learns of the device
        std::chrono::seconds timeout{};
    };

    // What to print instead of working: help or version on standard output, a usage error on standard error.
    struct EarlyExit
    {
        ExitCode code;
        std::string text;
    };

    // Reads the process's command line; every text is UTF-8.
    std::variant<Arguments, EarlyExit> ReadArguments();
} // namespace host
