// Awaiting an asynchronous operation: when the coroutine goes on, where, and that it always does.
#include "tests/support/Apartment.h"
#include "tests/support/FakeOperation.h"
#include "tests/support/Patience.h"
#include "tests/support/ProcessEnd.h"

#include <gtest/gtest.h>

#include <windows.h>
#include <objbase.h>

#include <future>
#include <stdexcept>
#include <thread>

using platform::AsyncStatus;
using test::EndedByFailFast;
using test::FakeOperation;

namespace
{
    struct Outcome
    {
        std::promise<void> ended;
        std::shared_future<void> end = ended.get_future().share();
        DWORD thread = 0;
        std::int32_t code = 0;
    };

    winrt::fire_and_forget Await(FakeOperation& operation, Outcome& outcome)
    {
        try
        {
            co_await operation.Projected();
        }
        catch (winrt::hresult_error const& error)
        {
            outcome.code = error.code();
        }
        outcome.thread = GetCurrentThreadId();
        outcome.ended.set_value();
    }

    winrt::fire_and_forget AwaitAnywhere(FakeOperation& operation, Outcome& outcome)
    {
        co_await winrt::resume_agile(operation.Projected());
        outcome.thread = GetCurrentThreadId();
        outcome.ended.set_value();
    }

    bool HasEnded(Outcome const& outcome, std::chrono::seconds limit = std::chrono::seconds(0))
    {
        return outcome.end.wait_for(limit) == std::future_status::ready;
    }
} // namespace

TEST(WinrtAwait, CompleteOperationContinuesAtOnce)
{
    FakeOperation operation;
    operation.status = AsyncStatus::Completed;
    Outcome outcome;
    Await(operation, outcome);
    EXPECT_TRUE(HasEnded(outcome));
    EXPECT_EQ(outcome.thread, GetCurrentThreadId());
    EXPECT_EQ(operation.resultsTaken, 1);
}

TEST(WinrtAwait, CompletionInsideTheRegistrationContinuesOnTheSameThread)
{
    FakeOperation operation;
    operation.completeInsidePut = true;
    Outcome outcome;
    Await(operation, outcome);
    EXPECT_TRUE(HasEnded(outcome));
    EXPECT_EQ(outcome.thread, GetCurrentThreadId());
}

TEST(WinrtAwait, ReturnsToTheCallerUntilTheOperationCompletes)
{
    FakeOperation operation;
    Outcome outcome;
    Await(operation, outcome);
    EXPECT_FALSE(HasEnded(outcome));
    EXPECT_TRUE(operation.IsAwaited());
    operation.Complete();
    EXPECT_TRUE(HasEnded(outcome, test::patience));
}

TEST(WinrtAwait, WithoutComItContinuesOnTheCompletingThread)
{
    FakeOperation operation;
    Outcome outcome;
    Await(operation, outcome);
    DWORD completer = 0;
    std::thread([&] {
        completer = GetCurrentThreadId();
        operation.Complete();
    }).join();
    ASSERT_TRUE(HasEnded(outcome, test::patience));
    EXPECT_EQ(outcome.thread, completer);
}

TEST(WinrtAwait, FromTheMultithreadedApartmentItContinuesThere)
{
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
    FakeOperation operation;
    Outcome outcome;
    Await(operation, outcome);
    // The completing thread sits in an apartment of its own, so the continuation has to leave it.
    DWORD completer = 0;
    std::thread([&] {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
        completer = GetCurrentThreadId();
        operation.Complete();
        ASSERT_TRUE(HasEnded(outcome, test::patience));
        CoUninitialize();
    }).join();
    EXPECT_NE(outcome.thread, completer);
    EXPECT_EQ(outcome.code, 0);
    CoUninitialize();
}

