#include "host/Progress.h"

#include "host/Terminal.h"
#include "host/Text.h"

namespace host
{
    Progress::Progress(Command command, std::string const& name)
        : console{ErrorIsConsole()}
    {
        auto const device = "\"" + Harmless(name) + "\"";
        bool const unpairs = command == Command::Unpair;
        bool const lists = command == Command::Phones;
        finding = "Looking for " + (lists ? "devices to pair" : device);
        working = (unpairs ? "Unpairing " : "Pairing ") + device;
        announcement = finding + (lists ? "" : unpairs ? " and unpairing it" : " and pairing it") + " ...\n";
    }

    void Progress::Show(Phase phase, std::chrono::seconds elapsed)
    {
        if (!console)
        {
            if (!announced)
            {
                PrintError(announcement);
            }
            announced = true;
            return;
        }
        auto const line =
            (phase == Phase::Finding ? finding : working) + " ... " + std::to_string(elapsed.count()) + " s";
        if (line != shown)
        {
            auto const rest = shown.size() > line.size() ? shown.size() - line.size() : 0;
            PrintError("\r" + line + std::string(rest, ' '));
            shown = line;
        }
    }

    void Progress::Finish()
    {
        if (!shown.empty())
        {
            PrintError("\r" + std::string(shown.size(), ' ') + "\r");
            shown.clear();
        }
    }
} // namespace host
