// What a wait for the trace counts, and what it costs.
#include "simulator/trace/Trace.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <chrono>
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

    double ProcessorSeconds(HANDLE thread)
    {
        FILETIME time[4];
        GetThreadTimes(thread, &time[0], &time[1], &time[2], &time[3]);
        return (time[2].dwLowDateTime + time[3].dwLowDateTime) / 1e7;
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
    Call("other");
    Call("same");
    EXPECT_FALSE(waiting.get());
    EXPECT_FALSE(WaitForTrace("same", 2, 0));
    EXPECT_TRUE(WaitForTrace("same", 1, 0));
}

TEST_F(TraceWait, LooksAtNewLinesAlone)
{
    for (int line = 0; line < 50'000; ++line)
    {
        Call("old");
    }
    std::promise<DWORD> id;
    std::thread waiting([&] {
        id.set_value(GetCurrentThreadId());
        EXPECT_TRUE(WaitForTrace("the last", 1, 60'000));
    });
    auto* const thread = OpenThread(THREAD_QUERY_INFORMATION, FALSE, id.get_future().get());
    Sleep(200); // in which it looks at the old ones
    auto const before = ProcessorSeconds(thread);
    for (int line = 0; line < 100; ++line)
    {
        Call("new");
        Sleep(1); // so that the wait looks each time
    }
    auto const took = ProcessorSeconds(thread) - before;
    Call("the last");
    waiting.join();
    CloseHandle(thread);
    EXPECT_LT(took, 0.1);
}
