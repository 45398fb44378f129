#pragma once

#include "log/WriteLog.h"
#include "pairing/LibraryState.h"

namespace vorlink
{
    // Every record names this file, and the line that readers of the log know the record by.
    inline constexpr char sourcePath[] = R"(pairing\SubVorlink)";
} // namespace vorlink

// VORLINK_LOG(line, function, format, ...). A macro so that the compiler checks format and arguments, and so that the
// arguments are made for a record alone: what must happen without a log, a call of the platform say, is none of them.
#define VORLINK_LOG(line, function, ...)                                                                               \
    do                                                                                                                 \
    {                                                                                                                  \
        if (bool const enabled = ::vorlink::Library().logEnabled)                                                      \
        {                                                                                                              \
            ::vorlink::WriteLog(enabled, ::vorlink::sourcePath, line, function, __VA_ARGS__);                          \
        }                                                                                                              \
    } while (false)
