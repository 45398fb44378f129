#include "host/LongFile.h"

#include "host/Terminal.h"
#include "host/Text.h"
#include "host/WideText.h"

#include <cmath>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <system_error>

namespace host
{
    namespace
    {
        std::string ReadWhole(std::ifstream& file, std::uintmax_t size)
        {
            constexpr std::size_t step = 1 << 20;
            std::string text;
            text.reserve(static_cast<std::size_t>(size) + step); // for the last step, which finds nothing more
            while (file)
            {
                auto const before = text.size();
                text.resize(before + step);
                file.read(text.data() + before, step);
                text.resize(before + static_cast<std::size_t>(file.gcount()));
            }
            return text;
        }
    } // namespace

    ExitCode Refuse(ExitCode code, std::string const& sentence)
    {
        PrintError("vorlinkctl: " + sentence + "\n");
        return code;
    }

    std::variant<std::string, ExitCode> ReadLongFile(std::string const& name, std::string const& advice)
    {
        std::filesystem::path const path(ToUtf16(name));
        std::error_code error;
        if (!std::filesystem::exists(path, error))
        {
            return Refuse(ExitCode::NotFound, "there is no " + Quoted(name) + ".\n" + advice);
        }
        std::ifstream file(path, std::ios::binary);
        if (!std::filesystem::is_regular_file(path, error) || !file)
        {
            return Refuse(ExitCode::Failed, Quoted(name) + " cannot be read.");
        }
        return ReadWhole(file, std::filesystem::file_size(path, error));
    }

    bool FileExists(std::string const& name)
    {
        std::error_code error;
        return std::filesystem::exists(ToUtf16(name), error);
    }

    bool IsSameFile(std::string const& name, std::string const& other)
    {
        std::error_code error;
        return !other.empty() && std::filesystem::equivalent(ToUtf16(name), ToUtf16(other), error);
    }

    ReadingProgress::ReadingProgress(std::string const& name, bool quiet)
        : m_name(Harmless(name))
        , m_quiet(quiet)
        , m_console(ErrorIsConsole())
    {
    }

    ReadingProgress::~ReadingProgress()
    {
        PrintError(m_shown.empty() || !m_console ? "" : "\r" + std::string(Columns(m_shown), ' ') + "\r");
    }

    void ReadingProgress::Show(char const* doing, double part)
    {
        constexpr std::chrono::milliseconds pause(250);
        auto const now = std::chrono::steady_clock::now();
        if (m_quiet || now < m_next)
        {
            return;
        }
        m_next = now + pause;
        auto const line = FitColumns(std::string(doing) + " " + m_name, ErrorColumns() - 12) + " ...";
        if (m_console)
        {
            m_shown = line + " " + std::to_string(std::lround(part * 100)) + " %";
            PrintError("\r" + m_shown + " ");
        }
        else if (m_shown.empty())
        {
            m_shown = line;
            PrintError(line + "\n");
        }
    }
} // namespace host
