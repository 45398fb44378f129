// The log writer.
#pragma once

#include "log/Record.h"

namespace vorlink
{
    // Appends one record to "log.log" in the current directory when `enabled` is true. A record that cannot
    // be written is lost silently. Any thread; nothing orders the records of several threads.
    // Throws std::system_error when locking fails.
    void WriteLog(bool enabled, char const* sourcePath, int line, char const* functionName, char const* format, ...)
        VORLINK_PRINTF(5, 6);
} // namespace vorlink
