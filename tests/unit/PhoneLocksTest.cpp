// What the phone watcher locks, and who does not wait for it.
#include "pairing/PhoneWatcher.h"
#include "tests/support/Patience.h"
#include "tests/support/Trace.h"
#include "tests/unit/PhoneState.h"

#include <gmock/gmock.h>

#include <future>
#include <mutex>

using namespace test;
using namespace vorlink;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST(PhoneLocks, OfTheListHoldUpARemovalAlone)
{
    auto const watcher = WatcherOver("Ana");
    auto const update = Rename(*watcher, phoneAddress);
    auto const sender = watcher->Sender();
    std::unique_lock mutex(Library().IosDeviceListMutex);

    auto const added = std::async(std::launch::async, [&] { OnDeviceAdded(sender, watcher->Devices().at(0)); });
    ASSERT_TRUE(IsReady(added, patience));
    auto const updated = std::async(std::launch::async, [&] { OnDeviceUpdated(sender, update); });
    ASSERT_TRUE(IsReady(updated, patience));
    EXPECT_THAT(Kept(), ElementsAre(L"Renamed"));
    auto const stopped = std::async(std::launch::async, [] {
        EXPECT_TRUE(SubVorlink().StartIosWatcher(Phones::Callback)); // clears the list
        StopIosWatcher();
        SubVorlink().Uninitialize();
    });
    ASSERT_TRUE(IsReady(stopped, patience));
    ASSERT_TRUE(WaitIdle()); // an arrival may have been on its way
    Library().IosDeviceList.Clear();
    OnDeviceAdded(sender, watcher->Devices().at(0));

    SimulatorClearTrace();
    auto const removed = std::async(std::launch::async, [&] { OnDeviceRemoved(sender, update); });
    // It has searched without the mutex, and has found.
    ASSERT_TRUE(WaitForCall("DeviceInformationUpdate.get_Id"));
    EXPECT_FALSE(IsReady(removed, moment));
    EXPECT_THAT(Kept(), SizeIs(1));
    mutex.unlock();
    ASSERT_TRUE(IsReady(removed, patience));
    EXPECT_THAT(Kept(), IsEmpty());
}

TEST(PhoneLocks, DoNotHoldUpARemovalOfTheUnknown)
{
    auto const watcher = WatcherOver("Ana");
    auto const update = Rename(*watcher, phoneAddress);
    std::lock_guard const mutex(Library().IosDeviceListMutex);
    auto const removed = std::async(std::launch::async, [&] { OnDeviceRemoved(watcher->Sender(), update); });
    ASSERT_TRUE(IsReady(removed, patience));
}

// Else one walks to an end that another has brought nearer, which ends the process.
TEST(PhoneLocks, LetTheListChangeOneAtATimeAndReportsPass)
{
    auto const watcher = WatcherOver("Ana");
    auto const device = watcher->Devices().at(0);
    auto const update = Rename(*watcher, phoneAddress);
    auto const sender = watcher->Sender();
    Library().IosDeviceList.Append(device);
    std::unique_lock walk(Library().iosWalkMutex);

    SimulatorClearTrace();
    auto const added = std::async(std::launch::async, [&] { OnDeviceAdded(sender, device); });
    ASSERT_TRUE(Phones::WaitFor(1)) << "the host hears of it meanwhile";
    auto const updated = std::async(std::launch::async, [&] { OnDeviceUpdated(sender, update); });
    auto const removed = std::async(std::launch::async, [&] { OnDeviceRemoved(sender, update); });
    auto const cleared = std::async(std::launch::async, ClearIosDeviceList);
    EXPECT_FALSE(IsReady(added, moment));
    EXPECT_THAT(Kept(), ElementsAre(L"Ana"));
    EXPECT_THAT(Trace({"DeviceInformationUpdate.get_Id", "DeviceInformation.Update"}), IsEmpty());
    for (auto const* const call : {&updated, &removed, &cleared})
    {
        EXPECT_FALSE(IsReady(*call));
    }
    walk.unlock();
    for (auto const* const call : {&added, &updated, &removed, &cleared})
    {
        EXPECT_TRUE(IsReady(*call, patience));
    }
}

TEST(PhoneLocks, DoNotHoldUpASearchForAPhone)
{
    auto const watcher = WatcherOver("Ana");
    Library().IosDeviceList.Append(watcher->Devices().at(0));
    std::lock_guard const walk(Library().iosWalkMutex);
    auto const search = std::async(std::launch::async, [] { SubVorlink().IosPairedDevicce("Nobody", Host::Callback); });
    ASSERT_TRUE(IsReady(search, patience));
    EXPECT_EQ(Host::Count(), 1u);
}
