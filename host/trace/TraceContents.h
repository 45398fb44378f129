// A trace of the simulated platform, as its file has it.
#pragma once

#include "host/log/LogContents.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host
{
    struct PlatformLine
    {
        std::int64_t us = 0; // local time, counted as if it were UTC
        std::string time;    // as it stands there, to the millisecond
        std::string utc;
        std::uint32_t process = 0;
        std::uint64_t number = 0; // of the process's lines
        std::uint32_t thread = 0;
        bool isEvent = false;
        std::string name; // of the method or the event
        std::optional<std::string> object;
        std::string arguments;
        std::optional<std::string> result;
        std::optional<std::string> code;
        std::optional<std::int64_t> took; // microseconds

        bool Failed() const;
    };

    // Nothing where the text is no such line.
    std::optional<PlatformLine> ReadPlatformLine(std::string_view text);

    class TraceContents
    {
    public:
        using Progress = std::function<void(std::size_t bytes)>;

        explicit TraceContents(
            std::string text, Progress const& progress = [](std::size_t) {});

        std::size_t Size() const
        {
            return m_lines.size();
        }

        // In the order of time; the lines of one process at the same time in the order in which they began.
        PlatformLine Read(std::size_t line) const;

        std::int64_t MicrosecondsOf(std::size_t line) const
        {
            return m_lines[line].us;
        }

        std::size_t Failures() const
        {
            return m_failures;
        }

        std::size_t Processes() const
        {
            return m_processes;
        }

        // The numbers, from 1, of the file's lines that are no lines of a trace.
        std::vector<std::size_t> const& Garbage() const
        {
            return m_garbage;
        }

    private:
        struct Place
        {
            std::int64_t us;
            std::uint64_t number;
            std::size_t offset;
            std::uint32_t size;
            std::uint32_t process;
        };

        std::string const m_text;
        std::vector<Place> m_lines;
        std::vector<std::size_t> m_garbage;
        std::size_t m_failures = 0;
        std::size_t m_processes = 0;
    };

    // A line of the trace or a record of the log, by its number there.
    struct Moment
    {
        std::int64_t us;
        std::uint32_t index;
        bool isRecord;
    };

    // The trace's lines and what the log has of their time, with some seconds before and after; records without a time
    // are left out. A record counts as written when its millisecond begins.
    std::vector<Moment> MergeByTime(TraceContents const& trace, LogContents const& log);
} // namespace host
