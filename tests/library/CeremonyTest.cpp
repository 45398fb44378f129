// The ceremony's way through the platform, from outside.
#include "tests/support/Host.h"
#include "tests/support/LiveObjects.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <windows.h>

using namespace test;
using testing::ElementsAre;

namespace
{
    constexpr char address[] = "a4:c1:38:5e:22:0f";
}

TEST(Ceremony, CompleteOperationRunsWholeInsideTheCall)
{
    Load(prompt + Device("Headset", address, pairsAtOnce));
    MakeVorlink()->PairedDevice("Headset", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::ThreadOf(0), GetCurrentThreadId());
}

TEST(Ceremony, ConfirmOnlyRequestIsAcceptedOnAPlatformThread)
{
    Load(prompt + Device("Headset", address, pairsAtOnce));
    MakeVorlink()->PairedDevice("Headset", Host::Callback);
    for (auto const& line : TraceLines())
    {
        if (line.text.starts_with("DevicePairingRequestedEventArgs."))
        {
            EXPECT_NE(line.thread, GetCurrentThreadId());
        }
    }
    EXPECT_THAT(
        Trace({"DevicePairingRequestedEventArgs."}),
        ElementsAre("DevicePairingRequestedEventArgs.get_PairingKind(" + ClassicId(address) + ") -> ConfirmOnly",
                    "DevicePairingRequestedEventArgs.Accept(" + ClassicId(address) + ")"));
}

TEST(Ceremony, RegistrationIsRemovedBeforeTheStatusIsRead)
{
    Load(prompt + Device("Headset", address));
    MakeVorlink()->PairedDevice("Headset", Host::Callback);
    ASSERT_TRUE(Host::WaitFor(1));
    auto const calls = Trace(
        {"AsyncOperation.GetResults", "DeviceInformationCustomPairing.remove_", "DevicePairingResult.get_Status"});
    ASSERT_EQ(calls.size(), 3u);
    EXPECT_TRUE(calls[0].starts_with("AsyncOperation.GetResults"));
    EXPECT_TRUE(calls[1].starts_with("DeviceInformationCustomPairing.remove_PairingRequested"));
    EXPECT_TRUE(calls[2].starts_with("DevicePairingResult.get_Status"));
}

TEST(Ceremony, IdentifierWithoutDashHasNoAddressAndTheCeremonyGoesOn)
{
    Load(prompt +
         Device("Headset", address,
                "[device.pairing]\nduration-ms = 0\nstatus = 'Failed'\n[device.classic]\nid = 'Bluetooth#odd'"));
    MakeVorlink()->PairedDevice("Headset", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).address, 0u);
    EXPECT_EQ(Text(Host::At(0).addressText), "");
    EXPECT_EQ(Text(Host::At(0).name), "Headset");
}

TEST(Ceremony, AddressIsReadFromTheIdentifiersUtf8)
{
    Load(prompt + Device("Headset", address,
                         "[device.pairing]\nduration-ms = 0\nstatus = 'Failed'\n"
                         "[device.classic]\nid = 'Bluetooth#Bluetooth-a4:c1:\xc3\xbc:5e'"));
    MakeVorlink()->PairedDevice("Headset", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Text(Host::At(0).addressText), "a4c1\xc3\xbc"
                                             "5e");
    EXPECT_EQ(Host::At(0).address, 0xa4c1u);
}

TEST(Ceremony, LeavesNoneOfThePlatformsObjectsBehind)
{
    Load(prompt + Device("Headset", address));
    auto const vorlink = MakeVorlink();
    vorlink->PairedDevice("Headset", Host::Callback);
    ASSERT_TRUE(Host::WaitFor(1));
    ASSERT_TRUE(WaitIdle());
    auto const first = SimulatorLiveObjects();
    vorlink->PairedDevice("Headset", Host::Callback);
    ASSERT_TRUE(Host::WaitFor(2));
    ASSERT_TRUE(WaitIdle());
    EXPECT_TRUE(LiveObjectsFallTo(first)) << "each ceremony lets go of all that it took";
}
