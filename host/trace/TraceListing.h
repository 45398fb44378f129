// The trace's lines, and the log's between them, as lines for a person.
#pragma once

#include "host/log/LogListing.h"
#include "host/trace/TraceContents.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace host
{
    // Endpoints' identifiers in it read as "Classic a4:c1:38:5e:22:0f".
    std::string WithShortIdentifiers(std::string text);

    // "DeviceWatcher.get_Status(#1) -> Created"
    std::string DescribePlatformLine(PlatformLine const& line);

    // "12 µs", "1.234 ms", "2.500 s".
    std::string DescribeMicroseconds(std::int64_t microseconds);

    // With a line feed; `start` is the time that the others are counted from. Where there are several processes, each
    // line tells its own.
    std::string ListPlatformLine(PlatformLine const& line, std::int64_t start, bool severalProcesses,
                                 LogLayout const& layout);
    std::string ListLogRecord(Record const& record, std::int64_t start, LogLayout const& layout);
} // namespace host
