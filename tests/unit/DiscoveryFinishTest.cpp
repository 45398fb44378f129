// The end of a run: what it stops, whom it wakes.
#include "pairing/DiscoveryQueue.h"
#include "tests/support/Endpoints.h"
#include "tests/support/Taker.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

using namespace test;
using namespace vorlink;
using testing::ElementsAre;

TEST(DiscoveryFinish, WakesTheWaitingTaker)
{
    enumeration::DeviceInformation slot{nullptr};
    auto taker = WaitingTaker(slot);
    FinishDiscovery();
    EXPECT_EQ(Result(taker), 2);
}

TEST(DiscoveryFinish, CompletedEnumerationFinishesTheRun)
{
    enumeration::DeviceInformation slot{nullptr};
    auto taker = WaitingTaker(slot);
    OnDiscoveryCompleted(nullptr, nullptr);
    EXPECT_EQ(Result(taker), 2);
    EXPECT_TRUE(Library().enumerationFinished);
}

TEST(DiscoveryFinish, WaitsForTheQueuesLock)
{
    auto& library = Library();
    std::unique_lock lock(library.completionMutex);
    auto const finish = std::async(std::launch::async, FinishDiscovery);
    EXPECT_FALSE(IsReady(finish, moment));
    EXPECT_FALSE(library.enumerationFinished);
    lock.unlock();
    EXPECT_TRUE(IsReady(finish, patience));
    EXPECT_TRUE(library.enumerationFinished);
}

TEST(DiscoveryFinish, RevokesTheRegistrationsOfAWatcherInTheSlotThenStopsAndForgetsIt)
{
    Load(prompt);
    Watcher const watcher;
    auto const& sender = watcher.Sender();
    auto& library = Library();
    library.enumerationWatcher = sender;
    library.enumerationAdded = sender.Added(winrt::auto_revoke, OnDiscoveryAdded);
    library.enumerationUpdated = sender.Updated(winrt::auto_revoke, OnDiscoveryUpdated);
    library.enumerationCompleted = sender.EnumerationCompleted(winrt::auto_revoke, OnDiscoveryCompleted);
    // No handler stands behind this one; its removal shows all the same.
    library.enumerationStopped = enumeration::DeviceWatcher::Stopped_revoker(sender, winrt::event_token{1});
    SimulatorClearTrace();
    FinishDiscovery();
    EXPECT_THAT(WithoutTokens(Trace({"DeviceWatcher."})),
                ElementsAre("DeviceWatcher.remove_Added(#1)", "DeviceWatcher.remove_Updated(#1)",
                            "DeviceWatcher.remove_EnumerationCompleted(#1)", "DeviceWatcher.remove_Stopped(#1)",
                            "DeviceWatcher.Stop(#1)"));
    EXPECT_FALSE(library.enumerationWatcher);
    EXPECT_FALSE(library.enumerationAdded);
    EXPECT_FALSE(library.enumerationUpdated);
    EXPECT_FALSE(library.enumerationCompleted);
    EXPECT_FALSE(library.enumerationStopped);
}

namespace
{
    struct Event
    {
        char const* name;
        void (*raise)();
    };

    void PrintTo(Event const& event, std::ostream* stream)
    {
        *stream << event.name;
    }

    constexpr Event events[] = {
        {"Added", [] { OnDiscoveryAdded(nullptr, nullptr); }},
        {"Updated", [] { OnDiscoveryUpdated(nullptr, nullptr); }},
        {"Finish", [] { FinishDiscovery(); }},
    };

    using DiscoveryEvent = testing::TestWithParam<Event>;
} // namespace

TEST_P(DiscoveryEvent, WakesOneTakerAlone)
{
    enumeration::DeviceInformation slots[2]{nullptr, nullptr};
    std::future<int> takers[] = {WaitingTaker(slots[0]), WaitingTaker(slots[1])};
    GetParam().raise();
    auto const deadline = std::chrono::steady_clock::now() + patience;
    while (!IsReady(takers[0]) && !IsReady(takers[1]) && std::chrono::steady_clock::now() < deadline)
    {
        std::this_thread::yield();
    }
    bool const firstIsWoken = IsReady(takers[0]);
    auto& woken = takers[firstIsWoken ? 0 : 1];
    auto& other = takers[firstIsWoken ? 1 : 0];
    EXPECT_TRUE(IsReady(woken));
    EXPECT_FALSE(IsReady(other, moment));
    FinishDiscovery();
    EXPECT_EQ(Result(other), 2);
}

TEST(DiscoveryTakers, AreWokenInTheOrderOfTheirWaits)
{
    auto& library = Library();
    enumeration::DeviceInformation slots[3]{nullptr, nullptr, nullptr};
    std::future<int> takers[] = {WaitingTaker(slots[0]), WaitingTaker(slots[1]), WaitingTaker(slots[2])};
    EXPECT_FALSE(IsReady(takers[2], moment)); // and meanwhile all have gone to sleep
    for (auto& taker : takers)
    {
        EXPECT_FALSE(IsReady(taker, moment));
        library.completionSignal.notify_one(std::unique_lock(library.completionMutex));
        EXPECT_EQ(Result(taker), 0);
    }
}

INSTANTIATE_TEST_SUITE_P(All, DiscoveryEvent, testing::ValuesIn(events),
                         [](auto const& test) { return std::string(test.param.name); });
