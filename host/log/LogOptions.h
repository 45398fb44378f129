#pragma once

#include "host/Subcommand.h"

#include <string>

namespace host
{
    struct LogOptions
    {
        OutputOptions output;
        std::string file = "log.log";
        std::string page; // empty: none
        bool follow = false;
        int timeoutSeconds = 0; // of following; 0: none
    };
} // namespace host
