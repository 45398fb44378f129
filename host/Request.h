#pragma once

#include "host/Subcommand.h"

#include <chrono>
#include <string>

namespace host
{
    enum class Command
    {
        Pair,
        Unpair,
        Phones,
        PairPhone,
    };

    // What is asked of the library.
    struct Request
    {
        Command command = Command::Pair;
        std::string name; // empty for Phones
        bool log = false;
        bool learn = false; // after a pairing, wait for what the library learns of the device
        std::chrono::seconds timeout{};
        OutputOptions output;
    };
} // namespace host
