// The plug-and-play stand-in, run as the program that it is.
#include "tests/host/ChildProcess.h"
#include "tests/host/Neighbourhood.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <algorithm>

using namespace test;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{
    ChildResult EnumDevices()
    {
        return RunChild(BinFolder() / "pnputil.exe", {"/enum-devices"});
    }
} // namespace

TEST(Pnputil, PrintsTheListingOfTheScenariosFile)
{
    UseScenario("[listing]\nunrelated-devices = 0\n[[device]]\naddress = 'c1:d2:e3:f4:a5:b6'\nprotocols = ['le']\n"
                "is-paired = true\ndescription = 'Tag'\n");
    auto const result = EnumDevices();
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output,
                StartsWith("Microsoft PnP Utility\r\n\r\n"
                           "Instance ID:                BTHLE\\Dev_c1d2e3f4a5b6\\8&1a2b3c4d&0&C1D2E3F4A5B6\r\n"
                           "Device Description:         Tag\r\n"));
    EXPECT_EQ(result.error, "");
}

TEST(Pnputil, WithoutAFilePlaysTheBuiltInNeighbourhood)
{
    EXPECT_THAT(EnumDevices().output, HasSubstr(R"(BTHLE\Dev_a4c1385e220f\8&1a2b3c4d&0&a4:c1:38:5e:22:0f)"));
}

TEST(Pnputil, LongListingsAreWhole)
{
    UseScenario("[listing]\nunrelated-devices = 12500\n");
    auto const output = EnumDevices().output;
    EXPECT_EQ(std::count(output.begin(), output.end(), '\n'), 2 + 12500 * 8);
}

TEST(Pnputil, MissingToolPrintsNothing)
{
    UseScenario("[listing]\nmissing = true\n");
    auto const result = EnumDevices();
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_EQ(result.output, "");
    EXPECT_NE(result.error, "");
}

TEST(Pnputil, LateListingTakesItsTime)
{
    UseScenario("[listing]\nduration-ms = 700\n");
    auto const start = GetTickCount64();
    EXPECT_THAT(EnumDevices().output, HasSubstr("Microsoft PnP Utility"));
    EXPECT_GE(GetTickCount64() - start, 700u - 20u) << "the clock ticks in steps";
}

TEST(Pnputil, WrongScenarioIsToldAndNothingIsListed)
{
    UseScenario("[listing]\nmising = true\n");
    auto const result = EnumDevices();
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_EQ(result.output, "");
    EXPECT_THAT(result.error, HasSubstr("scenario.toml:2: 'mising': unknown key"));
}

TEST(Pnputil, OtherCommandsAreRefused)
{
    EXPECT_EQ(RunChild(BinFolder() / "pnputil.exe", {"/remove-device"}).exitCode, 1u);
    EXPECT_EQ(RunChild(BinFolder() / "pnputil.exe", {}).exitCode, 1u);
}
