#include "host/LogRecords.h"

#include <fstream>
#include <iterator>
#include <thread>
#include <utility>

namespace host
{
    namespace
    {
        std::uintmax_t SizeOrZero(std::filesystem::path const& path)
        {
            std::error_code error;
            auto const size = std::filesystem::file_size(path, error);
            return error ? 0 : size;
        }
    } // namespace

    LogRecords::LogRecords(std::filesystem::path path)
        : m_path(std::move(path))
        , m_start(SizeOrZero(m_path))
    {
    }

    std::string LogRecords::Read() const
    {
        std::ifstream file(m_path, std::ios::binary);
        file.seekg(static_cast<std::streamoff>(m_start));
        return {std::istreambuf_iterator<char>(file), {}};
    }

    void LogRecords::WaitFor(std::string_view text, std::chrono::milliseconds limit) const
    {
        auto const end = std::chrono::steady_clock::now() + limit;
        while (Read().find(text) == std::string::npos && std::chrono::steady_clock::now() < end)
        {
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }
} // namespace host
