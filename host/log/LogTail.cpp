#include "host/log/LogTail.h"

#include <algorithm>
#include <fstream>
#include <system_error>
#include <utility>

namespace host
{
    namespace
    {
        // Holds the first record's time and, in most logs, the first name.
        constexpr std::size_t headSize = 1024;

        std::string ReadAt(std::ifstream& file, std::uint64_t begin, std::uint64_t end)
        {
            std::string text(static_cast<std::size_t>(end - begin), '\0');
            file.seekg(static_cast<std::streamoff>(begin));
            file.read(text.data(), static_cast<std::streamsize>(text.size()));
            text.resize(static_cast<std::size_t>(file.gcount()));
            return text;
        }
    } // namespace

    LogTail::LogTail(std::filesystem::path path)
        : m_path(std::move(path))
    {
    }

    LogTail::News LogTail::Read()
    {
        std::ifstream file(m_path, std::ios::binary | std::ios::ate);
        std::error_code error;
        if (!file || !std::filesystem::is_regular_file(m_path, error))
        {
            return {{}, false}; // the next one that is there is compared with this one
        }
        auto const size = static_cast<std::uint64_t>(std::max<std::streamoff>(file.tellg(), 0));
        bool const anew = size < m_read || ReadAt(file, 0, m_head.size()) != m_head;
        if (anew)
        {
            m_read = 0;
            m_head.clear();
        }
        auto text = ReadAt(file, m_read, size);
        m_read += text.size();
        m_head.append(text, 0, headSize - m_head.size());
        return {std::move(text), anew};
    }
} // namespace host
