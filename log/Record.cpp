#include "log/Record.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <ctime>
#include <ratio>

namespace vorlink
{
    namespace
    {
        using Timestamp = std::array<char, 128>;

        // Local time, by the process's time zone: "2024-03-07 09:05:02 047".
        Timestamp FormatTime(std::chrono::system_clock::time_point time)
        {
            using Ticks = std::chrono::duration<std::int64_t, std::ratio<1, 10'000'000>>;
            std::int64_t const ticks = std::chrono::duration_cast<Ticks>(time.time_since_epoch()).count();
            std::time_t const seconds = ticks / 10'000'000;
            int const milliseconds = static_cast<int>(ticks / 10'000 - seconds * 1000);
            std::tm const* const local = std::localtime(&seconds); // a buffer of the thread's own on Windows
            std::tm const date = local ? *local : std::tm{};
            Timestamp text{};
            FormatInto(text, "%d-%02d-%02d %02d:%02d:%02d %03d", date.tm_year + 1900, date.tm_mon + 1, date.tm_mday,
                       date.tm_hour, date.tm_min, date.tm_sec, milliseconds);
            return text;
        }

        char const* FileName(char const* path)
        {
            char const* const separator = std::strrchr(path, '\\');
            return separator ? separator + 1 : path;
        }
    } // namespace

    int FormatListInto(std::span<char> buffer, char const* format, std::va_list arguments)
    {
        int const length = std::vsnprintf(buffer.data(), buffer.size(), format, arguments);
        if (length < 0)
        {
            return -1;
        }
        int const room = buffer.empty() ? 0 : static_cast<int>(buffer.size()) - 1;
        return std::min(length, room);
    }

    int FormatInto(std::span<char> buffer, char const* format, ...)
    {
        std::va_list arguments;
        va_start(arguments, format);
        int const length = FormatListInto(buffer, format, arguments);
        va_end(arguments);
        return length;
    }

    std::size_t BuildRecord(std::span<char> buffer, RecordHead const& head, char const* format, std::va_list arguments)
    {
        auto const text = buffer.first(buffer.size() - 1); // the last byte is the line feed's
        int length = 0;
        auto const rest = [&] { return text.subspan(static_cast<std::size_t>(length)); };
        length += FormatInto(rest(), "%s", FormatTime(head.time).data());
        length += FormatInto(rest(), "[File:%s]", FileName(head.sourcePath));
        length += FormatInto(rest(), "[Line:%d]", head.line);
        length += FormatInto(rest(), "[Function:%s] ", head.functionName);
        length += FormatListInto(buffer.subspan(static_cast<std::size_t>(length)), format, arguments);
        length = std::max(length, 0); // a buffer too small for a head has no blank to take
        buffer[static_cast<std::size_t>(length)] = '\n';
        return static_cast<std::size_t>(length) + 1;
    }
} // namespace vorlink
