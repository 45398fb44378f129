// The library's long waits: a millisecond at a time, by a clock that does not stop.
#include "pairing/DiscoveryTimer.h"
#include "pairing/LibraryState.h"
#include "pairing/PhoneWatcher.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <atomic>
#include <ctime>
#include <thread>
#include <vector>

using namespace test;
using namespace vorlink;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    // A clock that only sleeping moves on.
    std::atomic<LONGLONG> ticks = 0;
    LONGLONG ticksASecond = 0;
    DWORD waiter = 0;
    std::vector<DWORD> sleeps; // of that thread

    BOOL WINAPI SleptTicks(LARGE_INTEGER* value)
    {
        value->QuadPart = ticks;
        return TRUE;
    }

    void WINAPI PretendToSleep(DWORD milliseconds)
    {
        if (GetCurrentThreadId() == waiter)
        {
            sleeps.push_back(milliseconds);
            ticks += milliseconds * ticksASecond / 1000;
        }
    }

    // What the C library's clock says for ever after 24.8 days.
    std::clock_t __cdecl Stopped()
    {
        return -1;
    }

    void WaitInPretence(void (*wait)())
    {
        Load(patient);
        LARGE_INTEGER frequency{};
        QueryPerformanceFrequency(&frequency);
        ticksASecond = frequency.QuadPart;
        auto* const module = GetModuleHandleW(nullptr);
        static_cast<void>(std::clock()); // imported by this at least
        ReplaceImport(module, "clock", Stopped);
        ReplaceImport(module, "QueryPerformanceCounter", SleptTicks);
        ReplaceImport(module, "Sleep", PretendToSleep);
        std::thread([wait] {
            waiter = GetCurrentThreadId();
            wait();
            waiter = 0; // the thread's own end may sleep too
        }).join();
    }
} // namespace

TEST(FixedWait, OfThePhoneWatchersEndIs25Seconds)
{
    WaitInPretence(ThreadEndWatcher);
    EXPECT_THAT(sleeps, SizeIs(25'000));
    EXPECT_THAT(sleeps, Each(1));
}

TEST(FixedWait, OfASearchIs3Seconds)
{
    Library().enumerationFinished = false;
    WaitInPretence(DiscoveryTimer);
    EXPECT_THAT(sleeps, SizeIs(3'000));
    EXPECT_THAT(sleeps, Each(1));
    EXPECT_TRUE(Library().enumerationFinished);
}

TEST(SlowPhoneEnd, WaitsFor25SecondsAndThenStopsNothingWhereNothingRuns)
{
    Load(patient);
    Library().logEnabled = true;
    auto const start = std::chrono::steady_clock::now();
    ThreadEndWatcher();
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(25));
    EXPECT_THAT(Log(), ElementsAre(Record(178, "ThreadEndWatcher", "Exit ,call StopIosWatcher")));
    EXPECT_THAT(Trace(), IsEmpty());
}
