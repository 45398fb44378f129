// Two threads at once, many times: each report comes once and to its own context, and none to one that is forgotten.
#include "tests/library/Stress.h"
#include "tests/wrapper/CHost.h"

#include <atomic>
#include <deque>
#include <thread>

using namespace test;

namespace
{
    class StressWrapper : public Stress
    {
    protected:
        std::atomic<bool> goesOn = true; // for the threads that do not count the rounds

        // A device that refuses, so that nothing is learnt.
        static void LoadTag(char const* duration)
        {
            Load(prompt + "event-threads = 4\n" +
                 Device("Tag", tagAddress,
                        std::string("[device.pairing]\nstatus = 'Failed'\nduration-ms = ") + duration));
        }
    };

    void Require(bool condition)
    {
        failures += condition ? 0 : 1;
    }

    struct Count
    {
        std::string name;
        std::atomic<int> reports = 0;
    };

    void VORLINK_C_CALL CountReport(void* context, vorlink_pair_report const* report)
    {
        auto& count = *static_cast<Count*>(context);
        Require(report->name == count.name);
        ++events;
        ++count.reports;
    }

    // One context of many: once it is forgotten it must not be called back.
    struct Context
    {
        std::atomic<bool> forgotten = false;
    };

    void VORLINK_C_CALL OnReport(void* context, vorlink_pair_report const*)
    {
        Require(!static_cast<Context*>(context)->forgotten);
        ++events;
    }

    void VORLINK_C_CALL OnName(void* context, char const*)
    {
        Require(!static_cast<Context*>(context)->forgotten);
        ++events;
    }

    bool IsForgotten(vorlink_t* vorlink, std::int32_t operation)
    {
        auto const code = vorlink_forget(vorlink, operation);
        Require(code == VORLINK_OK || code == VORLINK_STILL_RUNNING);
        return code == VORLINK_OK;
    }
} // namespace

TEST_F(StressWrapper, PairingsOfTwoThreadsComeOneAfterAnother)
{
    LoadTag("0");
    auto const pairManyTimes = [](char const* name) {
        vorlink_t* vorlink = nullptr;
        Require(vorlink_open(&vorlink) == VORLINK_OK);
        Count count = {name};
        for (int begun = 0; GoesOn();)
        {
            auto const code = vorlink_pair(vorlink, name, CountReport, &count);
            Require(code == VORLINK_OK || code == VORLINK_BUSY);
            begun += code == VORLINK_OK ? 1 : 0;
            Require(WaitUntil([&] { return count.reports == begun; }));
            rounds += code == VORLINK_OK ? 1 : 0;
        }
        auto const code = vorlink_close(vorlink);
        Require(code == VORLINK_OK || code == VORLINK_STILL_RUNNING);
    };
    std::thread other(pairManyTimes, "Nobody");
    pairManyTimes("Tag");
    other.join();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(events, rounds);
}

TEST_F(StressWrapper, AForgottenPairingNeverCallsBack)
{
    LoadTag("1");
    auto* const vorlink = Open();
    std::deque<Context> contexts; // to the end: a late call has to be seen
    std::atomic<int> begun = 0;
    std::atomic<int> forgotten = 0;
    // Also while the search runs, and while the callback does.
    std::thread forgetter([&] {
        while (goesOn)
        {
            SpinUpTo(std::chrono::microseconds(3000));
            int const seen = begun;
            if (IsForgotten(vorlink, VORLINK_PAIRING))
            {
                forgotten = seen;
            }
        }
    });
    while (GoesOn())
    {
        auto& context = contexts.emplace_back();
        auto const code = vorlink_pair(vorlink, "Tag", OnReport, &context);
        Require(code == VORLINK_OK);
        ++begun;
        Require(WaitUntil([&] { return forgotten == begun; }));
        context.forgotten = true;
        ++rounds;
    }
    goesOn = false;
    forgetter.join();
    EXPECT_TRUE(WaitIdle());
    EXPECT_EQ(failures, 0);
}

TEST_F(StressWrapper, AForgottenPhoneWatcherNeverCallsBack)
{
    Load(patient + "event-threads = 4\n" + Device("First", firstAddress) + Device("Second", secondAddress));
    auto* const vorlink = Open();
    std::deque<Context> contexts;
    std::thread neighbours([&] {
        while (goesOn)
        {
            SimulateDeviceRepeats(ClassicId(firstAddress).c_str());
            SimulateDeviceRepeats(ClassicId(secondAddress).c_str());
            std::this_thread::yield();
        }
    });
    std::int32_t started = 0;
    Require(vorlink_start_phone_watcher(vorlink, OnName, &contexts.emplace_back(), &started) == VORLINK_OK);
    while (GoesOn())
    {
        SpinUpTo(std::chrono::microseconds(3000));
        Require(WaitUntil([&] { return IsForgotten(vorlink, VORLINK_PHONE_WATCHER); }));
        contexts.back().forgotten = true;
        // Stops the watcher or starts one; either way the next context takes over.
        Require(vorlink_start_phone_watcher(vorlink, OnName, &contexts.emplace_back(), &started) == VORLINK_OK);
        ++rounds;
    }
    goesOn = false;
    neighbours.join();
    EXPECT_EQ(failures, 0);
    EXPECT_GT(events, 0);
}
