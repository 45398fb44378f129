// A door that handlers wait at.
#pragma once

#include "tests/support/Patience.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <set>

namespace test
{
    // Counts those who wait.
    class Gate
    {
    public:
        HRESULT Pass()
        {
            std::unique_lock lock(m_mutex);
            m_threads.insert(GetCurrentThreadId());
            ++m_inside;
            m_most = std::max(m_most, m_inside);
            m_changed.notify_all();
            EXPECT_TRUE(m_changed.wait_for(lock, patience, [&] { return m_open; }));
            --m_inside;
            return S_OK;
        }

        bool WaitFor(int inside, std::chrono::milliseconds limit = patience)
        {
            std::unique_lock lock(m_mutex);
            return m_changed.wait_for(lock, limit, [&] { return m_inside >= inside; });
        }

        void Open()
        {
            std::lock_guard const lock(m_mutex);
            m_open = true;
            m_changed.notify_all();
        }

        int Most()
        {
            std::lock_guard const lock(m_mutex);
            return m_most;
        }

        std::size_t Threads()
        {
            std::lock_guard const lock(m_mutex);
            return m_threads.size();
        }

    private:
        std::mutex m_mutex;
        std::condition_variable m_changed;
        std::set<DWORD> m_threads;
        bool m_open = false;
        int m_inside = 0;
        int m_most = 0;
    };
} // namespace test
