// The system's own lock and signal: where a host waits for the platform's events, waking it up is most of the cost, and
// the compiler's std::condition_variable makes of each wake-up several calls into the system's kernel.
#pragma once

#include <windows.h>

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

        void lock() noexcept
        {
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

    // A condition variable whose every notification ends one wait, and nothing else does: the system's own waits end
    // by themselves at times. Without a waiter it costs nothing to notify.
    class SystemSignal
    {
    public:
        SystemSignal() noexcept = default;
        SystemSignal(SystemSignal const&) = delete;
        SystemSignal& operator=(SystemSignal const&) = delete;

        void wait(std::unique_lock<SystemLock>& lock) noexcept
        {
            ++m_waiting;
            while (m_notified == 0)
            {
                SleepConditionVariableSRW(&m_condition, &lock.mutex()->m_lock, INFINITE, 0);
            }
            --m_notified;
        }

        // For the holder of the waiters' lock.
        void notify_one() noexcept
        {
            if (m_waiting > 0)
            {
                --m_waiting;
                ++m_notified;
                WakeConditionVariable(&m_condition);
            }
        }

    private:
        CONDITION_VARIABLE m_condition{};
        unsigned m_waiting = 0;  // and nobody has notified them
        unsigned m_notified = 0; // and not yet awake
    };
} // namespace vorlink
