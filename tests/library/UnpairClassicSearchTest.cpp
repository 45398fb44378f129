// Which device an unpairing finds, and when the host has its thread back.
#include "tests/library/UnpairHost.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <chrono>
#include <thread>

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::ElementsAreArray;
using testing::IsEmpty;

namespace
{
    constexpr char pending[] = "[device.classic.unpairing]\nduration-ms = 'never'\n";

    std::chrono::milliseconds DurationOf(Vorlink& vorlink, std::string const& name)
    {
        auto const start = std::chrono::steady_clock::now();
        vorlink.UnpairedCurrent(name, UnpairHost::Callback);
        return std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start);
    }
} // namespace

TEST(UnpairClassic, FindsADeviceThatCanNeitherPairNorIsPaired)
{
    Load(prompt + Device("Tag", tagAddress, "can-pair = false"));
    auto const vorlink = MakeVorlink();
    EXPECT_LT(DurationOf(*vorlink, "Tag"), std::chrono::milliseconds(2900));
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_FALSE(UnpairHost::At(0).success); // already unpaired
}

TEST(UnpairClassic, LongNameMayBePartOfTheDevices)
{
    Load(prompt +
         Device("Kitchen Speaker 2 (left)", tagAddress, "is-paired = true\n[device.unpairing]\nduration-ms = 0"));
    MakeVorlink()->UnpairedCurrent("Kitchen Speaker 2", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_TRUE(UnpairHost::At(0).success);
}

TEST(UnpairClassic, FindsADeviceThatAppearsDuringTheSearch)
{
    Load(PairedTag("'classic'", "[device.classic]\nappears-ms = 'never'\n", patient));
    auto const vorlink = MakeVorlink();
    std::thread caller([&] { vorlink->UnpairedCurrent("Tag", UnpairHost::Callback); });
    EXPECT_TRUE(WaitForCall("DeviceWatcher.Start(#1)"));
    EXPECT_TRUE(SimulateDeviceAppears(ClassicId(tagAddress).c_str())) << SimulatorLastError();
    EXPECT_TRUE(UnpairHost::WaitFor(1));
    caller.join();
    EXPECT_TRUE(UnpairHost::At(0).success);
}

TEST(UnpairClassic, PendingUnpairingGivesTheHostItsThreadBack)
{
    Load(PairedTag("'classic'", pending));
    auto const vorlink = MakeLoggingVorlink();
    EXPECT_LT(DurationOf(*vorlink, "Tag"), std::chrono::milliseconds(2900));
    EXPECT_TRUE(UnpairHost::StaysAt(0)) << "the platform has not answered";
    EXPECT_THAT(LogOf(classicUnpairing), ElementsAreArray(ClassicRecords(false)));
    ASSERT_TRUE(SimulateUnpairingCompletes(ClassicId(tagAddress).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    EXPECT_NE(UnpairHost::At(0).thread, GetCurrentThreadId());
}

TEST(UnpairClassic, KeepsItsDeviceWhenAnotherLookupTakesTheSlot)
{
    Load(PairedTag("'classic'", pending) + Device("Other", "00:00:00:00:00:01", "is-paired = true"));
    auto const vorlink = MakeLoggingVorlink();
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    vorlink->UnpairedCurrent("Other", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(1));
    ASSERT_TRUE(SimulateUnpairingCompletes(ClassicId(tagAddress).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(UnpairHost::WaitFor(2));
    EXPECT_THAT(LogOf(classicUnpairing),
                Contains(Record(1174, classicUnpairing,
                                "unpaired Classic Blueth,start unpaired ble device " + std::string(tagAddress))));
}

TEST(UnpairClassic, UnknownNameIsMetWithSilence)
{
    Load(PairedTag("'classic'"));
    auto const vorlink = MakeLoggingVorlink();
    EXPECT_LT(DurationOf(*vorlink, "Nobody"), std::chrono::milliseconds(2900)) << "the enumeration is complete";
    EXPECT_TRUE(UnpairHost::StaysAt(0));
    EXPECT_THAT(Log(), ElementsAre(Record(1145, classicUnpairing, "Entery unpaired  name-> Nobody"),
                                   Record(399, "SubVorlink::GetDeviceforName", "Nobody"),
                                   Record(416, "SubVorlink::GetDeviceforName", "Tag")));
    EXPECT_THAT(Trace({"DeviceInformationPairing."}), IsEmpty());
}

TEST(UnpairClassic, NameOfAnLeEndpointAloneIsUnknown)
{
    Load(PairedTag("'le'"));
    auto const vorlink = MakeVorlink();
    KnowLe(*vorlink, "Tag=" + std::string(tagAddress) + "\n");
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    EXPECT_TRUE(UnpairHost::StaysAt(0));
    EXPECT_THAT(Trace({"DeviceInformationPairing."}), IsEmpty());
}

TEST(SlowUnpairClassic, UnknownNameGivesTheHostItsThreadBackAfterThreeSecondsAtTheLatest)
{
    Load(PairedTag("'classic'", "", patient));
    auto const vorlink = MakeVorlink();
    auto const duration = DurationOf(*vorlink, "Nobody");
    EXPECT_GE(duration, std::chrono::milliseconds(2990));
    EXPECT_LT(duration, std::chrono::milliseconds(4500));
    EXPECT_TRUE(UnpairHost::StaysAt(0));
}
