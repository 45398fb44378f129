#pragma once

#include "host/ExitCode.h"
#include "host/Request.h"

namespace host
{
    // Lists, pairs or unpairs, and prints the outcome and, if asked for, the log's new records.
    ExitCode RunCommand(Request const& request);
} // namespace host
