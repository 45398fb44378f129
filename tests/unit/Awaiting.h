// Coroutines that await an operation, and how each ended.
#pragma once

#include "tests/support/FakeOperation.h"

#include <windows.h>

#include <cstdint>
#include <future>

namespace test
{
    struct Outcome
    {
        std::promise<void> ended;
        std::shared_future<void> end = ended.get_future().share();
        DWORD thread = 0;
        std::int32_t code = 0;
    };

    inline winrt::fire_and_forget Await(FakeOperation& operation, Outcome& outcome)
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

    inline winrt::fire_and_forget AwaitAnywhere(FakeOperation& operation, Outcome& outcome)
    {
        co_await winrt::resume_agile(operation.Projected());
        outcome.thread = GetCurrentThreadId();
        outcome.ended.set_value();
    }
} // namespace test
