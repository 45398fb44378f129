// Errors of the platform on the host's thread: they reach the host by their type, and nothing is left locked.
#include "tests/support/CodeOf.h"
#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <thread>

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;

namespace
{
    constexpr char address[] = "a4:c1:38:5e:22:0f";

    std::int32_t CodeOfPairing(Vorlink& vorlink, std::string const& name)
    {
        return CodeOf([&] { vorlink.PairedDevice(name, Host::Callback); });
    }

    using PlatformError = testing::TestWithParam<char const*>;
} // namespace

TEST_P(PlatformError, ReachesTheHostWithItsCodeAndWithoutAReport)
{
    Load(prompt + Device("Headset", address, pairsAtOnce));
    ASSERT_TRUE(SimulateFailure(GetParam(), platformCode)) << SimulatorLastError();
    auto const vorlink = MakeVorlink();
    EXPECT_EQ(CodeOfPairing(*vorlink, "Headset"), platformCode);
    EXPECT_EQ(Host::Count(), 0u);
}

TEST_P(PlatformError, LeavesNothingLocked)
{
    Load(prompt + Device("Headset", address, pairsAtOnce));
    ASSERT_TRUE(SimulateFailure(GetParam(), platformCode)) << SimulatorLastError();
    auto const vorlink = MakeVorlink();
    EXPECT_EQ(CodeOfPairing(*vorlink, "Headset"), platformCode);
    // On another thread: a lock that the failed call kept would hang it.
    std::thread([&] { EXPECT_EQ(CodeOfPairing(*vorlink, "Headset"), 0); }).join();
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 1);
}

INSTANTIATE_TEST_SUITE_P(Discovery, PlatformError,
                         testing::Values(createWatcher, "DeviceWatcher.add_Added", "DeviceWatcher.add_Updated",
                                         "DeviceWatcher.add_EnumerationCompleted", "DeviceWatcher.Start"),
                         MethodName);

// The lookup's own calls: the failed device is gone from the queue, and a second run reports it again.
INSTANTIATE_TEST_SUITE_P(Lookup, PlatformError,
                         testing::Values("DeviceInformation.get_Name", "DeviceInformation.get_Pairing",
                                         "DeviceInformationPairing.get_IsPaired",
                                         "DeviceInformationPairing.get_CanPair", "DeviceInformation.get_Id"),
                         MethodName);

TEST(Errors, CallbackIsStoredBeforeAnythingFails)
{
    Load(prompt + Device("Headset", address, pairsOnDemand));
    auto const vorlink = MakeVorlink();
    vorlink->PairedDevice("Headset", OtherHost::Callback);
    ASSERT_TRUE(WaitForCall("Accept("));
    ASSERT_TRUE(SimulateFailure(createWatcher, platformCode));
    EXPECT_EQ(CodeOfPairing(*vorlink, "Headset"), platformCode);
    ASSERT_TRUE(SimulatePairingCompletes(ClassicId(address).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(Host::WaitFor(1));
    EXPECT_EQ(OtherHost::Count(), 0u);
}

TEST(Errors, WatcherStoredBeforeTheFailureStaysStored)
{
    Load(prompt);
    auto const vorlink = MakeVorlink();
    auto const before = SimulatorLiveObjects();
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Start", platformCode));
    EXPECT_EQ(CodeOfPairing(*vorlink, "Headset"), platformCode);
    EXPECT_GT(SimulatorLiveObjects(), before);
}

TEST(Errors, EntryIsRecordedBeforeTheFailureAndNothingAfterIt)
{
    Load(prompt);
    auto const vorlink = MakeLoggingVorlink();
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Start", platformCode));
    EXPECT_EQ(CodeOfPairing(*vorlink, "Headset"), platformCode);
    EXPECT_THAT(Log(), ElementsAre(Record(1253, "SubVorlink::PairedDevice", "Call  Pair entry name ->Headset")));
}

TEST(Errors, FailingUpdateIsReturnedToThePlatform)
{
    Load(prompt + generous + Device("Headset", address));
    auto const vorlink = MakeVorlink();
    vorlink->PairedDevice("Nobody", Host::Callback);
    ASSERT_TRUE(WaitIdle());
    // Nobody takes any more: what appears now stays at the front of the queue.
    auto const id = ClassicId(address);
    ASSERT_TRUE(SimulateDeviceLeaves(id.c_str())) << SimulatorLastError();
    ASSERT_TRUE(SimulateDeviceAppears(id.c_str())) << SimulatorLastError();
    ASSERT_TRUE(SimulateFailure("DeviceInformationUpdate.get_Id", platformCode)) << SimulatorLastError();
    ASSERT_TRUE(SimulateDeviceChanges(id.c_str(), "System.ItemNameDisplay", "\"Other\"")) << SimulatorLastError();
    ASSERT_TRUE(WaitIdle());
    EXPECT_THAT(Trace({"! DeviceWatcher.Updated"}), Contains(EndsWith(" -> 0x80070490")));
}
