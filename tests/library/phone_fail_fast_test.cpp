// An error inside a handler of the phone watcher ends the process through the platform's fail-fast.
#include "tests/library/phone_host.h"
#include "tests/support/process_end.h"

using namespace test;
using testing::ElementsAre;

namespace
{
    // A process that has not ended by then ends with a code of its own.
    void OutliveTheError()
    {
        Sleep(10'000);
        TerminateProcess(GetCurrentProcess(), 6);
    }

    // "DeviceInformation_get_Id"
    std::string Method(testing::TestParamInfo<char const*> const& test)
    {
        std::string method = test.param;
        return method.replace(method.rfind('.'), 1, "_");
    }

    class AtAdded : public testing::TestWithParam<char const*>
    {
    };

    class AtUpdated : public testing::TestWithParam<char const*>
    {
    };

    class AtRemoved : public testing::TestWithParam<char const*>
    {
    };
} // namespace

TEST_P(AtAdded, EndsTheProcessUnreported)
{
    auto const directory = DirectoryOfTheTest();
    EXPECT_EXIT(
        {
            std::filesystem::current_path(directory);
            Load(patient + Device("Ana", addressA));
            SimulateFailure(GetParam(), platformCode);
            LoggingVorlink()->StartIosWatcher(
                [](wchar_t const*, std::uint32_t) { TerminateProcess(GetCurrentProcess(), 5); });
            OutliveTheError();
        },
        EndedByFailFast, "");
    EXPECT_FALSE(LogExists());
}

INSTANTIATE_TEST_SUITE_P(Phone, AtAdded,
                         testing::Values("DeviceInformation.get_Name", "DeviceInformation.get_Pairing",
                                         "DeviceInformationPairing.get_IsPaired",
                                         "DeviceInformationPairing.get_CanPair"),
                         Method);

TEST_P(AtUpdated, EndsTheProcess)
{
    EXPECT_EXIT(
        {
            auto const vorlink = Watching(Device("Ana", addressA));
            SimulateFailure(GetParam(), platformCode);
            SimulateDeviceChanges(idA.c_str(), "System.ItemNameDisplay", "\"New\"");
            OutliveTheError();
        },
        EndedByFailFast, "");
}

INSTANTIATE_TEST_SUITE_P(Phone, AtUpdated,
                         testing::Values("DeviceInformation.get_Id", "DeviceInformationUpdate.get_Id",
                                         "DeviceInformation.Update"),
                         Method);

TEST_P(AtRemoved, EndsTheProcess)
{
    EXPECT_EXIT(
        {
            auto const vorlink = Watching(Device("Ana", addressA));
            SimulateFailure(GetParam(), platformCode);
            SimulateDeviceLeaves(idA.c_str());
            OutliveTheError();
        },
        EndedByFailFast, "");
}

INSTANTIATE_TEST_SUITE_P(Phone, AtRemoved,
                         testing::Values("DeviceInformation.get_Id", "DeviceInformationUpdate.get_Id"), Method);

TEST(PhoneFailFast, AtTheEndOfTheEnumeration)
{
    auto const directory = DirectoryOfTheTest();
    EXPECT_EXIT(
        {
            std::filesystem::current_path(directory);
            auto const vorlink = Watching(Device("Ana", addressA));
            SimulateFailure("DeviceWatcher.Stop", platformCode);
            SimulateEnumerationCompletes();
            OutliveTheError();
        },
        EndedByFailFast, "");
    EXPECT_THAT(Log(), ElementsAre(AddedRecord("Ana")));
}

TEST(PhoneFailFast, NullCallbackEndsTheProcessAtTheFirstReportAlone)
{
    auto const isCrash = [](int code) { return code != 0 && code != 5 && code != 6; };
    EXPECT_EXIT(
        {
            Load(patient + Device("Ana", addressA, "is-paired = true") +
                 Device("Ben", addressB, "appears-ms = 'never'"));
            MakeVorlink()->StartIosWatcher(nullptr);
            SimulatorWaitIdle(20'000) || TerminateProcess(GetCurrentProcess(), 5);
            SimulateDeviceAppears(idB.c_str());
            OutliveTheError();
        },
        isCrash, "");
}
