#include "pairing/FixedWait.h"

#include <windows.h>

namespace vorlink
{
    void WaitOut(std::chrono::seconds duration)
    {
        using Clock = std::chrono::steady_clock;
        auto const start = Clock::now();
        while (Clock::now() - start < duration)
        {
            Sleep(1);
        }
    }
} // namespace vorlink
