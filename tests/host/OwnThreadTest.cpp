// A thread that nobody waits for: it runs, whatever else begins or ends meanwhile.
#include "host/OwnThread.h"
#include "tests/support/Patience.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>

using namespace test;

namespace
{
    // Outlive the last thread's last step.
    std::mutex mutex;
    std::condition_variable ran;
    int latest = 0;
} // namespace

TEST(OwnThread, EachOfManyRunsWhileTheOneBeforeItEnds)
{
    for (int number = 1; number <= 1000; ++number)
    {
        host::StartOwnThread([number] {
            std::lock_guard const lock(mutex);
            latest = number;
            ran.notify_one();
        });
        std::unique_lock lock(mutex);
        ASSERT_TRUE(ran.wait_for(lock, patience, [number] { return latest == number; })) << number;
    }
}
