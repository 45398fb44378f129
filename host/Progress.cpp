#include "host/Progress.h"

#include "host/Terminal.h"
#include "host/Text.h"

#include <utility>

namespace host
{
    Progress::Progress(std::string announcement, bool quiet)
        : m_announcement(std::move(announcement))
        , m_quiet(quiet)
        , m_console(ErrorIsConsole())
    {
    }

    Progress::~Progress()
    {
        Finish();
    }

    void Progress::Show(std::string const& doing, std::chrono::seconds elapsed)
    {
        if (m_quiet)
        {
            return;
        }
        if (!m_console)
        {
            if (!m_announced)
            {
                PrintError(m_announcement + " ...\n");
            }
            m_announced = true;
            return;
        }
        // The seconds stay in sight; a character in the last column would begin another line.
        auto const seconds = " ... " + std::to_string(elapsed.count()) + " s";
        auto const room = ErrorColumns() - 1;
        auto const line = FitColumns(doing, room > seconds.size() ? room - seconds.size() : 0) + seconds;
        if (line != m_shown)
        {
            auto const before = Columns(m_shown);
            auto const now = Columns(line);
            PrintError("\r" + line + std::string(before > now ? before - now : 0, ' '));
            m_shown = line;
        }
    }

    void Progress::Finish()
    {
        if (!m_shown.empty())
        {
            PrintError("\r" + std::string(Columns(m_shown), ' ') + "\r");
            m_shown.clear();
        }
    }

    void Progress::Say(std::string const& line)
    {
        if (!m_quiet)
        {
            Finish();
            PrintError(line + "\n");
        }
    }
} // namespace host
