// The system's own lock and signal: where a host waits for the platform's events, waking it up is most of the cost, and
// the compiler's std::condition_variable makes of each wake-up several calls into the system's kernel.
#pragma once

#include <windows.h>

#include <atomic>
#include <cstdint>
#include <mutex>

namespace vorlink
{
    // A mutex as std::lock_guard and std::unique_lock want it. Not recursive.
    class SystemLock
    {
    public:
        SystemLock() noexcept = default;
        SystemLock(SystemLock const&) = delete;
        SystemLock& operator=(SystemLock const&) = delete;

        // Held for a moment as a rule: to look a few times is cheaper than to sleep.
        void lock() noexcept
        {
            for (int look = 0; look < 200; ++look)
            {
                if (try_lock())
                {
                    return;
                }
                YieldProcessor();
            }
            AcquireSRWLockExclusive(&m_lock);
        }

        bool try_lock() noexcept
        {
            return TryAcquireSRWLockExclusive(&m_lock) != 0;
        }

        void unlock() noexcept
        {
            ReleaseSRWLockExclusive(&m_lock);
        }

    private:
        friend class SystemSignal;
        SRWLOCK m_lock{};
    };

    // A condition variable whose every notification ends one wait, the one that has lasted longest, and nothing else
    // does: the system's own waits end by themselves at times. Without a waiter it costs nothing to notify.
    class SystemSignal
    {
    public:
        SystemSignal() noexcept = default;
        SystemSignal(SystemSignal const&) = delete;
        SystemSignal& operator=(SystemSignal const&) = delete;

        void wait(std::unique_lock<SystemLock>& lock) noexcept
        {
            auto const number = m_begun++;
            auto const isOver = [&] { return m_ended.load(std::memory_order_relaxed) > number; };
            // Events of the platform come in bursts: within one, looking is cheaper than to sleep and be woken.
            lock.unlock();
            for (int look = 0; look < looks && !isOver(); ++look)
            {
                YieldProcessor();
            }
            lock.lock();
            ++m_asleep;
            while (!isOver())
            {
                SleepConditionVariableSRW(&m_condition, &lock.mutex()->m_lock, INFINITE, 0);
            }
            --m_asleep;
        }

        // Takes the waiters' lock, and gives it back before it wakes one up, who would only sleep on for it.
        void notify_one(std::unique_lock<SystemLock> lock) noexcept
        {
            if (m_ended.load(std::memory_order_relaxed) == m_begun)
            {
                return;
            }
            m_ended.fetch_add(1, std::memory_order_relaxed);
            bool const sleeps = m_asleep > 0;
            lock.unlock();
            if (sleeps)
            {
                WakeAllConditionVariable(&m_condition); // one, as a rule; of several, who is meant knows by his number
            }
        }

    private:
        static constexpr int looks = 1000; // up to some tens of microseconds, as long as a thread takes to wake up

        CONDITION_VARIABLE m_condition{};
        std::uint64_t m_begun = 0;
        std::atomic<std::uint64_t> m_ended = 0; // written by the lock's holder, read by whoever looks
        unsigned m_asleep = 0;
    };
} // namespace vorlink
