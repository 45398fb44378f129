// What a taker gets from the queue.
#include "pairing/DiscoveryQueue.h"
#include "tests/support/Endpoints.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Taker.h"

#include <gmock/gmock.h>

using namespace test;
using namespace vorlink;
using testing::SizeIs;

TEST(DiscoveryQueue, EmptyAndFinishedIsToldWithoutWaiting)
{
    FinishDiscovery();
    enumeration::DeviceInformation slot{nullptr};
    EXPECT_EQ(TakeDevice(slot), 2);
    EXPECT_FALSE(slot);
}

TEST(DiscoveryQueue, DevicesAreTakenInOrderOfArrivalAndThenTheTakerWaits)
{
    Load(TwoDevices());
    Watcher watcher;
    auto const devices = watcher.Devices();
    ASSERT_THAT(devices, SizeIs(2));
    OnDiscoveryAdded(watcher.Sender(), devices[0]);
    OnDiscoveryAdded(watcher.Sender(), devices[1]);
    enumeration::DeviceInformation slot{nullptr};
    EXPECT_EQ(TakeDevice(slot), 1);
    EXPECT_EQ(slot, devices[0]);
    EXPECT_EQ(TakeDevice(slot), 1);
    EXPECT_EQ(slot, devices[1]);
    auto taker = WaitingTaker(slot);
    EXPECT_FALSE(IsReady(taker));
    FinishDiscovery();
    EXPECT_EQ(Result(taker), 2);
    EXPECT_EQ(slot, devices[1]) << "the slot keeps the latest device";
}

TEST(DiscoveryQueue, AddedWakesTheWaitingTaker)
{
    Load(TwoDevices());
    Watcher watcher;
    auto const device = watcher.Devices().at(0);
    enumeration::DeviceInformation slot{nullptr};
    auto taker = WaitingTaker(slot);
    OnDiscoveryAdded(watcher.Sender(), device);
    EXPECT_EQ(Result(taker), 1);
    EXPECT_EQ(slot, device);
}

TEST(DiscoveryQueue, QueuedDeviceIsTakenEvenWhenTheRunHasFinished)
{
    Load(TwoDevices());
    Watcher watcher;
    OnDiscoveryAdded(watcher.Sender(), watcher.Devices().at(0));
    FinishDiscovery();
    enumeration::DeviceInformation slot{nullptr};
    EXPECT_EQ(TakeDevice(slot), 1);
    EXPECT_EQ(TakeDevice(slot), 2);
}

TEST(DiscoveryQueue, TakingReleasesWhatTheSlotHeld)
{
    Load(TwoDevices());
    enumeration::DeviceInformation slot{nullptr};
    {
        Watcher watcher;
        for (auto const& device : watcher.Devices())
        {
            OnDiscoveryAdded(watcher.Sender(), device);
        }
    }
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(TakeDevice(slot), 1);
    auto const held = SimulatorLiveObjects();
    EXPECT_EQ(TakeDevice(slot), 1);
    EXPECT_LT(SimulatorLiveObjects(), held);
}
