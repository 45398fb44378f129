#include "simulator/neighbourhood/Thread.h"

#ifdef _WIN32
#include <windows.h>
#include <objbase.h>
#endif

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <mutex>
#include <thread>
#include <utility>

namespace simulator
{
    namespace
    {
        struct Pool
        {
            std::mutex mutex;
            std::condition_variable given;
            std::deque<std::function<void()>> work;
            std::size_t waiting = 0;
        };

        // Never destroyed. Its threads do not end by themselves either: a thread that ends just when the
        // process does can take the process down with it.
        Pool& ThePool()
        {
            static auto& pool = *new Pool;
            return pool;
        }

        // The apartment lasts for the work alone: an idle thread must not keep the implicit one of others alive.
        void RunInApartment(std::function<void()> work)
        {
#ifdef _WIN32
            CoInitializeEx(nullptr, COINIT_MULTITHREADED);
#endif
            std::exchange(work, nullptr)();
#ifdef _WIN32
            CoUninitialize();
#endif
        }

        void Serve()
        {
            auto& pool = ThePool();
            std::unique_lock lock(pool.mutex);
            for (;;)
            {
                ++pool.waiting;
                pool.given.wait(lock, [&] { return !pool.work.empty(); });
                --pool.waiting;
                auto work = std::move(pool.work.front());
                pool.work.pop_front();
                lock.unlock();
                RunInApartment(std::move(work));
                lock.lock();
            }
        }
    } // namespace

    // Work never waits for other work: each piece finds a thread that is free.
    void OnOwnThread(std::function<void()> work)
    {
        auto& pool = ThePool();
        std::lock_guard const lock(pool.mutex);
        if (pool.waiting <= pool.work.size())
        {
            std::thread(Serve).detach();
        }
        pool.work.push_back(std::move(work));
        pool.given.notify_one();
    }
} // namespace simulator
