// What the platform's updates of a device do to a lookup by name, told by the log.
#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <thread>

using namespace test;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{

    void Rename(char const* address, std::string const& name)
    {
        ASSERT_TRUE(
            SimulateDeviceChanges(ClassicId(address).c_str(), "System.ItemNameDisplay", ("\"" + name + "\"").c_str()))
            << SimulatorLastError();
        ASSERT_TRUE(WaitIdle());
    }

    // "First" and "Second" in the queue of an ended run, whose watcher goes on, and nobody to take them.
    std::unique_ptr<Vorlink> QueueTwo()
    {
        std::string const later = "appears-ms = 'never'\n[device.pairing]\nduration-ms = 0";
        Load(prompt + generous + Device("First", firstAddress, later) + Device("Second", secondAddress, later));
        auto vorlink = MakeVorlink();
        vorlink->PairedDevice("Nobody", OtherHost::Callback);
        for (auto const* const address : {firstAddress, secondAddress})
        {
            EXPECT_TRUE(SimulateDeviceAppears(ClassicId(address).c_str())) << SimulatorLastError();
        }
        EXPECT_TRUE(WaitIdle());
        return vorlink;
    }

    // Looks for a name among those in the queue alone: the devices have left, so that the new run reports none.
    void LookInTheQueue(Vorlink& vorlink, std::string const& name)
    {
        for (auto const* const address : {firstAddress, secondAddress})
        {
            ASSERT_TRUE(SimulateDeviceLeaves(ClassicId(address).c_str())) << SimulatorLastError();
        }
        ASSERT_TRUE(WaitIdle());
        vorlink.SetLogEnabled(true);
        vorlink.PairedDevice(name, Host::Callback);
        ASSERT_EQ(Host::Count(), 1u);
    }

    // The names that the lookup under way has tested.
    std::vector<std::string> Tested()
    {
        auto records = LogOf(lookup);
        std::erase_if(records,
                      [](std::string const& record) { return record.find("[Line:416]") == std::string::npos; });
        return records;
    }

    // Whether the lookup comes to test that many. An update that comes before the lookup waits does not wake it, so
    // there are more of them, each by another name.
    bool RenameUntilTested(std::size_t count)
    {
        auto const end = std::chrono::steady_clock::now() + patience;
        for (int number = 0; Tested().size() < count; ++number)
        {
            if (std::chrono::steady_clock::now() > end)
            {
                return false;
            }
            Rename(firstAddress, "Renamed " + std::to_string(number));
        }
        return true;
    }
} // namespace

TEST(LookupUpdate, OfTheFrontDeviceChangesTheNameThatItIsFoundBy)
{
    auto const vorlink = QueueTwo();
    Rename(firstAddress, "Renamed");
    auto const update = "DeviceInformation.Update(" + ClassicId(firstAddress) + ")";
    EXPECT_THAT(Trace({"DeviceInformation.Update("}), ElementsAre(update, update)) << "once for each queued device";
    LookInTheQueue(*vorlink, "Renamed");
    EXPECT_THAT(Tested(), ElementsAre(Record(416, lookup, "Renamed")));
    EXPECT_EQ(Host::At(0).address, 1u);
    EXPECT_EQ(Host::At(0).paired, 0) << "it is found in the queue, and has left";
}

TEST(LookupUpdate, OfTheSecondDeviceChangesNothing)
{
    auto const vorlink = QueueTwo();
    Rename(secondAddress, "Renamed");
    ASSERT_THAT(Trace({"! DeviceWatcher.Updated(#1, " + ClassicId(secondAddress)}), SizeIs(1));
    EXPECT_THAT(Trace({"DeviceInformation.Update("}), IsEmpty());
    LookInTheQueue(*vorlink, "Renamed");
    EXPECT_THAT(Tested(), ElementsAre(Record(416, lookup, "First"), Record(416, lookup, "Second")));
    EXPECT_EQ(Host::At(0).address, 0u);
}

TEST(LookupUpdate, WithNothingQueuedWakesTheLookupWhichTestsTheDeviceThatItHoldsAgain)
{
    Load(patient + Device("First", firstAddress));
    auto const vorlink = MakeLoggingVorlink();
    std::thread caller([&] { vorlink->PairedDevice("Nobody", Host::Callback); });
    EXPECT_TRUE(WaitForCall("DeviceInformation.get_Name("));
    EXPECT_TRUE(RenameUntilTested(2));
    EXPECT_EQ(Host::Count(), 0u) << "the run goes on";
    SimulateEnumerationCompletes();
    EXPECT_TRUE(Host::WaitFor(1));
    caller.join();
    EXPECT_THAT(Tested(), Each(Record(416, lookup, "First"))) << "the held device itself is not updated";
    EXPECT_THAT(Trace({"DeviceInformation.Update("}), IsEmpty());
}
