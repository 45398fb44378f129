// The phone watcher's state: what its operations and handlers leave in it, and what they lock.
#include "pairing/LibraryState.h"
#include "pairing/PhoneWatcher.h"
#include "pairing/SubVorlink.h"
#include "tests/support/Endpoints.h"
#include "tests/support/FakeList.h"
#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Patience.h"
#include "tests/support/Phones.h"
#include "tests/support/ProcessEnd.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <atomic>
#include <chrono>
#include <future>
#include <memory>
#include <thread>
#include <utility>
#include <vector>

using namespace test;
using namespace vorlink;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    constexpr char address[] = "a4:c1:38:5e:22:0f";
    std::string const id = ClassicId(address);
    constexpr auto code = static_cast<std::int32_t>(0x80070490);

    void Start(std::string const& scenario)
    {
        Load(scenario);
        Library().logEnabled = true;
        EXPECT_TRUE(SubVorlink().StartIosWatcher(Phones::Callback));
        ASSERT_TRUE(SimulatorWaitIdle(20'000));
    }

    std::int32_t CodeOfStart()
    {
        try
        {
            SubVorlink().StartIosWatcher(Phones::Callback);
        }
        catch (winrt::hresult_error const& error)
        {
            return error.code();
        }
        return 0;
    }

    std::vector<std::wstring> Kept()
    {
        std::vector<std::wstring> names;
        auto const& list = Library().IosDeviceList;
        for (std::uint32_t i = 0; i < list.Size(); ++i)
        {
            names.emplace_back(list.GetAt(i).Name());
        }
        return names;
    }

    // Which of the slots hold a registration: Added, Updated, Removed, EnumerationCompleted, Stopped.
    std::string Registrations()
    {
        auto const& library = Library();
        std::string slots;
        slots += library.iosAdded ? 'A' : '-';
        slots += library.iosUpdated ? 'U' : '-';
        slots += library.iosRemoved ? 'R' : '-';
        slots += library.iosEnumerationCompleted ? 'E' : '-';
        slots += library.iosStopped ? 'S' : '-';
        return slots;
    }

    // The platform's objects of one device, to hand to a handler.
    std::unique_ptr<Watcher> Over(std::string const& name, std::string const& rest = "")
    {
        Load(patient + Device(name, address, rest));
        Library().iosDeviceCallback = Phones::Callback;
        Library().logEnabled = true;
        return std::make_unique<Watcher>();
    }

    bool Ends(std::future<void> const& call)
    {
        return call.wait_for(patience) == std::future_status::ready;
    }
} // namespace

TEST(PhoneState, IsIdleAtFirst)
{
    EXPECT_FALSE(Library().IosWatcher);
    EXPECT_EQ(Registrations(), "-----");
    EXPECT_EQ(Library().iosDeviceCallback, nullptr);
}

TEST(PhoneState, HoldsTheWatcherAndItsRegistrationsWhileItRuns)
{
    Start(patient + Device("Ana", address));
    EXPECT_TRUE(Library().IosWatcher);
    EXPECT_EQ(Registrations(), "AURES");
    EXPECT_THAT(Kept(), ElementsAre(L"Ana"));
}

TEST(PhoneState, StopLeavesTheRegistrationForRemovedAndTheList)
{
    Start(patient + Device("Ana", address));
    StopIosWatcher();
    EXPECT_FALSE(Library().IosWatcher);
    EXPECT_EQ(Registrations(), "--R--");
    EXPECT_THAT(Kept(), ElementsAre(L"Ana"));
}

TEST(PhoneState, StopOfNothingDoesNothing)
{
    Load(patient);
    Library().logEnabled = true;
    StopIosWatcher();
    EXPECT_FALSE(LogExists());
    EXPECT_THAT(Trace(), IsEmpty());
}

TEST(PhoneState, SecondStopDoesNothing)
{
    Start(patient);
    StopIosWatcher();
    SimulatorClearTrace();
    StopIosWatcher();
    EXPECT_THAT(Trace(), IsEmpty());
    EXPECT_THAT(Log(), SizeIs(1));
}

TEST(PhoneState, NextStartRevokesTheRegistrationForRemovedOfAWatcherThatLives)
{
    Start(patient);
    auto const first = Library().IosWatcher;
    StopIosWatcher();
    ASSERT_TRUE(SimulatorWaitIdle(20'000));
    SimulatorClearTrace();
    EXPECT_TRUE(SubVorlink().StartIosWatcher(Phones::Callback));
    EXPECT_THAT(WithoutTokens(Trace({"DeviceWatcher."})),
                ElementsAre("DeviceWatcher.add_Added(#2)", "DeviceWatcher.add_Updated(#2)",
                            "DeviceWatcher.add_Removed(#2)", "DeviceWatcher.remove_Removed(#1)",
                            "DeviceWatcher.add_EnumerationCompleted(#2)", "DeviceWatcher.add_Stopped(#2)",
                            "DeviceWatcher.Start(#2)"));
}

TEST(PhoneState, EveryStartStoresItsCallbackAlsoOneThatStops)
{
    Start(patient);
    EXPECT_EQ(Library().iosDeviceCallback, Phones::Callback);
    EXPECT_FALSE(SubVorlink().StartIosWatcher(OtherPhones::Callback));
    EXPECT_EQ(Library().iosDeviceCallback, OtherPhones::Callback);
    SubVorlink().Uninitialize();
    EXPECT_EQ(Library().iosDeviceCallback, OtherPhones::Callback);
}

TEST(PhoneState, FailedStartLeavesTheWatcherWithItsRegistrations)
{
    Load(patient);
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Start", code));
    EXPECT_EQ(CodeOfStart(), code);
    EXPECT_TRUE(Library().IosWatcher);
    EXPECT_EQ(Registrations(), "AURES");
    // One that the platform lets stop is stopped by the next call.
    Library().IosWatcher.Start();
    EXPECT_FALSE(SubVorlink().StartIosWatcher(Phones::Callback));
    EXPECT_FALSE(Library().IosWatcher);
}

TEST(PhoneState, FailedRegistrationLeavesWhatCameBeforeIt)
{
    Load(patient);
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.add_Removed", code));
    EXPECT_EQ(CodeOfStart(), code);
    EXPECT_TRUE(Library().IosWatcher);
    EXPECT_EQ(Registrations(), "AU---");
}

TEST(PhoneState, FailedStopLeavesTheWatcherWithoutItsRegistrations)
{
    Start(patient);
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Stop", code));
    EXPECT_THROW(StopIosWatcher(), winrt::hresult_error);
    EXPECT_TRUE(Library().IosWatcher);
    EXPECT_EQ(Registrations(), "--R--");
    EXPECT_FALSE(LogExists());
}

TEST(PhoneState, StopReadsTheSizeOfTheListLast)
{
    Start(patient);
    FakeList list(7);
    ListInPlace const inPlace(list);
    list.failing = "get_Size";
    EXPECT_THROW(StopIosWatcher(), winrt::hresult_error);
    EXPECT_FALSE(Library().IosWatcher);
    EXPECT_THAT(Trace({"DeviceWatcher.Stop("}), SizeIs(1));
    EXPECT_FALSE(LogExists());
}

TEST(PhoneState, StartClearsAListThatHoldsSomethingAlone)
{
    Load(patient);
    for (UINT32 const size : {0u, 1u})
    {
        FakeList list(size);
        ListInPlace const inPlace(list);
        ASSERT_TRUE(SimulateFailure("DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties", code));
        EXPECT_EQ(CodeOfStart(), code);
        EXPECT_THAT(list.calls, size ? ElementsAreArray({"get_Size", "Clear"}) : ElementsAreArray({"get_Size"}));
    }
}

TEST(PhoneState, ListKeepsItselfSoundUnderItsThreads)
{
    auto const watcher = Over("Ana");
    auto const device = watcher->Devices().at(0);
    auto const& list = Library().IosDeviceList;
    constexpr int calls = 20'000;
    std::atomic<int> removed{0};
    // Beyond the end at most: between the size and the call the list may have become shorter.
    auto const isDone = [](auto call) {
        try
        {
            call();
            return true;
        }
        catch (winrt::hresult_error const& error)
        {
            EXPECT_EQ(error.code(), static_cast<std::int32_t>(0x8000000B));
            return false;
        }
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

TEST(PhoneHandlers, AddedOfOneThatCannotPairKeepsItUnreported)
{
    auto const watcher = Over("Ana", "can-pair = false");
    OnDeviceAdded(watcher->Sender(), watcher->Devices().at(0));
    EXPECT_THAT(Phones::Names(), IsEmpty());
    EXPECT_FALSE(LogExists());
    EXPECT_THAT(Kept(), ElementsAre(L"Ana"));
}

TEST(PhoneHandlers, AddedOfAPairedOneKeepsItUnreported)
{
    auto const watcher = Over("Ana", "is-paired = true");
    OnDeviceAdded(watcher->Sender(), watcher->Devices().at(0));
    EXPECT_THAT(Phones::Names(), IsEmpty());
    EXPECT_FALSE(LogExists());
    EXPECT_THAT(Kept(), ElementsAre(L"Ana"));
}

TEST(PhoneHandlers, AddedOfANamelessOneKeepsItUnreported)
{
    auto const watcher = Over("");
    OnDeviceAdded(watcher->Sender(), watcher->Devices().at(0));
    EXPECT_THAT(Phones::Names(), IsEmpty());
    EXPECT_FALSE(LogExists());
    EXPECT_THAT(Kept(), ElementsAre(L""));
}

TEST(PhoneHandlers, AddedReportsBeforeItKeeps)
{
    auto const watcher = Over("Ana");
    Library().iosDeviceCallback = [](wchar_t const* name, std::uint32_t length) {
        EXPECT_EQ(Library().IosDeviceList.Size(), 0u);
        EXPECT_THAT(Log(), SizeIs(1));
        Phones::Callback(name, length);
    };
    OnDeviceAdded(watcher->Sender(), watcher->Devices().at(0));
    EXPECT_THAT(Phones::Names(), ElementsAre(L"Ana"));
    EXPECT_THAT(Kept(), ElementsAre(L"Ana"));
}

TEST(PhoneHandlers, UpdatedChangesTheFirstOfTwo)
{
    auto const watcher = Over("Ana");
    auto const second = Watcher().Devices().at(0);
    OnDeviceAdded(watcher->Sender(), watcher->Devices().at(0));
    OnDeviceAdded(watcher->Sender(), second);
    OnDeviceUpdated(watcher->Sender(), Rename(*watcher, address));
    EXPECT_THAT(Kept(), ElementsAre(L"Renamed", L"Ana"));
}

TEST(PhoneHandlers, RemovedForgetsTheFirstOfTwo)
{
    auto const watcher = Over("Ana");
    auto const second = Watcher().Devices().at(0);
    auto const update = Rename(*watcher, address);
    second.Update(update);
    OnDeviceAdded(watcher->Sender(), watcher->Devices().at(0));
    OnDeviceAdded(watcher->Sender(), second);
    ASSERT_THAT(Kept(), ElementsAre(L"Ana", L"Renamed"));
    OnDeviceRemoved(watcher->Sender(), update);
    EXPECT_THAT(Kept(), ElementsAre(L"Renamed"));
}

TEST(PhoneHandlers, OfTheUnknownChangeNothing)
{
    auto const watcher = Over("Ana");
    auto const update = Rename(*watcher, address);
    OnDeviceUpdated(watcher->Sender(), update);
    OnDeviceRemoved(watcher->Sender(), update);
    EXPECT_THAT(Kept(), IsEmpty());
    EXPECT_THAT(Trace({"DeviceInformationUpdate.get_Id", "DeviceInformation.Update"}), IsEmpty());
}

TEST(PhoneHandlers, IdentifiersDifferByCase)
{
    Load(patient + Device("Ana", address, "[device.classic]\nid = 'Bluetooth#A'") +
         Device("Ben", "00:00:00:00:00:02", "[device.classic]\nid = 'Bluetooth#a'"));
    Watcher watcher;
    for (auto const& device : watcher.Devices())
    {
        Library().IosDeviceList.Append(device);
    }
    ASSERT_TRUE(SimulateDeviceChanges("Bluetooth#a", "System.ItemNameDisplay", "\"Ben2\"")) << SimulatorLastError();
    OnDeviceRemoved(watcher.Sender(), watcher.Updates().at(0));
    EXPECT_THAT(Kept(), ElementsAre(L"Ana"));
}

TEST(PhoneHandlers, IdentifiersOfUpdatesDifferByCase)
{
    Load(patient + Device("Ana", address, "[device.classic]\nid = 'Bluetooth#A'") +
         Device("Ben", "00:00:00:00:00:02", "[device.classic]\nid = 'Bluetooth#a'"));
    Watcher watcher;
    for (auto const& device : watcher.Devices())
    {
        Library().IosDeviceList.Append(device);
    }
    ASSERT_TRUE(SimulateDeviceChanges("Bluetooth#a", "System.ItemNameDisplay", "\"New\"")) << SimulatorLastError();
    OnDeviceUpdated(watcher.Sender(), watcher.Updates().at(0));
    EXPECT_THAT(Kept(), ElementsAre(L"Ana", L"New"));
}

TEST(PhoneHandlers, ReadTheSizeOnceAndGoNoFurtherThanTheMatch)
{
    Load(patient + Device("Ana", address) + Device("Ben", "00:00:00:00:00:02"));
    Watcher watcher;
    auto const update = Rename(watcher, address);
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

namespace
{
    class FailingList : public testing::TestWithParam<char const*>
    {
    };

    void HandleAllWith(FakeList& list)
    {
        auto const watcher = Over("Ana");
        list.element = watcher->Devices().at(0);
        Library().IosDeviceList = list.Projected();
        auto const update = Rename(*watcher, address);
        OnDeviceAdded(watcher->Sender(), list.element);
        OnDeviceUpdated(watcher->Sender(), update);
        OnDeviceRemoved(watcher->Sender(), update);
        TerminateProcess(GetCurrentProcess(), 5);
    }
} // namespace

TEST_P(FailingList, EndsTheProcess)
{
    FakeList list(1);
    list.failing = GetParam();
    EXPECT_EXIT(HandleAllWith(list), EndedByFailFast, "");
}

INSTANTIATE_TEST_SUITE_P(PhoneHandlers, FailingList, testing::Values("Append", "get_Size", "GetAt", "RemoveAt"),
                         [](auto const& test) { return std::string(test.param); });

TEST(PhoneHandlers, OnlyARemovalWaitsForItsMutex)
{
    auto const watcher = Over("Ana");
    auto const update = Rename(*watcher, address);
    auto const sender = watcher->Sender();
    std::unique_lock mutex(Library().IosDeviceListMutex);

    auto const added = std::async(std::launch::async, [&] { OnDeviceAdded(sender, watcher->Devices().at(0)); });
    ASSERT_TRUE(Ends(added));
    auto const updated = std::async(std::launch::async, [&] { OnDeviceUpdated(sender, update); });
    ASSERT_TRUE(Ends(updated));
    EXPECT_THAT(Kept(), ElementsAre(L"Renamed"));
    auto const stopped = std::async(std::launch::async, [] {
        EXPECT_TRUE(SubVorlink().StartIosWatcher(Phones::Callback)); // clears the list
        StopIosWatcher();
        SubVorlink().Uninitialize();
    });
    ASSERT_TRUE(Ends(stopped));
    ASSERT_TRUE(SimulatorWaitIdle(20'000)); // an arrival may have been on its way
    Library().IosDeviceList.Clear();
    OnDeviceAdded(sender, watcher->Devices().at(0));

    SimulatorClearTrace();
    auto const removed = std::async(std::launch::async, [&] { OnDeviceRemoved(sender, update); });
    // It has searched without the mutex, and has found.
    ASSERT_TRUE(WaitForCall("DeviceInformationUpdate.get_Id"));
    EXPECT_EQ(removed.wait_for(moment), std::future_status::timeout);
    EXPECT_THAT(Kept(), SizeIs(1));
    mutex.unlock();
    ASSERT_TRUE(Ends(removed));
    EXPECT_THAT(Kept(), IsEmpty());
}

// Else one walks to an end that another has brought nearer, which ends the process.
TEST(PhoneHandlers, ChangeTheListOneAtATimeAndReportBeside)
{
    auto const watcher = Over("Ana");
    auto const device = watcher->Devices().at(0);
    auto const update = Rename(*watcher, address);
    auto const sender = watcher->Sender();
    Library().IosDeviceList.Append(device);
    std::unique_lock walk(Library().iosWalkMutex);

    SimulatorClearTrace();
    auto const added = std::async(std::launch::async, [&] { OnDeviceAdded(sender, device); });
    ASSERT_TRUE(Phones::WaitFor(1)) << "the host hears of it meanwhile";
    auto const updated = std::async(std::launch::async, [&] { OnDeviceUpdated(sender, update); });
    auto const removed = std::async(std::launch::async, [&] { OnDeviceRemoved(sender, update); });
    auto const cleared = std::async(std::launch::async, ClearIosDeviceList);
    EXPECT_EQ(added.wait_for(moment), std::future_status::timeout);
    EXPECT_THAT(Kept(), ElementsAre(L"Ana"));
    EXPECT_THAT(Trace({"DeviceInformationUpdate.get_Id", "DeviceInformation.Update"}), IsEmpty());
    for (auto const* call : {&updated, &removed, &cleared})
    {
        EXPECT_EQ(call->wait_for(std::chrono::seconds(0)), std::future_status::timeout);
    }
    walk.unlock();
    for (auto const* call : {&added, &updated, &removed, &cleared})
    {
        EXPECT_TRUE(Ends(*call));
    }
}

TEST(PhoneHandlers, SearchForAPhoneWaitsForNone)
{
    auto const watcher = Over("Ana");
    Library().IosDeviceList.Append(watcher->Devices().at(0));
    std::lock_guard const walk(Library().iosWalkMutex);
    auto const search = std::async(std::launch::async, [] { SubVorlink().IosPairedDevicce("Nobody", Host::Callback); });
    ASSERT_TRUE(Ends(search));
    EXPECT_EQ(Host::Count(), 1u);
}

TEST(PhoneHandlers, RemovalOfTheUnknownTakesNoMutex)
{
    auto const watcher = Over("Ana");
    auto const update = Rename(*watcher, address);
    std::lock_guard const mutex(Library().IosDeviceListMutex);
    auto const removed = std::async(std::launch::async, [&] { OnDeviceRemoved(watcher->Sender(), update); });
    ASSERT_TRUE(Ends(removed));
}

TEST(PhoneHandlers, CompletedEnumerationStops)
{
    Start(patient);
    OnEnumerationCompleted(Library().IosWatcher, nullptr);
    EXPECT_FALSE(Library().IosWatcher);
    EXPECT_THAT(Log(), ElementsAre(Record(87, "StopIosWatcher", "entry StopIosWatcher  0 ")));
}

TEST(PhoneHandlers, StoppedDoesNothing)
{
    Start(patient);
    SimulatorClearTrace();
    OnWatcherStopped(Library().IosWatcher, nullptr);
    EXPECT_TRUE(Library().IosWatcher);
    EXPECT_THAT(Trace(), IsEmpty());
    EXPECT_FALSE(LogExists());
}

TEST(PhoneState, FailedCreationAndFailedStopHaveStoredTheCallback)
{
    Load(patient);
    ASSERT_TRUE(SimulateFailure("DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties", code));
    EXPECT_EQ(CodeOfStart(), code);
    EXPECT_EQ(Library().iosDeviceCallback, Phones::Callback);
    Library().iosDeviceCallback = nullptr;
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Start", code));
    EXPECT_EQ(CodeOfStart(), code);
    Library().iosDeviceCallback = nullptr;
    EXPECT_NE(CodeOfStart(), 0); // it was never started, so it does not stop
    EXPECT_EQ(Library().iosDeviceCallback, Phones::Callback);
}

TEST(PhoneState, FailedClearReachesTheHostBeforeAWatcherIsMade)
{
    Load(patient);
    FakeList list(1);
    list.failing = "Clear";
    ListInPlace const inPlace(list);
    EXPECT_EQ(CodeOfStart(), list.failure);
    EXPECT_THAT(Trace(), IsEmpty());
}

TEST(SlowPhoneEnd, WaitsFor25SecondsAndThenStopsNothingWhereNothingRuns)
{
    Load(patient);
    Library().logEnabled = true;
    auto const start = std::chrono::steady_clock::now();
    ThreadEndWatcher();
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(25));
    EXPECT_THAT(Log(), ElementsAre(Record(178, "ThreadEndWatcher", "Exit ,call StopIosWatcher")));
    EXPECT_THAT(Trace(), IsEmpty());
}
