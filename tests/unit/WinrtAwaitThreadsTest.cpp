// On which thread a coroutine goes on that has awaited an operation, apartment by apartment.
#include "tests/support/Apartment.h"
#include "tests/support/Patience.h"
#include "tests/support/ProcessEnd.h"
#include "tests/unit/Awaiting.h"

#include <gtest/gtest.h>

#include <windows.h>
#include <objbase.h>

#include <thread>

using namespace test;
using platform::AsyncStatus;

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
    ASSERT_TRUE(IsReady(outcome.end, patience));
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
        ASSERT_TRUE(IsReady(outcome.end, patience));
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
        EXPECT_FALSE(IsReady(outcome.end));
        DWORD completer = 0;
        std::thread([&] {
            ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
            completer = GetCurrentThreadId();
            operation.Complete();
            EXPECT_TRUE(IsReady(outcome.end)) << "before the completion returns";
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
    EXPECT_TRUE(IsReady(outcome.end));
    EXPECT_EQ(outcome.thread, GetCurrentThreadId());
}

TEST(WinrtAwait, FromASingleThreadedApartmentItContinuesOnItsThreadWhenThatPumps)
{
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    Apartment const apartment(GetModuleHandleW(nullptr));
    FakeOperation operation;
    Outcome outcome;
    Await(operation, outcome);
    std::thread completer([&] { operation.Complete(); });
    EXPECT_TRUE(apartment.WaitForEntry());
    EXPECT_FALSE(IsReady(outcome.end));
    EXPECT_EQ(operation.resultsTaken, 0);
    EXPECT_TRUE(apartment.PumpUntil([&] { return IsReady(outcome.end); }));
    completer.join();
    EXPECT_EQ(outcome.thread, GetCurrentThreadId());
    EXPECT_EQ(outcome.code, 0);
    EXPECT_EQ(operation.resultsTaken, 1);
    CoUninitialize();
}

TEST(WinrtAwait, ContextThatCannotBeEnteredDoesNotLoseTheContinuation)
{
    if (!IsWine())
    {
        GTEST_SKIP() << "on Windows a single-threaded apartment can be entered, once its thread pumps messages";
    }
    ASSERT_EQ(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), S_OK);
    FakeOperation operation;
    Outcome outcome;
    Await(operation, outcome);
    std::thread([&] { operation.Complete(); }).join();
    ASSERT_TRUE(IsReady(outcome.end, patience));
    EXPECT_EQ(outcome.code, E_NOTIMPL) << "the code of the failed call into the context";
    EXPECT_EQ(operation.resultsTaken, 0);
    CoUninitialize();
}
