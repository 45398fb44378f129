#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

namespace host
{
    // A file that grows, and may not be there yet, be truncated or be replaced. It is open only while it is read, so
    // that nobody is kept from any of that.
    class LogTail
    {
    public:
        explicit LogTail(std::filesystem::path path);

        struct News
        {
            std::string text; // what is new
            bool anew;        // from the beginning of a file that is another one, or has lost its text
        };

        News Read();

    private:
        std::filesystem::path const m_path;
        std::string m_head; // what the file begins with, as far as it has been read: another file begins otherwise
        std::uint64_t m_read = 0;
    };
} // namespace host
