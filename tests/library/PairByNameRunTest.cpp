// The discovery run behind a pairing by name: how long the host waits for it, what it leaves behind.
#include "tests/support/Host.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <thread>

using namespace test;
using testing::IsEmpty;

namespace
{
    constexpr char address[] = "a4:c1:38:5e:22:0f";
}

TEST(PairByNameRun, BlocksUntilTheEnumerationCompletes)
{
    Load(patient);
    auto const vorlink = MakeVorlink();
    std::thread caller([&] { vorlink->PairedDevice("Nobody", Host::Callback); });
    ASSERT_TRUE(WaitForCall("DeviceWatcher.Start(#1)"));
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(Host::Count(), 0u);
    SimulateEnumerationCompletes();
    ASSERT_TRUE(Host::WaitFor(1));
    caller.join();
}

TEST(PairByNameRun, FindsADeviceThatAppearsWhileItWaits)
{
    Load(patient + Device("Headset", address, "appears-ms = 'never'\n[device.pairing]\nduration-ms = 0"));
    auto const vorlink = MakeVorlink();
    std::thread caller([&] { vorlink->PairedDevice("Headset", Host::Callback); });
    ASSERT_TRUE(WaitForCall("DeviceWatcher.Start(#1)"));
    ASSERT_TRUE(SimulateDeviceAppears(ClassicId(address).c_str())) << SimulatorLastError();
    ASSERT_TRUE(Host::WaitFor(1));
    caller.join();
    EXPECT_EQ(Host::At(0).paired, 1);
}

TEST(PairByNameRun, DevicesOfAnEarlierRunAreTakenFirst)
{
    // The first lookup takes one of two devices of the name; the second finds the one left over.
    Load(prompt + Device("Headset", address, pairsAtOnce) + Device("Headset", "a4:c1:38:5e:22:10", pairsAtOnce));
    auto const vorlink = MakeVorlink();
    vorlink->PairedDevice("Headset", Host::Callback);
    ASSERT_TRUE(WaitIdle());
    ASSERT_TRUE(SimulateDeviceLeaves(ClassicId("a4:c1:38:5e:22:10").c_str())) << SimulatorLastError();
    vorlink->PairedDevice("Headset", Host::Callback);
    ASSERT_TRUE(Host::WaitFor(2));
    EXPECT_EQ(Host::At(0).address, 0xa4c1385e220fu);
    EXPECT_EQ(Host::At(1).address, 0xa4c1385e2210u);
}

TEST(PairByNameRun, DoesNotStopItsWatcher)
{
    Load(prompt + Device("Headset", address, pairsAtOnce));
    auto const vorlink = MakeVorlink();
    vorlink->PairedDevice("Headset", Host::Callback);
    vorlink->PairedDevice("Headset", Host::Callback);
    EXPECT_THAT(Trace({"DeviceWatcher.Stop"}), IsEmpty());
}
