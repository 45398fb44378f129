#pragma once

#include "log/WriteLog.h"
#include "pairing/LibraryState.h"

namespace vorlink
{
    // Every record names this file, and the line that readers of the log know the record by.
    inline constexpr char sourcePath[] = R"(pairing\SubVorlink)";
} // namespace vorlink

// VORLINK_LOG(line, function, format, ...). A macro so that the compiler checks format and arguments.
#define VORLINK_LOG(line, function, ...)                                                                               \
    ::vorlink::WriteLog(::vorlink::Library().logEnabled, ::vorlink::sourcePath, line, function, __VA_ARGS__)
