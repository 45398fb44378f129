// Errors behind an operation end the process through the platform's fail-fast, before any report or record.
#include "tests/library/FailFast.h"
#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/ProcessEnd.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <windows.h>

using namespace test;
using testing::Contains;
using testing::IsEmpty;

namespace
{
    constexpr char address[] = "a4:c1:38:5e:22:0f";

    // Begins a pairing whose records the test can read.
    void BeginPairing(std::filesystem::path const& directory, std::string const& pairing, char const* failing = nullptr)
    {
        std::filesystem::current_path(directory);
        Load(prompt + Device("Headset", address, "[device.pairing]\n" + pairing));
        auto const vorlink = MakeLoggingVorlink();
        if (failing)
        {
            SimulateFailure(failing, platformCode);
        }
        vorlink->PairedDevice("Headset", MustNotReport);
    }

    void ExpectNoRecordOfTheCeremony()
    {
        EXPECT_THAT(Log(), Contains(Record(1253, "SubVorlink::PairedDevice", "Call  Pair entry name ->Headset")));
        EXPECT_THAT(LogOf("SubVorlink::PairingDevice"), IsEmpty());
    }

    using FailFast = testing::TestWithParam<char const*>;
} // namespace

TEST_P(FailFast, EndsTheProcessWhenTheOperationIsAlreadyComplete)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(platformCode, [&] { BeginPairing(directory, "duration-ms = 0", GetParam()); });
    ExpectNoRecordOfTheCeremony();
}

TEST_P(FailFast, EndsTheProcessWhenTheOperationCompletesLater)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(platformCode, [&] { BeginPairing(directory, "duration-ms = 20", GetParam()); });
    ExpectNoRecordOfTheCeremony();
}

INSTANTIATE_TEST_SUITE_P(
    Ceremony, FailFast,
    testing::Values("DeviceInformationPairing.get_Custom", "DeviceInformationCustomPairing.add_PairingRequested",
                    "DeviceInformationCustomPairing.PairWithProtectionLevelAsync", "AsyncOperation.GetResults",
                    "DeviceInformationCustomPairing.remove_PairingRequested", "DevicePairingResult.get_Status"),
    MethodName);

TEST(FailFastOperation, ThatEndsInErrorEndsTheProcess)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(platformCode, [&] {
        BeginPairing(directory, "duration-ms = 'never'");
        WaitForCall("Accept(");
        SimulatePairingFails(ClassicId(address).c_str(), platformCode);
    });
    ExpectNoRecordOfTheCeremony();
}

TEST(FailFastOperation, ThatEndsForLackOfMemoryEndsTheProcess)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(E_OUTOFMEMORY, [&] {
        BeginPairing(directory, "duration-ms = 'never'");
        WaitForCall("Accept(");
        SimulatePairingFails(ClassicId(address).c_str(), E_OUTOFMEMORY);
    });
    ExpectNoRecordOfTheCeremony();
}

TEST(FailFastOperation, EndsTheProcessByThePlatformsOwnFailFast)
{
    auto const directory = DirectoryOfTheTest();
    EXPECT_EXIT(
        {
            BeginPairing(directory, "duration-ms = 0", "AsyncOperation.GetResults");
            OutliveTheError();
        },
        EndedByFailFast, "");
    ExpectNoRecordOfTheCeremony();
}

TEST(FailFastHandler, ErrorOfTheRequestHandlerIsReturnedToThePlatformAndEndsNothing)
{
    Load(prompt + Device("Headset", address, pairsAtOnce));
    ASSERT_TRUE(SimulateFailure("DevicePairingRequestedEventArgs.Accept", platformCode));
    MakeVorlink()->PairedDevice("Headset", Host::Callback);
    ASSERT_TRUE(Host::WaitFor(1));
    EXPECT_EQ(Host::At(0).paired, 0); // the platform took the request for rejected
    EXPECT_TRUE(WaitForCall("PairingRequested(", 1));
    EXPECT_TRUE(WaitForCall("ConfirmOnly) -> 0x80070490"));
    EXPECT_TRUE(WaitForCall("-> RejectedByHandler"));
}
