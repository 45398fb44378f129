// What the phone watcher asks of its list of endpoints, and what becomes of errors of the list.
#include "pairing/PhoneWatcher.h"
#include "tests/support/FakeList.h"
#include "tests/support/LogFile.h"
#include "tests/support/ProcessEnd.h"
#include "tests/support/Trace.h"
#include "tests/unit/PhoneState.h"

#include <gmock/gmock.h>

#include <atomic>
#include <thread>
#include <utility>
#include <vector>

using namespace test;
using namespace vorlink;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    using FailingList = testing::TestWithParam<char const*>;

    void HandleAllWith(FakeList& list)
    {
        auto const watcher = WatcherOver("Ana");
        list.element = watcher->Devices().at(0);
        Library().IosDeviceList = list.Projected();
        auto const update = Rename(*watcher, phoneAddress);
        OnDeviceAdded(watcher->Sender(), list.element);
        OnDeviceUpdated(watcher->Sender(), update);
        OnDeviceRemoved(watcher->Sender(), update);
        TerminateProcess(GetCurrentProcess(), 5);
    }
} // namespace

TEST(PhoneList, IsAskedForItsSizeLastByAStop)
{
    StartWatching(patient);
    FakeList list(7);
    ListInPlace const inPlace(list);
    list.failing = "get_Size";
    EXPECT_THROW(StopIosWatcher(), winrt::hresult_error);
    EXPECT_FALSE(Library().IosWatcher);
    EXPECT_THAT(Trace({"DeviceWatcher.Stop("}), SizeIs(1));
    EXPECT_FALSE(LogExists());
}

TEST(PhoneList, IsClearedByAStartWhenItHoldsSomething)
{
    Load(patient);
    for (UINT32 const size : {0u, 1u})
    {
        FakeList list(size);
        ListInPlace const inPlace(list);
        ASSERT_TRUE(SimulateFailure(createWatcher, platformCode));
        EXPECT_EQ(CodeOfStart(), platformCode);
        EXPECT_THAT(list.calls, size ? ElementsAreArray({"get_Size", "Clear"}) : ElementsAreArray({"get_Size"}));
    }
}

TEST(PhoneList, ThatCannotBeClearedFailsTheStartBeforeAWatcherIsMade)
{
    Load(patient);
    FakeList list(1);
    list.failing = "Clear";
    ListInPlace const inPlace(list);
    EXPECT_EQ(CodeOfStart(), list.failure);
    EXPECT_THAT(Trace(), IsEmpty());
}

TEST(PhoneList, KeepsItselfSoundUnderItsThreads)
{
    auto const watcher = WatcherOver("Ana");
    auto const device = watcher->Devices().at(0);
    auto const& list = Library().IosDeviceList;
    constexpr int calls = 20'000;
    std::atomic<int> removed = 0;
    // Beyond the end at most: between the size and the call the list may have become shorter.
    auto const isDone = [](auto call) {
        auto const code = CodeOf(call);
        EXPECT_TRUE(code == 0 || code == outOfBounds) << code;
        return code == 0;
    };
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 2; ++thread)
    {
        threads.emplace_back([&] {
            for (int call = 0; call < calls; ++call)
            {
                list.Append(device);
            }
        });
        threads.emplace_back([&] {
            for (int call = 0; call < calls; ++call)
            {
                removed += isDone([&] { list.RemoveAt(list.Size() / 2); }) ? 1 : 0;
            }
        });
    }
    for (int call = 0; call < calls; ++call)
    {
        isDone([&] { EXPECT_EQ(list.GetAt(list.Size() / 2), device); });
    }
    for (auto& thread : threads)
    {
        thread.join();
    }
    EXPECT_EQ(list.Size(), static_cast<std::uint32_t>(2 * calls - removed));
}

TEST(PhoneList, IsAskedForItsSizeOnceAndUpToTheMatchAlone)
{
    Load(patient + Device("Ana", phoneAddress) + Device("Ben", "00:00:00:00:00:02"));
    Watcher watcher;
    auto const update = Rename(watcher, phoneAddress);
    FakeList list(2);
    ListInPlace const inPlace(list);
    using Calls = std::vector<std::string>;

    list.element = watcher.Devices().at(1);
    OnDeviceUpdated(watcher.Sender(), update);
    EXPECT_EQ(std::exchange(list.calls, {}), (Calls{"get_Size", "GetAt", "GetAt"}));
    OnDeviceRemoved(watcher.Sender(), update);
    EXPECT_EQ(std::exchange(list.calls, {}), (Calls{"get_Size", "GetAt", "GetAt"}));

    list.element = watcher.Devices().at(0);
    OnDeviceUpdated(watcher.Sender(), update);
    EXPECT_EQ(std::exchange(list.calls, {}), (Calls{"get_Size", "GetAt"}));
    OnDeviceRemoved(watcher.Sender(), update);
    EXPECT_EQ(std::exchange(list.calls, {}), (Calls{"get_Size", "GetAt", "RemoveAt"}));
}

TEST_P(FailingList, EndsTheProcess)
{
    FakeList list(1);
    list.failing = GetParam();
    EXPECT_EXIT(HandleAllWith(list), EndedByFailFast, "");
}

INSTANTIATE_TEST_SUITE_P(PhoneHandlers, FailingList, testing::Values("Append", "get_Size", "GetAt", "RemoveAt"),
                         [](auto const& test) { return std::string(test.param); });
