#include "host/progress.h"

#include "host/terminal.h"
#include "host/text.h"

Progress::Progress(Command theCommand, std::string deviceName)
    : command{theCommand}
    , name{Harmless(deviceName)}
    , console{ErrorIsConsole()}
{
}

void Progress::Show(Phase phase, std::chrono::seconds elapsed)
{
    bool const pairs = command == Command::Pair;
    if (!console)
    {
        if (!shown)
        {
            PrintError("Looking for \"" + name + "\" and " + (pairs ? "" : "un") + "pairing it ...\n");
        }
        shown = true;
        return;
    }
    auto const* const working = pairs ? "Pairing \"" : "Unpairing \"";
    auto const* const doing = phase == Phase::Finding ? "Looking for \"" : working;
    auto line = doing + name + "\" ... " + std::to_string(elapsed.count()) + " s";
    auto const size = line.size();
    line.append(shownSize > size ? shownSize - size : 0, ' ');
    PrintError("\r");
    PrintError(line);
    shownSize = size;
}

void Progress::Finish()
{
    if (console)
    {
        PrintError("\r");
        PrintError(std::string(shownSize, ' '));
        PrintError("\r");
    }
}
