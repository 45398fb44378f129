// The runtime's locks and signals under load.
#include "pairing/Enumeration.h"
#include "tests/support/Patience.h"
#include "tests/unit/StressRuntime.h"

#include <atomic>
#include <condition_variable>
#include <memory>
#include <mutex>
#include <thread>
#include <vector>

using namespace test;

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
    std::atomic<int> torn = 0;
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
                   else if (queue->filled.wait_for(lock, patience, [&] { return queue->waiting > 0; }))
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
    std::atomic<int> early = 0;
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
