// What the library takes of the compiler's runtime for its threads, under load: each round uses fresh objects, since
// the first use of one is where a runtime that makes them late goes wrong.
#pragma once

#include "tests/support/TestSeconds.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>
#include <vector>

namespace test
{
    inline constexpr int threads = 4;

    inline constexpr int steps = 20;

    // The same threads run all rounds of a test, and enter each at the same moment.
    class StressRuntime : public testing::Test
    {
    protected:
        ~StressRuntime() override
        {
            std::printf("%d rounds\n", m_rounds.load());
        }

        // Rounds until the time is up: begin() by one thread alone, then body(thread) by all at once, then end().
        template <typename Begin, typename Body, typename End>
        void Rounds(Begin begin, Body body, End end)
        {
            std::atomic<bool> over = false;
            auto const run = [&](int thread) {
                for (;;)
                {
                    if (thread == 0)
                    {
                        over = HasFailure() || Clock::now() - m_start >= TestSeconds(std::chrono::seconds(1));
                        begin();
                    }
                    Meet();
                    if (over)
                    {
                        return;
                    }
                    body(thread);
                    Meet();
                    if (thread == 0)
                    {
                        end();
                        ++m_rounds;
                    }
                }
            };
            std::vector<std::thread> others;
            for (int thread = 1; thread < threads; ++thread)
            {
                others.emplace_back(run, thread);
            }
            run(0);
            for (auto& other : others)
            {
                other.join();
            }
        }

    private:
        using Clock = std::chrono::steady_clock;

        // Without a primitive that is under test: spinning alone.
        void Meet()
        {
            auto const meeting = m_meeting.load();
            if (++m_arrived == threads)
            {
                m_arrived = 0;
                ++m_meeting;
                return;
            }
            while (m_meeting == meeting)
            {
                std::this_thread::yield();
            }
        }

        Clock::time_point const m_start = Clock::now();
        std::atomic<int> m_rounds = 0;
        std::atomic<int> m_arrived = 0;
        std::atomic<int> m_meeting = 0;
    };

    // Not atomic on purpose: two writers at a time lose a step.
    struct Counter
    {
        int volatile value = 0;
        void Step()
        {
            value = value + 1;
        }
    };
} // namespace test
