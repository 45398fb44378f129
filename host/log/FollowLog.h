#pragma once

#include "host/ExitCode.h"
#include "host/log/LogOptions.h"

namespace host
{
    // Prints the log's last records and then each as it is written, until Ctrl+C or the time limit.
    ExitCode FollowLog(LogOptions const& options);
} // namespace host
