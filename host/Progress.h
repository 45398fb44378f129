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
        std::string finding;
        std::string working;
        std::string announcement;
        bool const console;
        bool announced = false;
        std::string shown; // the console's line
    };
} // namespace host
