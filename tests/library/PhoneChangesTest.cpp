// What the phone watcher makes of updates and departures.
#include "tests/library/PhoneHost.h"

#include <gmock/gmock.h>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    void Rename(std::string const& id, char const* name)
    {
        ASSERT_TRUE(SimulateDeviceChanges(id.c_str(), "System.ItemNameDisplay", name)) << SimulatorLastError();
        ASSERT_TRUE(WaitIdle());
    }

    void Leave(std::string const& id)
    {
        ASSERT_TRUE(SimulateDeviceLeaves(id.c_str())) << SimulatorLastError();
        ASSERT_TRUE(WaitIdle());
    }
} // namespace

TEST(PhoneUpdated, BringsTheKeptEndpointUpToDateUnreported)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("", addressB) + Device("Cat", addressC));
    Rename(idB, "\"Late\"");
    EXPECT_THAT(Phones::Names(), ElementsAre(L"Ana", L"Cat"));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ana", "Late", "Cat"));
}

TEST(PhoneUpdated, ChangesTheFirstOfTwoAndLooksNoFurther)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB));
    Repeat(idA);
    SimulatorClearTrace();
    Rename(idA, "\"New\"");
    EXPECT_THAT(Trace({"DeviceInformation.get_Id", "DeviceInformation.Update"}), SizeIs(2));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("New", "Ben", "Ana"));
}

TEST(PhoneUpdated, UnknownChangesNothing)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB));
    vorlink->Uninitialize();
    Repeat(idB);
    Rename(idA, "\"New\"");
    EXPECT_THAT(Trace({"! DeviceWatcher.Updated"}), SizeIs(1));
    EXPECT_THAT(Trace({"DeviceInformation.Update"}), IsEmpty());
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ben"));
}

TEST(PhoneRemoved, IsForgotten)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB) + Device("Cat", addressC));
    Leave(idB);
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ana", "Cat"));
}

TEST(PhoneRemoved, OfTwoTheFirstIsForgotten)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB));
    Repeat(idA);
    Rename(idA, "\"First\"");
    ASSERT_THAT(Kept(*vorlink), ElementsAre("First", "Ben", "Ana"));
    Leave(idA);
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ben", "Ana"));
}

TEST(PhoneRemoved, UnknownChangesNothing)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB));
    vorlink->Uninitialize();
    Repeat(idB);
    Leave(idA);
    EXPECT_THAT(Trace({"! DeviceWatcher.Removed"}), SizeIs(1));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ben"));
}

TEST(PhoneRemoved, InFlightWhenTheWatcherStopsIsForgotten)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB));
    SimulatorHoldEvents();
    ASSERT_TRUE(SimulateDeviceLeaves(idA.c_str()));
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Removed(#1, " + idA + ")"));
    EXPECT_FALSE(vorlink->StartIosWatcher(Phones::Callback));
    SimulatorReleaseEvents();
    ASSERT_TRUE(WaitIdle());
    EXPECT_THAT(LogOf("StopIosWatcher"), ElementsAre(StopRecord(2)));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ben"));
}
