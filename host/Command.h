#pragma once

#include "host/Arguments.h"
#include "host/ExitCode.h"

namespace host
{
    // Lists, pairs or unpairs, and prints the outcome and, if asked for, the log's new records.
    ExitCode RunCommand(Arguments const& arguments);
} // namespace host
