// What the handlers of the phone watcher report and keep.
#include "pairing/PhoneWatcher.h"
#include "tests/support/LogFile.h"
#include "tests/support/Trace.h"
#include "tests/unit/PhoneState.h"

#include <gmock/gmock.h>

using namespace test;
using namespace vorlink;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST(PhoneHandlers, AddedOfOneThatCannotPairKeepsItUnreported)
{
    auto const watcher = WatcherOver("Ana", "can-pair = false");
    OnDeviceAdded(watcher->Sender(), watcher->Devices().at(0));
    EXPECT_THAT(Phones::Names(), IsEmpty());
    EXPECT_FALSE(LogExists());
    EXPECT_THAT(Kept(), ElementsAre(L"Ana"));
}

TEST(PhoneHandlers, AddedOfAPairedOneKeepsItUnreported)
{
    auto const watcher = WatcherOver("Ana", "is-paired = true");
    OnDeviceAdded(watcher->Sender(), watcher->Devices().at(0));
    EXPECT_THAT(Phones::Names(), IsEmpty());
    EXPECT_FALSE(LogExists());
    EXPECT_THAT(Kept(), ElementsAre(L"Ana"));
}

TEST(PhoneHandlers, AddedOfANamelessOneKeepsItUnreported)
{
    auto const watcher = WatcherOver("");
    OnDeviceAdded(watcher->Sender(), watcher->Devices().at(0));
    EXPECT_THAT(Phones::Names(), IsEmpty());
    EXPECT_FALSE(LogExists());
    EXPECT_THAT(Kept(), ElementsAre(L""));
}

TEST(PhoneHandlers, AddedReportsBeforeItKeeps)
{
    auto const watcher = WatcherOver("Ana");
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
    auto const watcher = WatcherOver("Ana");
    auto const second = Watcher().Devices().at(0);
    OnDeviceAdded(watcher->Sender(), watcher->Devices().at(0));
    OnDeviceAdded(watcher->Sender(), second);
    OnDeviceUpdated(watcher->Sender(), Rename(*watcher, phoneAddress));
    EXPECT_THAT(Kept(), ElementsAre(L"Renamed", L"Ana"));
}

TEST(PhoneHandlers, RemovedForgetsTheFirstOfTwo)
{
    auto const watcher = WatcherOver("Ana");
    auto const second = Watcher().Devices().at(0);
    auto const update = Rename(*watcher, phoneAddress);
    second.Update(update);
    OnDeviceAdded(watcher->Sender(), watcher->Devices().at(0));
    OnDeviceAdded(watcher->Sender(), second);
    ASSERT_THAT(Kept(), ElementsAre(L"Ana", L"Renamed"));
    OnDeviceRemoved(watcher->Sender(), update);
    EXPECT_THAT(Kept(), ElementsAre(L"Renamed"));
}

TEST(PhoneHandlers, OfTheUnknownChangeNothing)
{
    auto const watcher = WatcherOver("Ana");
    auto const update = Rename(*watcher, phoneAddress);
    OnDeviceUpdated(watcher->Sender(), update);
    OnDeviceRemoved(watcher->Sender(), update);
    EXPECT_THAT(Kept(), IsEmpty());
    EXPECT_THAT(Trace({"DeviceInformationUpdate.get_Id", "DeviceInformation.Update"}), IsEmpty());
}

TEST(PhoneHandlers, IdentifiersDifferByCase)
{
    Load(patient + Device("Ana", phoneAddress, "[device.classic]\nid = 'Bluetooth#A'") +
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
    Load(patient + Device("Ana", phoneAddress, "[device.classic]\nid = 'Bluetooth#A'") +
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

TEST(PhoneHandlers, CompletedEnumerationStops)
{
    StartWatching(patient);
    OnEnumerationCompleted(Library().IosWatcher, nullptr);
    EXPECT_FALSE(Library().IosWatcher);
    EXPECT_THAT(Log(), ElementsAre(Record(87, "StopIosWatcher", "entry StopIosWatcher  0 ")));
}

TEST(PhoneHandlers, StoppedDoesNothing)
{
    StartWatching(patient);
    SimulatorClearTrace();
    OnWatcherStopped(Library().IosWatcher, nullptr);
    EXPECT_TRUE(Library().IosWatcher);
    EXPECT_THAT(Trace(), IsEmpty());
    EXPECT_FALSE(LogExists());
}
