#pragma once

#include "host/Operation.h"

#include <chrono>
#include <string>

namespace host
{
    // Says on standard error what the program is waiting for: a line that counts the seconds on a console, a
    // single line elsewhere.
    class Progress
    {
    public:
        // `name`: the device's, for the commands that take one.
        Progress(Command command, std::string const& name);

        void Show(Phase phase, std::chrono::seconds elapsed);

        // Clears the console's line for other output. The next Show brings it back.
        void Finish();

    private:
        std::string m_finding;
        std::string m_working;
        std::string m_announcement;
        bool const m_console;
        bool m_announced = false;
        std::string m_shown; // the console's line
    };
} // namespace host
