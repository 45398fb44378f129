// Awaiting an asynchronous operation: when the coroutine goes on, and that it always does.
#include "tests/support/Codes.h"
#include "tests/support/Patience.h"
#include "tests/support/ProcessEnd.h"
#include "tests/unit/Awaiting.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <stdexcept>

using namespace test;
using platform::AsyncStatus;

namespace
{
    winrt::fire_and_forget ThrowBeforeWaiting(HRESULT code)
    {
        winrt::check_hresult(code);
        co_return;
    }

    winrt::fire_and_forget ThrowAfterWaiting(FakeOperation& operation)
    {
        co_await operation.Projected();
        throw std::runtime_error("nobody hears this");
    }
} // namespace

TEST(WinrtAwait, CompleteOperationContinuesAtOnce)
{
    FakeOperation operation;
    operation.status = AsyncStatus::Completed;
    Outcome outcome;
    Await(operation, outcome);
    EXPECT_TRUE(IsReady(outcome.end));
    EXPECT_EQ(outcome.thread, GetCurrentThreadId());
    EXPECT_EQ(operation.resultsTaken, 1);
}

TEST(WinrtAwait, CompletionInsideTheRegistrationContinuesOnTheSameThread)
{
    FakeOperation operation;
    operation.completeInsidePut = true;
    Outcome outcome;
    Await(operation, outcome);
    EXPECT_TRUE(IsReady(outcome.end));
    EXPECT_EQ(outcome.thread, GetCurrentThreadId());
}

TEST(WinrtAwait, ReturnsToTheCallerUntilTheOperationCompletes)
{
    FakeOperation operation;
    Outcome outcome;
    Await(operation, outcome);
    EXPECT_FALSE(IsReady(outcome.end));
    EXPECT_TRUE(operation.IsAwaited());
    operation.Complete();
    EXPECT_TRUE(IsReady(outcome.end, patience));
}

TEST(WinrtAwait, HandlerDroppedWithoutACallDoesNotLoseTheContinuation)
{
    FakeOperation operation;
    operation.results = illegalMethodCall;
    Outcome outcome;
    Await(operation, outcome);
    operation.Drop();
    ASSERT_TRUE(IsReady(outcome.end, patience));
    EXPECT_NE(outcome.code, 0);
}

TEST(WinrtAwait, CanceledOperationIsAnErrorOfItsOwn)
{
    FakeOperation operation;
    Outcome outcome;
    Await(operation, outcome);
    operation.Complete(AsyncStatus::Canceled);
    ASSERT_TRUE(IsReady(outcome.end, patience));
    EXPECT_EQ(outcome.code, HRESULT_FROM_WIN32(ERROR_CANCELLED));
}

TEST(WinrtAwait, FailedOperationThrowsTheCodeOfItsResults)
{
    FakeOperation operation;
    operation.results = platformCode;
    Outcome outcome;
    Await(operation, outcome);
    operation.Complete(AsyncStatus::Error);
    ASSERT_TRUE(IsReady(outcome.end, patience));
    EXPECT_EQ(outcome.code, platformCode);
}

TEST(WinrtFireAndForget, ErrorBeforeTheFirstWaitEndsTheProcess)
{
    EXPECT_EXIT(ThrowBeforeWaiting(E_FAIL), EndedByFailFast, "");
}

TEST(WinrtFireAndForget, ErrorAfterTheWaitEndsTheProcess)
{
    EXPECT_EXIT(
        {
            FakeOperation operation;
            ThrowAfterWaiting(operation);
            operation.Complete();
        },
        EndedByFailFast, "");
}
