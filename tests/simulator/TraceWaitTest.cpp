// What a wait for the trace counts, and what it costs.
#include "simulator/trace/Trace.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <future>
#include <string>
#include <thread>

using namespace simulator;

namespace
{
    class TraceWait : public testing::Test
    {
    protected:
        void SetUp() override
        {
            ClearTrace();
        }
    };

    void Call(std::string const& arguments)
    {
        TraceResult(*TraceCall("A.B", arguments), S_OK, {});
    }

    // Seconds of the processor that a wait takes while so many lines come one by one.
    double CostOf(int lines)
    {
        ClearTrace();
        double seconds = 0;
        std::thread waiting([&] {
            EXPECT_TRUE(WaitForTrace("the last", 1, 60'000));
            FILETIME time[4];
            GetThreadTimes(GetCurrentThread(), &time[0], &time[1], &time[2], &time[3]);
            seconds = (time[2].dwLowDateTime + time[3].dwLowDateTime) / 1e7;
        });
        for (int line = 0; line < lines; ++line)
        {
            Call(std::to_string(line));
            if (line % 16 == 0)
            {
                Sleep(0); // so that the wait looks
            }
        }
        Call("the last");
        waiting.join();
        return seconds;
    }
} // namespace

TEST_F(TraceWait, CountsACallWhenItHasReturned)
{
    auto const inside = TraceCall("A.B", "outer");
    Call("inner");
    EXPECT_TRUE(WaitForTrace("inner", 1, 0));
    EXPECT_FALSE(WaitForTrace("outer", 1, 0));
    auto waiting = std::async(std::launch::async, [] { return WaitForTrace("-> done", 1, 10'000); });
    EXPECT_EQ(waiting.wait_for(std::chrono::milliseconds(50)), std::future_status::timeout);
    Call("another"); // the wait has passed the unfinished line by
    TraceResult(*inside, S_OK, "done");
    EXPECT_TRUE(waiting.get());
    EXPECT_TRUE(WaitForTrace("outer", 1, 0));
}

TEST_F(TraceWait, CountsEachLineOnce)
{
    auto waiting = std::async(std::launch::async, [] { return WaitForTrace("same", 3, 500); });
    auto const inside = TraceCall("A.B", "same");
    Call("same");
    Sleep(50);
    TraceResult(*inside, S_OK, {});
    Sleep(50);
    Call("other");
    EXPECT_FALSE(waiting.get());
    EXPECT_TRUE(WaitForTrace("same", 2, 0));
}

TEST_F(TraceWait, BeginsAnewWhenTheTraceIsCleared)
{
    auto waiting = std::async(std::launch::async, [] { return WaitForTrace("same", 2, 500); });
    Call("same");
    Sleep(50);
    ClearTrace();
    Call("same");
    EXPECT_FALSE(waiting.get());
    EXPECT_FALSE(WaitForTrace("same", 2, 0));
    EXPECT_TRUE(WaitForTrace("same", 1, 0));
}

TEST_F(TraceWait, CostsNoMoreForALineOfALongTrace)
{
    auto const few = CostOf(4'000);
    auto const many = CostOf(32'000);
    EXPECT_LT(many, 30 * few + 0.1) << few;
}
