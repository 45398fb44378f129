// The host's side of a discovery run, on a thread of its own.
#pragma once

#include "pairing/DiscoveryQueue.h"
#include "pairing/LibraryState.h"
#include "tests/support/Patience.h"

#include <gtest/gtest.h>

#include <future>
#include <mutex>
#include <thread>

namespace test
{
    template <typename Mutex>
    bool IsFree(Mutex& mutex)
    {
        std::unique_lock const lock(mutex, std::try_to_lock);
        return lock.owns_lock();
    }

    // Until somebody holds the queue's lock; the caller keeps the gate (enumerationMutex) shut for him.
    inline void WaitForTakerAtTheGate()
    {
        EXPECT_TRUE(WaitUntil([] { return !IsFree(vorlink::Library().completionMutex); })) << "no taker at the gate";
    }

    // Runs `take`, and returns when it is known to wait on the empty queue.
    template <typename Take>
    auto Waiting(Take take)
    {
        auto& library = vorlink::Library();
        std::unique_lock gate(library.enumerationMutex);
        auto taker = std::async(std::launch::async, std::move(take));
        // Held up at the gate, the taker has the queue's lock. Let through, it gives the lock back by waiting.
        WaitForTakerAtTheGate();
        gate.unlock();
        std::lock_guard const waits(library.completionMutex);
        return taker;
    }

    inline std::future<int> WaitingTaker(vorlink::enumeration::DeviceInformation& slot)
    {
        return Waiting([&slot] { return vorlink::TakeDevice(slot); });
    }

    // Wakes a waiting taker with nothing to take. Whoever needs the queue's lock afterwards comes after him.
    inline void WakeTaker()
    {
        auto& library = vorlink::Library();
        std::lock_guard const gate(library.enumerationMutex);
        library.completionSignal.notify_one(std::unique_lock(library.completionMutex));
        WaitForTakerAtTheGate();
    }

    // What the taker gave; one that still waits is a failure.
    template <typename T>
    T Result(std::future<T>& taker)
    {
        if (!IsReady(taker, patience))
        {
            ADD_FAILURE() << "the taker still waits";
            vorlink::FinishDiscovery();
        }
        return taker.get();
    }
} // namespace test
