#pragma once

#include "host/ExitCode.h"
#include "host/log/LogContents.h"
#include "host/log/LogOptions.h"

namespace host
{
    // Writes the page that the options name, whole or not at all, and says so.
    ExitCode WritePageFile(LogContents const& contents, LogOptions const& options);
} // namespace host
