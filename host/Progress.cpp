#include "host/Progress.h"

#include "host/Terminal.h"
#include "host/Text.h"

namespace host
{
    Progress::Progress(Command command, std::string const& name)
        : m_console(ErrorIsConsole())
    {
        auto const device = Quoted(name);
        bool const unpairs = command == Command::Unpair;
        bool const lists = command == Command::Phones;
        m_finding = "Looking for " + (lists ? "devices to pair" : device);
        m_working = (unpairs ? "Unpairing " : "Pairing ") + device;
        m_announcement = m_finding + (lists ? "" : unpairs ? " and unpairing it" : " and pairing it") + " ...\n";
    }

    void Progress::Show(Phase phase, std::chrono::seconds elapsed)
    {
        if (!m_console)
        {
            if (!m_announced)
            {
                PrintError(m_announcement);
            }
            m_announced = true;
            return;
        }
        auto const line =
            (phase == Phase::Finding ? m_finding : m_working) + " ... " + std::to_string(elapsed.count()) + " s";
        if (line != m_shown)
        {
            auto const rest = m_shown.size() > line.size() ? m_shown.size() - line.size() : 0;
            PrintError("\r" + line + std::string(rest, ' '));
            m_shown = line;
        }
    }

    void Progress::Finish()
    {
        if (!m_shown.empty())
        {
            PrintError("\r" + std::string(m_shown.size(), ' ') + "\r");
            m_shown.clear();
        }
    }
} // namespace host
