// The phone watcher under a crowd: it keeps those who are there, whatever the host does meanwhile.
#include "tests/library/Crowd.h"

#include <algorithm>
#include <thread>

using namespace test;

namespace
{
    std::atomic<int> names = 0;

    void CountName(wchar_t const*, std::uint32_t)
    {
        ++names;
    }

    void IgnoreReport(PairReport) {}

    // A list that becomes shorter meanwhile may fail it.
    void Search(Vorlink& vorlink)
    {
        auto const code = CodeOf([&] { vorlink.IosPairedDevicce("Nobody", IgnoreReport); });
        if (code != 0 && code != outOfBounds)
        {
            ++failures;
        }
    }

    using SleepFunction = void WINAPI(DWORD);

    // The watcher's end after 25 seconds does not come.
    void WINAPI SleepForEver(DWORD milliseconds)
    {
        Sleep(milliseconds == 1 ? INFINITE : milliseconds);
    }

    // It comes in its time, but is not looked for a thousand times a second: many starts have many of them.
    void WINAPI SleepLonger(DWORD milliseconds)
    {
        Sleep(milliseconds == 1 ? 50 : milliseconds);
    }

    class StressPhones : public Stress
    {
    protected:
        std::unique_ptr<Vorlink> vorlink;
        Crowd crowd;
        std::thread mover;
        std::atomic<bool> moving = true;

        void Watch(SleepFunction* sleep)
        {
            Load(Crowd::Scenario());
            ReplaceImport(LibraryModule(), "Sleep", sleep);
            vorlink = MakeVorlink();
            ASSERT_TRUE(vorlink->StartIosWatcher(CountName));
        }

        void MoveMeanwhile()
        {
            mover = std::thread([this] {
                while (moving)
                {
                    crowd.Move(16, Random);
                }
            });
        }

        void EndMoving()
        {
            moving = false;
            mover.join();
        }

        // From now on a watcher runs that has met all who are there, and nothing comes from earlier ones.
        void RestartInPeace()
        {
            do
            {
                EXPECT_TRUE(WaitIdle());
                SimulatorClearTrace();
                vorlink->StartIosWatcher(CountName);
                EXPECT_TRUE(WaitIdle());
            } while (!Trace({"DeviceWatcher.Stop("}).empty()); // by this start, or by an earlier one's end
        }

        void ExpectThatThePresentAreKept()
        {
            vorlink->SetLogEnabled(true);
            auto kept = Kept(*vorlink);
            std::ranges::sort(kept);
            auto present = crowd.Present();
            std::ranges::sort(present);
            EXPECT_EQ(kept, present);
        }
    };

    // Operations of a host with several threads: one at a time.
    std::mutex operation;
    Vorlink* host = nullptr;

    void CallBack(wchar_t const*, std::uint32_t)
    {
        ++names;
        std::lock_guard const lock(operation);
        Search(*host);
        if (names % 8 == 0)
        {
            host->Uninitialize();
        }
        if (names % 16 == 0)
        {
            host->StartIosWatcher(CallBack);
        }
    }
} // namespace

TEST_F(StressPhones, ComeChangeAndGoSideBySide)
{
    Watch(SleepForEver);
    while (GoesOn())
    {
        crowd.Move(16, Random);
        ++rounds;
    }
    ExpectThatThePresentAreKept();
}

TEST_F(StressPhones, ComeChangeAndGoWhileTheHostSearchesAndUninitializes)
{
    Watch(SleepForEver);
    MoveMeanwhile();
    while (GoesOn())
    {
        Search(*vorlink);
        if (Random(200) == 0)
        {
            EXPECT_TRUE(vorlink->Uninitialize());
        }
        std::this_thread::yield();
        ++rounds;
    }
    EndMoving();
    RestartInPeace();
    ExpectThatThePresentAreKept();
    EXPECT_EQ(failures, 0);
}

TEST_F(StressPhones, ComeChangeAndGoWhileTheHostStopsAndStarts)
{
    Watch(SleepLonger);
    MoveMeanwhile();
    while (GoesOn())
    {
        vorlink->StartIosWatcher(CountName);
        std::this_thread::sleep_for(std::chrono::milliseconds(Random(50)));
        Search(*vorlink);
        if (Random(4) == 0)
        {
            EXPECT_TRUE(vorlink->Uninitialize());
        }
        ++rounds;
    }
    EndMoving();
    RestartInPeace();
    ExpectThatThePresentAreKept();
    EXPECT_EQ(failures, 0);
}

TEST_F(StressPhones, ComeWhileTheCallbackItselfCallsTheLibrary)
{
    Watch(SleepLonger);
    host = vorlink.get();
    MoveMeanwhile();
    while (GoesOn())
    {
        {
            std::lock_guard const lock(operation);
            vorlink->StartIosWatcher(CallBack);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(Random(50)));
        ++rounds;
    }
    EndMoving();
    EXPECT_TRUE(WaitIdle());
    EXPECT_GT(names, 0);
    EXPECT_EQ(failures, 0);
}
