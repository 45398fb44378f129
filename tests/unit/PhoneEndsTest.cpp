// The phone watcher's ends that meet each other, or its start: one does the work, and none is lost.
#include "pairing/LibraryState.h"
#include "pairing/PhoneWatcher.h"
#include "pairing/SubVorlink.h"
#include "tests/support/Codes.h"
#include "tests/support/FakeWatcher.h"
#include "tests/support/LogFile.h"
#include "tests/support/Patience.h"
#include "tests/support/Phones.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/StandIns.h"

#include <gmock/gmock.h>

#include <windows.h>
#include <roapi.h>

#include <algorithm>
#include <future>
#include <thread>

using namespace test;
using namespace vorlink;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    platform::IDeviceInformationStatics2* statics = nullptr;

    HRESULT WINAPI GiveStatics(HSTRING, REFIID id, void** factory)
    {
        return statics->QueryInterface(id, factory);
    }

    // The platform's watcher is the test's from now on.
    class PhoneEnds : public testing::Test
    {
    protected:
        PhoneEnds()
        {
            ::statics = &factory;
            ReplaceImport(GetModuleHandleW(nullptr), "RoGetActivationFactory", GiveStatics);
            ReplaceImport(GetModuleHandleW(nullptr), "CreateThread", PretendThread); // whose 25 seconds no test needs
            Library().logEnabled = true;
        }

        bool Start()
        {
            return SubVorlink().StartIosWatcher(Phones::Callback);
        }

        std::ptrdiff_t Count(char const* call)
        {
            auto const calls = watcher.Calls();
            return std::count(calls.begin(), calls.end(), call);
        }

        // Not destroyed: the library's state, which holds on to it, is destroyed later.
        FakeWatcher& watcher = *new FakeWatcher;
        FakeStatics& factory = *new FakeStatics(watcher);
        std::string const stopped = Record(87, "StopIosWatcher", "entry StopIosWatcher  0 ");
    };
} // namespace

TEST_F(PhoneEnds, OfTwoAtATimeOneDoesTheWork)
{
    ASSERT_TRUE(Start());
    std::promise<void> inside;
    std::promise<void> proceed;
    watcher.onStop = [&] {
        inside.set_value();
        proceed.get_future().wait_for(patience);
        return S_OK;
    };
    auto const first = std::async(std::launch::async, StopIosWatcher);
    ASSERT_TRUE(IsReady(inside.get_future(), patience));
    auto const second = std::async(std::launch::async, StopIosWatcher);
    ASSERT_TRUE(IsReady(second, patience)) << "waits for the first";
    EXPECT_TRUE(Library().IosWatcher) << "until it has stopped";
    EXPECT_FALSE(Start()) << "while one stops";
    EXPECT_THAT(Log(), IsEmpty());
    proceed.set_value();
    ASSERT_TRUE(IsReady(first, patience));
    EXPECT_FALSE(Library().IosWatcher);
    EXPECT_THAT(Log(), ElementsAre(stopped));
    for (auto const* const call :
         {"remove_Added", "remove_Updated", "remove_EnumerationCompleted", "remove_Stopped", "Stop"})
    {
        EXPECT_EQ(Count(call), 1) << call;
    }
    EXPECT_TRUE(Start()) << "idle again";
}

TEST_F(PhoneEnds, DuringAStartIsDoneOnceItHasStarted)
{
    auto const stopByAnother = [&] { std::thread(StopIosWatcher).join(); };
    watcher.onAddStopped = stopByAnother;
    watcher.onStart = [&] {
        stopByAnother();
        EXPECT_EQ(Count("Stop"), 0);
        return S_OK;
    };
    EXPECT_TRUE(Start());
    EXPECT_FALSE(Library().IosWatcher);
    EXPECT_EQ(watcher.Calls().back(), "Stop");
    EXPECT_EQ(Count("Stop"), 1);
    EXPECT_THAT(Log(), ElementsAre(stopped));
}

TEST_F(PhoneEnds, DuringAStartThatFailsIsForgotten)
{
    watcher.onStart = [] {
        std::thread(StopIosWatcher).join();
        return illegalMethodCall;
    };
    EXPECT_THROW(Start(), winrt::hresult_error);
    EXPECT_TRUE(Library().IosWatcher);
    EXPECT_EQ(Count("Stop"), 0);
    EXPECT_FALSE(Start()) << "the one that did not start counts as running";
    EXPECT_EQ(Count("Stop"), 1);
    watcher.onStart = [] { return S_OK; };
    EXPECT_TRUE(Start());
    EXPECT_TRUE(Library().IosWatcher) << "nothing is left of the first start's stop";
}

TEST_F(PhoneEnds, DuringAStartThatThenCannotStopReachesTheHost)
{
    watcher.onStart = [] {
        std::thread(StopIosWatcher).join();
        return S_OK;
    };
    watcher.onStop = [] { return illegalMethodCall; };
    EXPECT_THROW(Start(), winrt::hresult_error);
    EXPECT_TRUE(Library().IosWatcher);
}

TEST_F(PhoneEnds, ThatThePlatformRefusesMayBeTriedAgain)
{
    ASSERT_TRUE(Start());
    watcher.onStop = [] { return illegalMethodCall; };
    EXPECT_THROW(StopIosWatcher(), winrt::hresult_error);
    EXPECT_TRUE(Library().IosWatcher);
    watcher.onStop = [] { return S_OK; };
    EXPECT_FALSE(Start());
    EXPECT_EQ(Count("Stop"), 2);
    EXPECT_FALSE(Library().IosWatcher);
    EXPECT_TRUE(Start());
}

TEST_F(PhoneEnds, ByACompletionInsideTheStartIsDoneAtOnce)
{
    watcher.onStart = [&] {
        std::thread([&] { watcher.Complete(); }).join();
        EXPECT_EQ(Count("Stop"), 1);
        EXPECT_FALSE(Library().IosWatcher);
        return S_OK;
    };
    EXPECT_TRUE(Start());
    EXPECT_EQ(Count("Stop"), 1);
    EXPECT_THAT(Log(), ElementsAre(stopped));
}

TEST_F(PhoneEnds, ByACompletionBeforeTheStartLeavesTheStartItsWatcher)
{
    watcher.onAddStopped = [&] { watcher.Complete(); };
    EXPECT_TRUE(Start());
    EXPECT_EQ(watcher.Calls().back(), "Start");
    EXPECT_FALSE(Library().IosWatcher);
}

TEST_F(PhoneEnds, ByALateCompletionOfAnotherWatcherWaitsForTheStart)
{
    FakeWatcher& earlier = *new FakeWatcher;
    watcher.onStart = [&] {
        OnEnumerationCompleted(earlier.Projected(), nullptr);
        EXPECT_EQ(Count("Stop"), 0);
        return S_OK;
    };
    EXPECT_TRUE(Start());
    EXPECT_EQ(watcher.Calls().back(), "Stop");
}

TEST_F(PhoneEnds, StartedAnewInsideItsOwnStartIsTheLatersAffair)
{
    bool again = false;
    watcher.onStart = [&] {
        if (std::exchange(again, true))
        {
            return S_OK;
        }
        watcher.Complete();
        EXPECT_TRUE(Start()) << "what was begun has ended";
        return S_OK;
    };
    EXPECT_TRUE(Start());
    EXPECT_TRUE(Library().IosWatcher);
    EXPECT_EQ(Count("Stop"), 1);
    EXPECT_FALSE(Start());
    EXPECT_EQ(Count("Stop"), 2);
}
