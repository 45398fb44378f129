#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace host
{
    // Says on standard error what the program is waiting for: a line that counts the seconds on a console, a
    // single line elsewhere, nothing at all when quiet.
    class Progress
    {
    public:
        // `announcement`: the single line, of all that is going to happen.
        Progress(std::string announcement, bool quiet);
        ~Progress();
        Progress(Progress const&) = delete;
        Progress& operator=(Progress const&) = delete;

        // `doing` as in "Looking for a device".
        void Show(std::string const& doing, std::chrono::seconds elapsed);

        // Clears the console's line for other output. The next Show brings it back.
        void Finish();

        // A line that stays.
        void Say(std::string const& line);

    private:
        std::string const m_announcement;
        bool const m_quiet;
        bool const m_console;
        bool m_announced = false;
        std::string m_shown; // the console's line
    };
} // namespace host
