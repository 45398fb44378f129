#include "host/LogRecords.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <thread>

namespace host
{
    namespace
    {
        constexpr char logFile[] = "log.log";

        std::uintmax_t SizeOrZero()
        {
            std::error_code error;
            auto const size = std::filesystem::file_size(logFile, error);
            return error ? 0 : size;
        }
    } // namespace

    LogRecords::LogRecords()
        : m_start(SizeOrZero())
    {
    }

    std::string LogRecords::Read() const
    {
        std::ifstream file(logFile, std::ios::binary);
        file.seekg(static_cast<std::streamoff>(m_start));
        return {std::istreambuf_iterator<char>(file), {}};
    }

    bool LogRecords::Holds(std::string_view text) const
    {
        return Read().find(text) != std::string::npos;
    }

    void LogRecords::WaitFor(std::string_view text, std::chrono::milliseconds limit) const
    {
        auto const end = std::chrono::steady_clock::now() + limit;
        while (!Holds(text) && std::chrono::steady_clock::now() < end)
        {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }
} // namespace host
