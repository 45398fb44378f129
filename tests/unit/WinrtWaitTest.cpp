// Waiting for an asynchronous operation on the thread that began it, and leaving a thread to its caller.
#include "tests/support/CodeOf.h"
#include "tests/support/Patience.h"
#include "tests/unit/Awaiting.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <future>

using namespace test;
using platform::AsyncStatus;

namespace
{
    // On a thread of its own, which waits when this returns.
    std::future<std::int32_t> Wait(FakeOperation& operation)
    {
        auto waiting = std::async(std::launch::async, [&] { return CodeOf([&] { operation.Projected().get(); }); });
        EXPECT_TRUE(WaitUntil([&] { return operation.IsAwaited(); }));
        EXPECT_FALSE(IsReady(waiting));
        return waiting;
    }

    winrt::fire_and_forget LeaveTo(std::promise<DWORD>& thread)
    {
        co_await winrt::resume_background();
        thread.set_value(GetCurrentThreadId());
    }
} // namespace

TEST(WinrtWait, ForACompleteOperationThereIsNone)
{
    FakeOperation operation;
    operation.status = AsyncStatus::Completed;
    EXPECT_EQ(CodeOf([&] { operation.Projected().get(); }), S_OK);
    EXPECT_FALSE(operation.IsAwaited());
    EXPECT_EQ(operation.resultsTaken, 1);
}

TEST(WinrtWait, EndsWithTheOperation)
{
    FakeOperation operation;
    auto waiting = Wait(operation);
    operation.Complete();
    EXPECT_EQ(waiting.get(), S_OK);
    EXPECT_EQ(operation.resultsTaken, 1);
}

TEST(WinrtWait, CancellationIsAnErrorOfItsOwn)
{
    FakeOperation operation;
    auto waiting = Wait(operation);
    operation.Complete(AsyncStatus::Canceled);
    EXPECT_EQ(waiting.get(), HRESULT_FROM_WIN32(ERROR_CANCELLED));
    EXPECT_EQ(operation.resultsTaken, 0);
}

TEST(WinrtWait, EndsWithAHandlerThatIsDropped)
{
    FakeOperation operation;
    operation.results = illegalMethodCall;
    auto waiting = Wait(operation);
    operation.Drop();
    EXPECT_EQ(waiting.get(), illegalMethodCall);
}

TEST(WinrtBackground, TheCallerGoesOn)
{
    std::promise<DWORD> thread;
    auto resumed = thread.get_future();
    LeaveTo(thread);
    ASSERT_TRUE(IsReady(resumed, patience));
    EXPECT_NE(resumed.get(), GetCurrentThreadId());
}
