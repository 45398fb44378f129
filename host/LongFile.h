// A file that may be long: its reading takes time, which is told.
#pragma once

#include "host/ExitCode.h"

#include <chrono>
#include <string>
#include <variant>

namespace host
{
    // Says so on standard error.
    ExitCode Refuse(ExitCode code, std::string const& sentence);

    // Its text, or, where there is none to be had, what this ends the program with; that is told then, with `advice`
    // where there is no such file.
    std::variant<std::string, ExitCode> ReadLongFile(std::string const& name, std::string const& advice);

    bool FileExists(std::string const& name);

    bool IsSameFile(std::string const& name, std::string const& other);

    // Says on standard error how far a long file is read, once that has taken a second: a line that counts on a
    // console, a single one elsewhere.
    class ReadingProgress
    {
    public:
        ReadingProgress(std::string const& name, bool quiet);
        ~ReadingProgress();
        ReadingProgress(ReadingProgress const&) = delete;
        ReadingProgress& operator=(ReadingProgress const&) = delete;

        void Show(char const* doing, double part);

    private:
        std::string const m_name;
        bool const m_quiet;
        bool const m_console;
        std::chrono::steady_clock::time_point m_next = std::chrono::steady_clock::now() + std::chrono::seconds(1);
        std::string m_shown;
    };
} // namespace host
