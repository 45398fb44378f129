// The threads that end a phone watcher 25 seconds after a start, in the test's hands.
#pragma once

#include "tests/library/Stress.h"

#include <windows.h>

#include <condition_variable>
#include <mutex>

namespace test
{
    // Each stays in its first sleep until it is let go, and
    // then finds that its time has passed.
    class EndThreads
    {
    public:
        static void Hold()
        {
            ReplaceImport(LibraryModule(), "Sleep", Oversleep);
            ReplaceImport(LibraryModule(), "QueryPerformanceCounter", CountTheOverslept);
        }

        static bool WaitForOne()
        {
            std::unique_lock lock(mutex);
            return changed.wait_for(lock, patience, [] { return sleeping > 0; });
        }

        static void LetOneGo()
        {
            std::lock_guard const lock(mutex);
            ++free;
            changed.notify_all();
        }

        // Also those that have yet to begin. Waits until they have ended.
        static bool LetAllGo()
        {
            SetOpen(true);
            bool const ended = LibraryThreads::WaitForAll();
            SetOpen(false);
            return ended;
        }

    private:
        static inline std::mutex mutex;
        static inline std::condition_variable changed;
        static inline int sleeping = 0;
        static inline int free = 0;
        static inline bool open = false;
        static inline thread_local LONGLONG overslept = 0;

        static void SetOpen(bool isOpen)
        {
            std::lock_guard const lock(mutex);
            open = isOpen;
            free = 0;
            changed.notify_all();
        }

        static void WINAPI Oversleep(DWORD milliseconds)
        {
            if (milliseconds != 1)
            {
                Sleep(milliseconds);
                return;
            }
            std::unique_lock lock(mutex);
            ++sleeping;
            changed.notify_all();
            changed.wait(lock, [] { return open || free > 0; });
            --sleeping;
            free -= open ? 0 : 1;
            LARGE_INTEGER frequency{};
            QueryPerformanceFrequency(&frequency);
            overslept = 26 * frequency.QuadPart;
        }

        static BOOL WINAPI CountTheOverslept(LARGE_INTEGER* ticks)
        {
            BOOL const counted = QueryPerformanceCounter(ticks);
            ticks->QuadPart += overslept;
            return counted;
        }
    };
} // namespace test
