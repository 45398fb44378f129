#include "host/Interruption.h"

#include <windows.h>

#include <atomic>

namespace host
{
    namespace
    {
        std::atomic<bool> requested = false;

        // On a thread of the system's own. What it does not handle ends the process.
        BOOL WINAPI OnControlEvent(DWORD event)
        {
            if (event != CTRL_C_EVENT && event != CTRL_BREAK_EVENT)
            {
                return FALSE;
            }
            requested = true;
            return TRUE;
        }
    } // namespace

    Interruption::Interruption()
    {
        SetConsoleCtrlHandler(OnControlEvent, TRUE);
    }

    Interruption::~Interruption()
    {
        SetConsoleCtrlHandler(OnControlEvent, FALSE);
    }

    bool Interruption::Requested() const
    {
        return requested;
    }
} // namespace host
