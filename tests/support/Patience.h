// How long a test waits.
#pragma once

#include <chrono>
#include <future>
#include <thread>

namespace test
{
    // For what must happen: it comes at once, unless something is broken.
    inline constexpr std::chrono::seconds patience(20);

    // For what must not happen: a broken library would be done in a small part of it. A sound one never does it,
    // so the length decides how surely a fault is seen and never whether the test passes.
    inline constexpr std::chrono::milliseconds moment(300);

    // For what nobody signals: false when the condition does not come true in time.
    template <typename Condition>
    bool WaitUntil(Condition condition, std::chrono::steady_clock::duration limit = patience)
    {
        auto const end = std::chrono::steady_clock::now() + limit;
        while (!condition())
        {
            if (std::chrono::steady_clock::now() > end)
            {
                return false;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return true;
    }

    template <typename Future>
    bool IsReady(Future const& future, std::chrono::milliseconds limit = {})
    {
        return future.wait_for(limit) == std::future_status::ready;
    }
} // namespace test
