#pragma once

#include <windows.h>

namespace winrt
{
    // The system's slim reader-writer lock. Not recursive. Not std::shared_mutex, which on mingw-w64 is winpthreads'
    // rwlock: that one has let two writers in at a time.
    struct slim_mutex
    {
        slim_mutex() noexcept = default;
        slim_mutex(slim_mutex const&) = delete;
        slim_mutex& operator=(slim_mutex const&) = delete;

        void lock() noexcept
        {
            AcquireSRWLockExclusive(&m_lock);
        }

        [[nodiscard]] bool try_lock() noexcept
        {
            return TryAcquireSRWLockExclusive(&m_lock) != 0;
        }

        void unlock() noexcept
        {
            ReleaseSRWLockExclusive(&m_lock);
        }

        void lock_shared() noexcept
        {
            AcquireSRWLockShared(&m_lock);
        }

        [[nodiscard]] bool try_lock_shared() noexcept
        {
            return TryAcquireSRWLockShared(&m_lock) != 0;
        }

        void unlock_shared() noexcept
        {
            ReleaseSRWLockShared(&m_lock);
        }

    private:
        SRWLOCK m_lock{};
    };

    struct slim_lock_guard
    {
        explicit slim_lock_guard(slim_mutex& mutex) noexcept
            : m_mutex(mutex)
        {
            m_mutex.lock();
        }

        slim_lock_guard(slim_lock_guard const&) = delete;
        slim_lock_guard& operator=(slim_lock_guard const&) = delete;

        ~slim_lock_guard()
        {
            m_mutex.unlock();
        }

    private:
        slim_mutex& m_mutex;
    };

    struct slim_shared_lock_guard
    {
        explicit slim_shared_lock_guard(slim_mutex& mutex) noexcept
            : m_mutex(mutex)
        {
            m_mutex.lock_shared();
        }

        slim_shared_lock_guard(slim_shared_lock_guard const&) = delete;
        slim_shared_lock_guard& operator=(slim_shared_lock_guard const&) = delete;

        ~slim_shared_lock_guard()
        {
            m_mutex.unlock_shared();
        }

    private:
        slim_mutex& m_mutex;
    };
} // namespace winrt
