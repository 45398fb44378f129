// The log's records as lines for a person.
#pragma once

#include "host/Records.h"
#include "host/log/LogJournal.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace host
{
    enum class LogTone
    {
        Plain,
        Faint,
        Gap,
        LongestGap,
        Good,
        Bad,
        Open,
        Pair, // from here on in the order of the flows
        Unpair,
        Phones,
        Learn,
        Search,
        Other,
    };

    struct LogLayout
    {
        std::size_t columns; // 0: lines are as long as they get
        std::function<std::string(LogTone tone, std::string_view text)> paint;
    };

    struct LogLine
    {
        Record const& record;
        LogStep const* step;
        LogFlow flow;
        std::optional<std::int64_t> since; // milliseconds since the record that is shown before it
        std::int64_t longestGap;           // of its run
    };

    // Harmless, and not without limit.
    std::string ShownLogMessage(std::string const& message);

    // Paints a text that begins at column `indent` and goes on there, line by line.
    std::string Wrapped(std::string_view text, std::size_t indent, LogTone tone, LogLayout const& layout);

    // Each with its line feeds.
    std::string ListSummary(std::string const& text, LogLayout const& layout);

    // A run's heading, with its end where that is known by now; `time` is its first record's.
    std::string ListHeading(LogRun const& run, std::string_view time, bool ended, LogLayout const& layout);
    std::string ListEnd(LogRun const& run, LogLayout const& layout);
    std::string ListRecord(LogLine const& line, LogLayout const& layout);
} // namespace host
