// A cancelled run queues, updates and wakes nothing more.
#include "pairing/DiscoveryQueue.h"
#include "tests/support/Endpoints.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Taker.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

using namespace test;
using namespace vorlink;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    void Cancel()
    {
        std::lock_guard const lock(Library().enumerationMutex);
        Library().enumerationCancelled = true;
    }
} // namespace

TEST(DiscoveryCancel, TakesNothingFromTheEmptyQueue)
{
    Cancel();
    enumeration::DeviceInformation slot{nullptr};
    EXPECT_EQ(TakeDevice(slot), 2);
}

TEST(DiscoveryCancel, IsToldToTheWaitingTakerWhenItWakes)
{
    enumeration::DeviceInformation slot{nullptr};
    auto taker = WaitingTaker(slot);
    Cancel();
    Library().completionSignal.notify_one(std::unique_lock(Library().completionMutex));
    EXPECT_EQ(Result(taker), 2);
}

TEST(DiscoveryCancel, IsToldToTheWokenTakerAlsoWhenADeviceIsQueued)
{
    enumeration::DeviceInformation slot{nullptr};
    auto taker = WaitingTaker(slot);
    {
        // Both are there before the taker can look.
        std::unique_lock lock(Library().completionMutex);
        Library().deviceQueue.push_back(nullptr);
        Cancel();
        Library().completionSignal.notify_one(std::move(lock));
    }
    EXPECT_EQ(Result(taker), 2);
    EXPECT_THAT(Library().deviceQueue, SizeIs(1));
}

TEST(DiscoveryCancel, LeavesADeviceThatIsQueuedBeforeTheTakerComes)
{
    Load(TwoDevices());
    Watcher watcher;
    auto const device = watcher.Devices().at(0);
    OnDiscoveryAdded(watcher.Sender(), device);
    Cancel();
    enumeration::DeviceInformation slot{nullptr};
    EXPECT_EQ(TakeDevice(slot), 1);
    EXPECT_EQ(slot, device);
    EXPECT_EQ(TakeDevice(slot), 2);
}

TEST(DiscoveryCancel, AddedNeitherQueuesNorWakes)
{
    Load(TwoDevices());
    Watcher watcher;
    auto const device = watcher.Devices().at(0);
    enumeration::DeviceInformation slot{nullptr};
    auto taker = WaitingTaker(slot);
    Cancel();
    OnDiscoveryAdded(watcher.Sender(), device);
    EXPECT_FALSE(IsReady(taker, moment));
    FinishDiscovery();
    EXPECT_EQ(Result(taker), 2);
    EXPECT_THAT(Library().deviceQueue, IsEmpty());
}

TEST(DiscoveryCancel, UpdatedLeavesTheQueuedDevice)
{
    Load(TwoDevices());
    Watcher watcher;
    auto const update = Rename(watcher, firstAddress);
    OnDiscoveryAdded(watcher.Sender(), watcher.Devices().at(0));
    Cancel();
    OnDiscoveryUpdated(watcher.Sender(), update);
    EXPECT_THAT(Trace({"DeviceInformation.Update("}), IsEmpty());
}

TEST(DiscoveryCancel, UpdatedDoesNotWake)
{
    enumeration::DeviceInformation slot{nullptr};
    auto taker = WaitingTaker(slot);
    Cancel();
    OnDiscoveryUpdated(nullptr, nullptr);
    EXPECT_FALSE(IsReady(taker, moment));
    FinishDiscovery();
    EXPECT_EQ(Result(taker), 2);
}
