// Updates that reach the queue.
#include "pairing/DiscoveryQueue.h"
#include "tests/support/Endpoints.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Taker.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

using namespace test;
using namespace vorlink;

namespace
{
    std::size_t Updates(char const* address)
    {
        return Trace({"DeviceInformation.Update(" + ClassicId(address) + ")"}).size();
    }

    void QueueAll(Watcher& watcher)
    {
        for (auto const& device : watcher.Devices())
        {
            OnDiscoveryAdded(watcher.Sender(), device);
        }
    }
} // namespace

TEST(DiscoveryUpdate, WithNothingQueuedWakesTheTakerWhichGetsNothing)
{
    Load(TwoDevices());
    Watcher watcher;
    auto const update = Rename(watcher, firstAddress);
    enumeration::DeviceInformation slot{nullptr};
    auto taker = WaitingTaker(slot);
    OnDiscoveryUpdated(watcher.Sender(), update);
    EXPECT_EQ(Result(taker), 0);
    EXPECT_FALSE(slot);
}

TEST(DiscoveryUpdate, OfTheSecondDeviceUpdatesNothing)
{
    Load(TwoDevices());
    Watcher watcher;
    auto const update = Rename(watcher, secondAddress);
    QueueAll(watcher);
    OnDiscoveryUpdated(watcher.Sender(), update);
    EXPECT_EQ(Updates(firstAddress), 0u);
    EXPECT_EQ(Updates(secondAddress), 0u);
    enumeration::DeviceInformation slot{nullptr};
    EXPECT_EQ(TakeDevice(slot), 1);
    EXPECT_EQ(TakeDevice(slot), 1);
    EXPECT_EQ(slot.Name(), L"Second");
}

TEST(DiscoveryUpdate, OfTheFrontDeviceUpdatesItOnceForEachQueuedDevice)
{
    Load(TwoDevices() + Device("Third", "00:00:00:00:00:03"));
    Watcher watcher;
    auto const update = Rename(watcher, firstAddress);
    QueueAll(watcher);
    OnDiscoveryUpdated(watcher.Sender(), update);
    EXPECT_EQ(Updates(firstAddress), 3u);
    enumeration::DeviceInformation slot{nullptr};
    EXPECT_EQ(TakeDevice(slot), 1);
    EXPECT_EQ(slot.Name(), L"Renamed");
}

TEST(DiscoveryUpdate, OfAnIdentifierThatDiffersByCaseUpdatesNothing)
{
    Load(prompt + Device("First", firstAddress, "[device.classic]\nid = 'Bluetooth#A'") +
         Device("Second", secondAddress, "[device.classic]\nid = 'Bluetooth#a'"));
    Watcher watcher;
    OnDiscoveryAdded(watcher.Sender(), watcher.Devices().at(0));
    for (auto const* const id : {"Bluetooth#a", "Bluetooth#A"})
    {
        ASSERT_TRUE(SimulateDeviceChanges(id, "System.ItemNameDisplay", "\"Renamed\"")) << SimulatorLastError();
    }
    auto const updates = watcher.Updates();
    ASSERT_EQ(updates.size(), 2u);
    EXPECT_NO_THROW(OnDiscoveryUpdated(watcher.Sender(), updates[0])) << "a device refuses another's update";
    EXPECT_EQ(Library().deviceQueue.front().Name(), L"First");
    OnDiscoveryUpdated(watcher.Sender(), updates[1]);
    EXPECT_EQ(Library().deviceQueue.front().Name(), L"Renamed");
}

TEST(DiscoveryUpdate, ThatFailsIsRaisedOutOfTheHandlerWithTheLockReleased)
{
    Load(TwoDevices());
    Watcher watcher;
    auto const update = Rename(watcher, firstAddress);
    OnDiscoveryAdded(watcher.Sender(), watcher.Devices().at(0));
    for (auto const* const method :
         {"DeviceInformationUpdate.get_Id", "DeviceInformation.get_Id", "DeviceInformation.Update"})
    {
        ASSERT_TRUE(SimulateFailure(method, platformCode));
        EXPECT_THROW(OnDiscoveryUpdated(watcher.Sender(), update), winrt::hresult_error) << method;
        EXPECT_TRUE(IsFree(Library().completionMutex)) << method;
    }
}
