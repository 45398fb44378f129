// What the library takes of the compiler's runtime for its threads, under load: each round uses fresh objects, since
// the first use of one is where a runtime that makes them late goes wrong.
#include "pairing/Enumeration.h"
#include "tests/support/Patience.h"
#include "tests/support/TestSeconds.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <condition_variable>
#include <cstdio>
#include <future>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace
{
    constexpr int threads = 4;

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
            std::atomic<bool> over{false};
            auto const run = [&](int thread) {
                for (;;)
                {
                    if (thread == 0)
                    {
                        over = HasFailure() || Clock::now() - m_start >= test::TestSeconds(std::chrono::seconds(1));
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
        std::atomic<int> m_rounds{0};
        std::atomic<int> m_arrived{0};
        std::atomic<int> m_meeting{0};
    };

    constexpr int steps = 20;

    // Not atomic on purpose: two writers at a time lose a step.
    struct Counter
    {
        int volatile value = 0;
        void Step()
        {
            value = value + 1;
        }
    };

    // A function's static object for each N, so that a process has enough of them.
    std::atomic<int> made{0};

    struct Made
    {
        Made()
        {
            std::this_thread::yield();
            value = ++made;
        }
        int value = 0;
    };

    template <int N>
    int StaticOf()
    {
        static Made const object;
        return object.value;
    }

    template <int... N>
    std::vector<int (*)()> StaticsOf(std::integer_sequence<int, N...>)
    {
        return {&StaticOf<N>...};
    }

    std::atomic<int> ownBegun{0};
    std::atomic<int> ownEnded{0};

    struct Own
    {
        Own()
        {
            ++ownBegun;
        }
        ~Own()
        {
            ++ownEnded;
        }
        std::string text = "own";
    };

    thread_local Own own;
} // namespace

TEST_F(StressRuntime, MutexLetsOneIn)
{
    std::unique_ptr<std::mutex> mutex;
    Counter counter;
    Rounds(
        [&] {
            mutex = std::make_unique<std::mutex>();
            counter.value = 0;
        },
        [&](int thread) {
            for (int step = 0; step < steps; ++step)
            {
                std::unique_lock lock(*mutex, std::defer_lock);
                while (thread == 1 && !lock.try_lock())
                {
                    std::this_thread::yield();
                }
                if (thread != 1)
                {
                    lock.lock();
                }
                counter.Step();
            }
        },
        [&] { ASSERT_EQ(counter.value, threads * steps); });
}

TEST_F(StressRuntime, SlimMutexLetsOneWriterInOrManyReaders)
{
    std::unique_ptr<winrt::slim_mutex> mutex;
    Counter counter;
    Counter twin;
    std::atomic<int> torn{0};
    Rounds(
        [&] {
            mutex = std::make_unique<winrt::slim_mutex>();
            counter.value = 0;
            twin.value = 0;
        },
        [&](int thread) {
            for (int step = 0; step < steps; ++step)
            {
                if (thread < 2)
                {
                    winrt::slim_lock_guard const lock(*mutex);
                    counter.Step();
                    twin.Step();
                }
                else
                {
                    winrt::slim_shared_lock_guard const lock(*mutex);
                    torn += counter.value == twin.value ? 0 : 1;
                }
            }
        },
        [&] {
            ASSERT_EQ(counter.value, 2 * steps);
            ASSERT_EQ(torn, 0);
        });
}

TEST_F(StressRuntime, ConditionVariableLosesNoWakeUp)
{
    struct Queue
    {
        std::mutex mutex;
        std::condition_variable filled;
        int waiting = 0;
        int lost = 0;
    };
    std::unique_ptr<Queue> queue;
    Rounds([&] { queue = std::make_unique<Queue>(); },
           [&](int thread) {
               for (int step = 0; step < steps; ++step)
               {
                   std::unique_lock lock(queue->mutex);
                   if (thread % 2 == 0)
                   {
                       ++queue->waiting;
                       queue->filled.notify_one();
                   }
                   else if (queue->filled.wait_for(lock, test::patience, [&] { return queue->waiting > 0; }))
                   {
                       --queue->waiting;
                   }
                   else
                   {
                       ++queue->lost;
                   }
               }
           },
           [&] {
               ASSERT_EQ(queue->waiting, 0);
               ASSERT_EQ(queue->lost, 0);
           });
}

TEST_F(StressRuntime, CallOnceCallsOnce)
{
    std::vector<std::unique_ptr<std::once_flag>> flags(steps);
    Counter calls;
    std::atomic<int> early{0};
    Rounds(
        [&] {
            calls.value = 0;
            for (auto& flag : flags)
            {
                flag = std::make_unique<std::once_flag>();
            }
        },
        [&](int) {
            for (int step = 0; step < steps; ++step)
            {
                std::call_once(*flags[static_cast<std::size_t>(step)], [&] { calls.Step(); });
                early += calls.value > step ? 0 : 1;
            }
        },
        [&] {
            ASSERT_EQ(calls.value, steps);
            ASSERT_EQ(early, 0);
        });
}

// As many as there are, once a process: the runner's repetitions are the load here.
TEST_F(StressRuntime, StaticObjectsAreMadeOnce)
{
    constexpr int count = 500;
    auto const statics = StaticsOf(std::make_integer_sequence<int, count>());
    std::vector<std::vector<int>> seen(threads);
    Rounds([] {},
           [&](int thread) {
               auto& mine = seen[static_cast<std::size_t>(thread)];
               mine.clear();
               for (auto* const get : statics)
               {
                   mine.push_back(get());
               }
           },
           [&] {
               ASSERT_EQ(made, count);
               for (auto const& values : seen)
               {
                   ASSERT_EQ(values, seen.front());
               }
           });
}

TEST_F(StressRuntime, ThreadsOwnObjectsBeginAndEndWithThem)
{
    static_cast<void>(own.text);
    auto const before = ownBegun - ownEnded;
    std::atomic<int> strangers{0};
    Rounds([] {},
           [&](int) {
               std::thread([&] {
                   strangers += own.text == "own" ? 0 : 1;
                   own.text = std::to_string(GetCurrentThreadId());
                   std::this_thread::yield();
                   strangers += own.text == std::to_string(GetCurrentThreadId()) ? 0 : 1;
               }).join();
           },
           [&] {
               ASSERT_EQ(strangers, 0);
               ASSERT_EQ(ownBegun - ownEnded, before);
           });
}

TEST_F(StressRuntime, FutureHearsOfItsPromise)
{
    std::unique_ptr<std::promise<int>> promise;
    std::shared_future<int> future;
    std::atomic<int> heard{0};
    Rounds(
        [&] {
            promise = std::make_unique<std::promise<int>>();
            future = promise->get_future().share();
            heard = 0;
        },
        [&](int thread) {
            if (thread == 0)
            {
                promise->set_value(steps);
            }
            else
            {
                auto const mine = future;
                heard += mine.wait_for(test::patience) == std::future_status::ready ? mine.get() : 0;
            }
        },
        [&] { ASSERT_EQ(heard, (threads - 1) * steps); });
}

TEST_F(StressRuntime, ExceptionsReachTheirOwnThreads)
{
    std::atomic<int> wrong{0};
    Rounds([] {},
           [&](int thread) {
               for (int step = 0; step < steps; ++step)
               {
                   auto const text = std::to_string(thread * steps + step);
                   try
                   {
                       try
                       {
                           throw std::runtime_error(text);
                       }
                       catch (std::runtime_error const&)
                       {
                           std::this_thread::yield();
                           throw;
                       }
                   }
                   catch (std::exception const& error)
                   {
                       wrong += error.what() == text ? 0 : 1;
                   }
               }
           },
           [&] { ASSERT_EQ(wrong, 0); });
}
