// What vorlinkctl says when the library or the platform is not what it needs.
#include "tests/host/ChildProcess.h"
#include "tests/host/Neighbourhood.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <filesystem>
#include <fstream>

using namespace test;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace
{
    // The platform can make no watcher of it.
    constexpr char noWatcher[] = "[[device]]\naddress = 12\n";

    // A copy of the program without its neighbours.
    std::filesystem::path LonelyProgram()
    {
        std::filesystem::create_directory("lonely");
        std::filesystem::copy_file(BinFolder() / "vorlinkctl.exe", "lonely/vorlinkctl.exe");
        return std::filesystem::absolute("lonely/vorlinkctl.exe");
    }
} // namespace

TEST(Failure, AMissingLibraryIsNamed)
{
    auto const result = RunChild(LonelyProgram(), {"pair", "Kitchen Speaker"});
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_THAT(result.error, HasSubstr("There is no vorlink.dll in "));
}

TEST(Failure, AFileThatIsNoLibraryIsNamed)
{
    auto const program = LonelyProgram();
    std::ofstream("lonely/vorlink.dll") << "no library";
    auto const result = RunChild(program, {"pair", "Kitchen Speaker"});
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_THAT(result.error, HasSubstr("vorlink.dll does not load (Windows error 193)"));
}

TEST(Failure, ALibraryWithoutTheExportIsNamed)
{
    auto const program = LonelyProgram();
    std::filesystem::copy_file(BinFolder() / "vorlink_simulator.dll", "lonely/vorlink.dll");
    auto const result = RunChild(program, {"pair", "Kitchen Speaker"});
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_THAT(result.error, HasSubstr("vorlink.dll does not export getVorlinkPtr"));
}

TEST(Failure, AFailingPlatformIsReportedWithItsCode)
{
    UseScenario(noWatcher);
    for (auto const& arguments : {Arguments{"pair", "Kitchen Speaker"}, Arguments{"unpair", "Kitchen Speaker"},
                                  Arguments{"phones"}, Arguments{"pair-phone", "Nobody"}})
    {
        SCOPED_TRACE(arguments.front());
        auto const result = RunVorlinkctl(arguments);
        EXPECT_EQ(result.exitCode, 1u);
        EXPECT_THAT(result.output, StartsWith("The platform failed: 0x80070057"));
    }
}

TEST(Failure, OfASimulatedPlatformPointsToItsScenario)
{
    UseScenario(noWatcher);
    auto const result = RunVorlinkctl({"pair", "Kitchen Speaker"});
    EXPECT_THAT(result.output, HasSubstr("vorlinkctl scenario check FILE"));
    EXPECT_THAT(result.output, Not(HasSubstr("Bluetooth is switched on")));
}

TEST(Failure, AMissingPlatformIsSaidInWords)
{
    // Without a manifest Wine's own class answers, which knows no watchers.
    auto const program = LonelyProgram();
    std::filesystem::copy_file(BinFolder() / "vorlink.dll", "lonely/vorlink.dll");
    auto const result = RunChild(program, {"pair", "Kitchen Speaker"});
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_THAT(result.output, HasSubstr("Windows.Devices.Enumeration"));
}

TEST(Scenario, MayBeNamedFromTheUsersFolder)
{
    UseScenario("[[device]]\nname = 'Tag'\naddress = 'c1:d2:e3:f4:a5:b6'\n");
    SetEnvironmentVariableW(L"VORLINK_SCENARIO", L"scenario.toml");
    SetEnvironmentVariableW(L"VORLINK_SIMULATOR_STATE", L"state.txt");
    EXPECT_EQ(RunVorlinkctl({"phones"}).output, "Tag\n1 device found.\n");
    EXPECT_EQ(RunVorlinkctl({"pair", "Tag", "--no-learn"}).exitCode, 0u);
    EXPECT_EQ(RunVorlinkctl({"unpair", "Tag"}).exitCode, 0u);
    EXPECT_EQ(RunVorlinkctl({"pair-phone", "Tag", "--no-learn"}).exitCode, 0u);
    EXPECT_TRUE(std::filesystem::exists("state.txt"));
}
