// The phone watcher's ends at the very same moment, and an end in the midst of a start.
#include "tests/library/EndThreads.h"
#include "tests/library/PhoneHost.h"

#include <gmock/gmock.h>

#include <map>
#include <thread>

using namespace test;

namespace
{
    class StressStop : public Stress
    {
    protected:
        std::unique_ptr<Vorlink> vorlink;

        void SetUp() override
        {
            Load(patient + Device("Ana", addressA));
            EndThreads::Hold();
            LibraryThreads::Watch();
            vorlink = MakeVorlink();
        }

        // True when a watcher was started, and false when one was stopped.
        bool StartOrStop()
        {
            bool started = false;
            auto const code = CodeOf([&] { started = vorlink->StartIosWatcher([](wchar_t const*, std::uint32_t) {}); });
            EXPECT_EQ(code, 0);
            return started;
        }

        void Start()
        {
            EXPECT_TRUE(StartOrStop());
            EXPECT_TRUE(WaitIdle());
            EXPECT_TRUE(EndThreads::WaitForOne());
        }

        // The end of the enumeration is on its way to the library, and waits there until events are released.
        static void HoldCompletion()
        {
            SimulatorHoldEvents();
            SimulateEnumerationCompletes();
            EXPECT_TRUE(WaitForCall("! DeviceWatcher.EnumerationCompleted("));
        }

        // Both at the same moment, now the one a little earlier and now the other.
        template <typename First, typename Second>
        void Meet(First first, Second second)
        {
            constexpr std::chrono::microseconds apart(200);
            std::atomic<int> ready = 0;
            auto const meet = [&](auto const& action) {
                for (++ready; ready < 2;)
                {
                }
                SpinUpTo(apart);
                action();
            };
            std::thread other([&] { meet(first); });
            meet(second);
            other.join();
        }

        // In the end no watcher runs and no thread waits; each watcher has been stopped once, and each of its
        // registrations released once at most.
        void EndRound()
        {
            EXPECT_TRUE(WaitIdle());
            while (StartOrStop())
            {
            }
            EXPECT_TRUE(EndThreads::LetAllGo());
            EXPECT_TRUE(WaitIdle());
            ExpectSingleEnds();
            SimulatorClearTrace();
            ++rounds;
        }

        void TearDown() override
        {
            EXPECT_GT(rounds, 0);
        }

    private:
        static void ExpectSingleEnds()
        {
            std::map<std::string, int> calls;
            for (auto const& line : Trace({"DeviceWatcher.Stop(", "DeviceWatcher.remove_"}))
            {
                ++events;
                failures += ++calls[line] == 1 && line.find(" -> ") == std::string::npos ? 0 : 1;
            }
            EXPECT_EQ(failures, 0) << testing::PrintToString(Trace({"DeviceWatcher."}));
            EXPECT_EQ(Trace({"DeviceWatcher.Stop("}).size(), Trace({"DeviceWatcher.Start("}).size());
        }
    };
} // namespace

TEST_F(StressStop, ByTheHostAndByTheCompletionAreOne)
{
    while (GoesOn())
    {
        Start();
        HoldCompletion();
        Meet(SimulatorReleaseEvents, [&] { StartOrStop(); });
        EndRound();
    }
}

TEST_F(StressStop, ByTheHostAndByTheThreadAreOne)
{
    while (GoesOn())
    {
        Start();
        Meet(EndThreads::LetOneGo, [&] { StartOrStop(); });
        EndRound();
    }
}

TEST_F(StressStop, ByTheCompletionAndByTheThreadAreOne)
{
    while (GoesOn())
    {
        Start();
        HoldCompletion();
        Meet(SimulatorReleaseEvents, EndThreads::LetOneGo);
        EndRound();
    }
}

TEST_F(StressStop, ByTheThreadOfAnEarlierStartMayMeetTheNextStart)
{
    while (GoesOn())
    {
        Start();
        EXPECT_FALSE(StartOrStop());
        Meet(EndThreads::LetOneGo, [&] { StartOrStop(); });
        EndRound();
    }
}

TEST_F(StressStop, ByALateCompletionMayMeetTheNextStart)
{
    while (GoesOn())
    {
        Start();
        HoldCompletion();
        EXPECT_FALSE(StartOrStop());
        Meet(SimulatorReleaseEvents, [&] { StartOrStop(); });
        EndRound();
    }
}