TEST(WinrtAwait, AgileItContinuesOnTheCompletingThreadFromEveryApartment)
{
    for (auto const apartment : {COINIT_MULTITHREADED, COINIT_APARTMENTTHREADED})
    {
        ASSERT_EQ(CoInitializeEx(nullptr, static_cast<DWORD>(apartment)), S_OK);
        FakeOperation operation;
        Outcome outcome;
        AwaitAnywhere(operation, outcome);
        EXPECT_FALSE(HasEnded(outcome));
        DWORD completer = 0;
        std::thread([&] {
            ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
            completer = GetCurrentThreadId();
            operation.Complete();
            EXPECT_TRUE(HasEnded(outcome)) << "before the completion returns";
            CoUninitialize();
        }).join();
        EXPECT_EQ(outcome.thread, completer);
        EXPECT_EQ(operation.resultsTaken, 1);
        CoUninitialize();
    }
}

TEST(WinrtAwait, AgileItContinuesAtOnceWhenTheOperationIsComplete)
{
    FakeOperation operation;
    operation.status = AsyncStatus::Completed;
    Outcome outcome;
    AwaitAnywhere(operation, outcome);
    EXPECT_TRUE(HasEnded(outcome));
    EXPECT_EQ(outcome.thread, GetCurrentThreadId());
}

TEST(WinrtAwait, FromASingleThreadedApartmentItContinuesOnItsThreadWhenThatPumps)
{
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    test::Apartment const apartment(GetModuleHandleW(nullptr));
    FakeOperation operation;
    Outcome outcome;
    Await(operation, outcome);
    std::thread completer([&] { operation.Complete(); });
    EXPECT_TRUE(apartment.WaitForEntry());
    EXPECT_FALSE(HasEnded(outcome));
    EXPECT_EQ(operation.resultsTaken, 0);
    EXPECT_TRUE(apartment.PumpUntil([&] { return HasEnded(outcome); }));
    completer.join();
    EXPECT_EQ(outcome.thread, GetCurrentThreadId());
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(operation.resultsTaken, 1);
    CoUninitialize();
}

TEST(WinrtAwait, ContextThatCannotBeEnteredDoesNotLoseTheContinuation)
{
    if (!test::IsWine())
    {
        GTEST_SKIP() << "on Windows a single-threaded apartment can be entered, once its thread pumps messages";
    }
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    FakeOperation operation;
    Outcome outcome;
    Await(operation, outcome);
    std::thread([&] { operation.Complete(); }).join();
    ASSERT_TRUE(HasEnded(outcome, test::patience));
    EXPECT_EQ(outcome.code, E_NOTIMPL) << "the code of the failed call into the context";
    EXPECT_EQ(operation.resultsTaken, 0);
    CoUninitialize();
}

TEST(WinrtAwait, HandlerDroppedWithoutACallDoesNotLoseTheContinuation)
{
    FakeOperation operation;
    operation.results = static_cast<HRESULT>(0x8000000E);
    Outcome outcome;
    Await(operation, outcome);
    operation.Drop();
    ASSERT_TRUE(HasEnded(outcome, test::patience));
    EXPECT_NE(outcome.code, 0);
}

TEST(WinrtAwait, CanceledOperationIsAnErrorOfItsOwn)
{
    FakeOperation operation;
    Outcome outcome;
    Await(operation, outcome);
    operation.Complete(AsyncStatus::Canceled);
    ASSERT_TRUE(HasEnded(outcome, test::patience));
    EXPECT_EQ(outcome.code, HRESULT_FROM_WIN32(ERROR_CANCELLED));
}

TEST(WinrtAwait, FailedOperationThrowsTheCodeOfItsResults)
{
    FakeOperation operation;
    operation.results = static_cast<HRESULT>(0x80070490);
    Outcome outcome;
    Await(operation, outcome);
    operation.Complete(AsyncStatus::Error);
    ASSERT_TRUE(HasEnded(outcome, test::patience));
    EXPECT_EQ(outcome.code, static_cast<std::int32_t>(0x80070490));
}

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
