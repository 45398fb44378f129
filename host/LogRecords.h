#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>

namespace host
{
    // The records that the library's log, "log.log" in the current directory, gains from construction on.
    class LogRecords
    {
    public:
        LogRecords();

        std::string Read() const;
        bool Holds(std::string_view text) const;

        // Waits until a new record holds `text`.
        void WaitFor(std::string_view text, std::chrono::milliseconds limit) const;

    private:
        std::uintmax_t m_start;
    };
} // namespace host
