// One line of the trace, and how it reads.
#pragma once

#include <windows.h>

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace simulator
{
    struct TraceLine
    {
        std::uint64_t number; // of this process, from 0, in the order in which lines begin
        std::chrono::system_clock::time_point time;
        DWORD thread;
        bool isEvent;
        std::string_view name; // of the table of methods or of an event: a literal
        std::string arguments;
        std::string result;
        std::optional<HRESULT> code; // of a call that has returned, or of a handler that has failed
        std::chrono::microseconds took{};
    };

    // Without a line feed, whatever the arguments hold.
    std::string TextOf(TraceLine const& line);

    // An object of JSON, likewise.
    std::string JsonOf(TraceLine const& line);

    // A string of JSON; bytes that are not UTF-8 are replaced.
    std::string JsonText(std::string_view text);
} // namespace simulator
