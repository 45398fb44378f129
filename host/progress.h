#pragma once

#include <chrono>
#include <string>

#include "host/operation.h"

// Says on standard error what the program is waiting for: a line that counts the seconds on a console, a
// single line elsewhere.
class Progress
{
public:
    Progress(Command command, std::string name);

    void Show(Phase phase, std::chrono::seconds elapsed);

    // Clears the console's line for the outcome.
    void Finish();

private:
    Command const command;
    std::string name;
    bool const console;
    std::size_t shownSize = 0;
    bool shown = false;
};
