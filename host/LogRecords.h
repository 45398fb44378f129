#pragma once

#include <chrono>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>

namespace host
{
    // The records that a log file gains from construction on.
    class LogRecords
    {
    public:
        explicit LogRecords(std::filesystem::path path);

        std::string Read() const;

        // Waits until a new record holds `text`: the library logs a pairing's outcome after it has reported it.
        void WaitFor(std::string_view text, std::chrono::milliseconds limit) const;

    private:
        std::filesystem::path m_path;
        std::uintmax_t m_start;
    };
} // namespace host
