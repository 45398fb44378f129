// An error inside a handler of the phone watcher ends the process through the platform's fail-fast.
#include "tests/library/FailFast.h"
#include "tests/library/PhoneHost.h"
#include "tests/support/ProcessEnd.h"

#include <windows.h>

using namespace test;
using testing::ElementsAre;

namespace
{
    // "DeviceInformation_get_Id"
    std::string Method(testing::TestParamInfo<char const*> const& test)
    {
        std::string method = test.param;
        return method.replace(method.rfind('.'), 1, "_");
    }

    using AtAdded = testing::TestWithParam<char const*>;
    using AtUpdated = testing::TestWithParam<char const*>;
    using AtRemoved = testing::TestWithParam<char const*>;
} // namespace

TEST_P(AtAdded, EndsTheProcessUnreported)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(platformCode, [&] {
        std::filesystem::current_path(directory);
        Load(patient + Device("Ana", addressA));
        SimulateFailure(GetParam(), platformCode);
        MakeLoggingVorlink()->StartIosWatcher(MustNotReport);
    });
    EXPECT_FALSE(LogExists());
}

INSTANTIATE_TEST_SUITE_P(Phone, AtAdded,
                         testing::Values("DeviceInformation.get_Name", "DeviceInformation.get_Pairing",
                                         "DeviceInformationPairing.get_IsPaired",
                                         "DeviceInformationPairing.get_CanPair"),
                         Method);

TEST_P(AtUpdated, EndsTheProcess)
{
    ExpectFailFast(platformCode, [&] {
        auto const vorlink = Watching(Device("Ana", addressA));
        SimulateFailure(GetParam(), platformCode);
        SimulateDeviceChanges(idA.c_str(), "System.ItemNameDisplay", "\"New\"");
    });
}

INSTANTIATE_TEST_SUITE_P(Phone, AtUpdated,
                         testing::Values("DeviceInformation.get_Id", "DeviceInformationUpdate.get_Id",
                                         "DeviceInformation.Update"),
                         Method);

TEST_P(AtRemoved, EndsTheProcess)
{
    ExpectFailFast(platformCode, [&] {
        auto const vorlink = Watching(Device("Ana", addressA));
        SimulateFailure(GetParam(), platformCode);
        SimulateDeviceLeaves(idA.c_str());
    });
}

INSTANTIATE_TEST_SUITE_P(Phone, AtRemoved,
                         testing::Values("DeviceInformation.get_Id", "DeviceInformationUpdate.get_Id"), Method);

TEST(PhoneFailFast, AtTheEndOfTheEnumeration)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(platformCode, [&] {
        std::filesystem::current_path(directory);
        auto const vorlink = Watching(Device("Ana", addressA));
        SimulateFailure("DeviceWatcher.Stop", platformCode);
        SimulateEnumerationCompletes();
    });
    EXPECT_THAT(Log(), ElementsAre(AddedRecord("Ana")));
}

TEST(PhoneFailFast, ForLackOfMemory)
{
    ExpectFailFast(E_OUTOFMEMORY, [] {
        auto const vorlink = Watching("");
        SimulateFailure("DeviceWatcher.Stop", E_OUTOFMEMORY);
        SimulateEnumerationCompletes();
    });
}

TEST(PhoneFailFast, NullCallbackEndsTheProcessAtTheFirstReportAlone)
{
    auto const isCrash = [](int code) { return code != 0 && code != 5 && code != 6; };
    EXPECT_EXIT(
        {
            Load(patient + Device("Ana", addressA, "is-paired = true") +
                 Device("Ben", addressB, "appears-ms = 'never'"));
            MakeVorlink()->StartIosWatcher(nullptr);
            WaitIdle() || TerminateProcess(GetCurrentProcess(), 5);
            SimulateDeviceAppears(idB.c_str());
            OutliveTheError();
        },
        isCrash, "");
}
