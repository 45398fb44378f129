// One record of the log as text.
#pragma once

#include <chrono>
#include <cstdarg>
#include <cstddef>
#include <span>

#if defined(__GNUC__)
#if defined(_WIN32) && !defined(__clang__)
#define VORLINK_PRINTF(text, list) __attribute__((format(gnu_printf, text, list)))
#else
#define VORLINK_PRINTF(text, list) __attribute__((format(printf, text, list)))
#endif
#else
#define VORLINK_PRINTF(text, list)
#endif

namespace vorlink
{
    // Formats by printf's rules and returns the number of characters written, without the terminator, or -1
    // when formatting fails. What does not fit is cut.
    int FormatInto(std::span<char> buffer, char const* format, ...) VORLINK_PRINTF(2, 3);
    int FormatListInto(std::span<char> buffer, char const* format, std::va_list arguments) VORLINK_PRINTF(2, 0);

    struct RecordHead
    {
        std::chrono::system_clock::time_point time;
        char const* sourcePath; // with backslashes; the text behind the last one is written
        int line;
        char const* functionName;
    };

    inline constexpr std::size_t recordCapacity = 10240;

    // Builds the whole record, its line feed included, and returns its length. A message that would not fit
    // is cut so that the line feed does, for which the buffer has room. One whose formatting fails takes the blank
    // before it along.
    std::size_t BuildRecord(std::span<char> buffer, RecordHead const& head, char const* format, std::va_list arguments)
        VORLINK_PRINTF(3, 0);
} // namespace vorlink
