// Who waits for which lock. A wrong order would show in the field once in a while, as a host that hangs.
#include "pairing/DiscoveryQueue.h"
#include "pairing/SubVorlink.h"
#include "tests/support/Endpoints.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/StandIns.h"
#include "tests/support/Taker.h"

#include <gmock/gmock.h>

#include <process.h>

#include <functional>
#include <memory>
#include <vector>

using namespace test;
using namespace vorlink;
using testing::ElementsAre;

namespace
{
    // A handler that asks, while it is being removed, whether a lock is free: on a thread of its own, for the
    // asking one may be the lock's holder.
    template <typename Mutex>
    auto HandlerAskingWhenRemoved(Mutex& mutex, std::vector<bool>& answers)
    {
        std::shared_ptr<void> const asking(nullptr, [&](void*) {
            answers.push_back(std::async(std::launch::async, [&] { return IsFree(mutex); }).get());
        });
        return [asking](auto&&...) {};
    }

    // Whether the starts of runs are open to others, asked at the start of each thread.
    std::vector<bool> freeAtThreadStart;

    void AskAtThreadStart()
    {
        auto& mutex = Library().enumerationMutex;
        freeAtThreadStart.push_back(std::async(std::launch::async, [&] { return IsFree(mutex); }).get());
    }

    std::uintptr_t __cdecl StartOfTheWatchersThread(void* security, unsigned stack, _beginthreadex_proc_type body,
                                                    void* argument, unsigned flags, unsigned* id)
    {
        AskAtThreadStart();
        return _beginthreadex(security, stack, body, argument, flags, id);
    }

    HANDLE WINAPI StartOfTheTimersThread(SECURITY_ATTRIBUTES* security, SIZE_T stack, LPTHREAD_START_ROUTINE body,
                                         void* argument, DWORD flags, DWORD* id)
    {
        AskAtThreadStart();
        return PretendThread(security, stack, body, argument, flags, id); // the timer is not missed
    }

    // What a handler leaves alone while the lock of its first question is held: the queue and its lock.
    bool LeavesTheQueueAlone()
    {
        auto& library = Library();
        std::unique_lock const lock(library.completionMutex, std::try_to_lock);
        return lock.owns_lock() && library.deviceQueue.empty();
    }

    // Runs a handler while the test holds enumerationMutex, under which a run may be starting.
    void ExpectToWaitWithoutTheQueuesLock(std::function<void()> const& handler)
    {
        std::unique_lock gate(Library().enumerationMutex);
        auto const running = std::async(std::launch::async, handler);
        auto const end = std::chrono::steady_clock::now() + moment;
        bool leavesAlone = true;
        while (leavesAlone && std::chrono::steady_clock::now() < end)
        {
            leavesAlone = LeavesTheQueueAlone();
            std::this_thread::yield();
        }
        EXPECT_TRUE(leavesAlone);
        EXPECT_FALSE(IsReady(running));
        gate.unlock();
        EXPECT_TRUE(IsReady(running, patience));
    }
} // namespace

TEST(DiscoveryLocks, StartCallsNothingUntilItHasItsLock)
{
    Load(patient);
    auto& library = Library();
    std::unique_lock lock(library.enumerationMutex);
    library.enumerationCancelled = true;
    SubVorlink object;
    auto start = std::async(std::launch::async, [&] { object.StartDiscovery(false, false); });
    EXPECT_FALSE(SimulatorWaitForTrace("(", 1, static_cast<std::uint32_t>(moment.count())));
    EXPECT_TRUE(library.enumerationCancelled);
    lock.unlock();
    start.get();
    EXPECT_TRUE(WaitForCall("DeviceWatcher.Start(#1)"));
}

TEST(DiscoveryLocks, StartHoldsItsLockWhileItRegisters)
{
    Load(patient);
    Watcher const earlier;
    auto const& sender = earlier.Sender();
    auto& library = Library();
    auto& mutex = library.enumerationMutex;
    std::vector<bool> free;
    library.enumerationAdded = sender.Added(winrt::auto_revoke, HandlerAskingWhenRemoved(mutex, free));
    library.enumerationUpdated = sender.Updated(winrt::auto_revoke, HandlerAskingWhenRemoved(mutex, free));
    library.enumerationCompleted =
        sender.EnumerationCompleted(winrt::auto_revoke, HandlerAskingWhenRemoved(mutex, free));
    SubVorlink object;
    object.StartDiscovery(false, false);
    EXPECT_THAT(free, ElementsAre(false, false, false));
    EXPECT_TRUE(IsFree(mutex));
}

TEST(DiscoveryLocks, StartHoldsItsLockWhileTheWatcherAndThenTheTimerStart)
{
    Load(patient);
    ReplaceImport(GetModuleHandleW(L"vorlink_simulator.dll"), "_beginthreadex", StartOfTheWatchersThread);
    ReplaceImport(GetModuleHandleW(nullptr), "CreateThread", StartOfTheTimersThread);
    SubVorlink object;
    object.StartDiscovery(false, true);
    EXPECT_THAT(freeAtThreadStart, ElementsAre(false, false));
    EXPECT_TRUE(IsFree(Library().enumerationMutex));
}

TEST(DiscoveryLocks, FinishHoldsTheQueuesLockWhileItRevokes)
{
    Load(patient);
    Watcher const watcher;
    auto& library = Library();
    std::vector<bool> free;
    library.enumerationWatcher = watcher.Sender();
    library.enumerationAdded =
        watcher.Sender().Added(winrt::auto_revoke, HandlerAskingWhenRemoved(library.completionMutex, free));
    FinishDiscovery();
    EXPECT_THAT(free, ElementsAre(false));
    EXPECT_TRUE(IsFree(library.completionMutex));
}

TEST(DiscoveryLocks, AddedWaitsForAStartingRunWithoutTheQueuesLock)
{
    ExpectToWaitWithoutTheQueuesLock([] { OnDiscoveryAdded(nullptr, nullptr); });
    EXPECT_EQ(Library().deviceQueue.size(), 1u);
}

TEST(DiscoveryLocks, UpdatedWaitsForAStartingRunWithoutTheQueuesLock)
{
    ExpectToWaitWithoutTheQueuesLock([] { OnDiscoveryUpdated(nullptr, nullptr); });
}
