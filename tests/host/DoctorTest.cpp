// vorlinkctl doctor, from outside.
#include "tests/host/ChildProcess.h"
#include "tests/host/Neighbourhood.h"
#include "tests/support/LogFile.h"
#include "tests/support/ProcessEnd.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>

using namespace test;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace
{
    constexpr char oneDevice[] = "[[device]]\nname = 'Lamp'\naddress = '00:00:00:00:00:01'\n";

    // Checks by their names, and "outcome".
    std::map<std::string, nlohmann::json> Examine(ChildResult const& result)
    {
        std::map<std::string, nlohmann::json> objects;
        std::istringstream lines(result.output);
        for (std::string line; std::getline(lines, line);)
        {
            auto object = nlohmann::json::parse(line);
            std::string const name = object["event"] == "check" ? object["check"] : object["event"];
            EXPECT_FALSE(objects.contains(name)) << name;
            objects[name] = std::move(object);
        }
        return objects;
    }

    // A folder with the program and these of its neighbours.
    std::filesystem::path ProgramWith(std::initializer_list<char const*> neighbours)
    {
        std::filesystem::create_directory("apart");
        for (auto const* const name : neighbours)
        {
            std::filesystem::copy_file(BinFolder() / name, std::filesystem::path("apart") / name);
        }
        std::filesystem::copy_file(BinFolder() / "vorlinkctl.exe", "apart/vorlinkctl.exe");
        return std::filesystem::absolute("apart/vorlinkctl.exe");
    }
} // namespace

TEST(Doctor, FindsNothingWrongWhereAllIsWell)
{
    UseScenario(oneDevice);
    auto const result = RunVorlinkctl({"doctor"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output, StartsWith("ok       library    vorlink.dll " VORLINK_VERSION ", exports getVorlinkPtr\n"
                                          "ok       platform   the simulator (vorlink_simulator.dll)\n"));
    EXPECT_THAT(result.output, HasSubstr("ok       endpoints  Classic: 1, LE: 0\n"));
    EXPECT_THAT(result.output, HasSubstr("ok       code page  UTF-8\n"));
    EXPECT_THAT(result.output, EndsWith("\nNo problems.\n"));
    EXPECT_THAT(result.error, IsEmpty());
}

TEST(Doctor, TellsEachCheckAsJson)
{
    UseScenario(oneDevice);
    auto const result = RunVorlinkctl({"doctor", "--json"});
    auto checks = Examine(result);
    for (auto const* const check :
         {"library", "platform", "scenario", "search", "endpoints", "tool", "folder", "data file", "code page"})
    {
        EXPECT_EQ(checks[check]["verdict"], "ok") << check;
    }
    EXPECT_TRUE(checks.contains("adapter"));
    EXPECT_THAT(std::string(checks["scenario"]["text"]), EndsWith("scenario.toml"));
    EXPECT_EQ(checks["outcome"]["exit_code"], 0);
    EXPECT_EQ(checks["outcome"]["problems"], 0);
    EXPECT_EQ(checks["outcome"]["checks"], checks.size() - 1);
}

TEST(Doctor, IsSpareWithWordsWhenQuiet)
{
    UseScenario(oneDevice);
    EXPECT_THAT(RunVorlinkctl({"doctor"}).output, HasSubstr("-> "));
    EXPECT_THAT(RunVorlinkctl({"doctor", "--quiet"}).output, Not(HasSubstr("-> ")));
}

TEST(Doctor, TellsTheSimulatorsWordsOfAFaultyScenario)
{
    UseScenario("[[device]]\naddress = 12\nadress = 'x'\n");
    auto const result = RunVorlinkctl({"doctor", "--json"});
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_THAT(result.error, IsEmpty());
    auto checks = Examine(result);
    EXPECT_EQ(checks["scenario"]["verdict"], "problem");
    EXPECT_THAT(std::string(checks["scenario"]["text"]),
                AllOf(HasSubstr("scenario.toml:2: 'address'"), HasSubstr("is expected; "),
                      HasSubstr("scenario.toml:3: 'adress'"), Not(HasSubstr("vorlink_simulator"))));
    EXPECT_THAT(std::string(checks["scenario"]["hint"]), HasSubstr("nothing is wrong with the radio"));
    EXPECT_EQ(checks["search"]["verdict"], "problem");
    EXPECT_THAT(std::string(checks["search"]["text"]), HasSubstr("0x80070057"));
    EXPECT_EQ(checks["search"]["hint"], "The scenario is to blame.");
    EXPECT_EQ(checks["outcome"]["problems"], 2);
}

TEST(Doctor, TellsOfAScenarioThatIsNotThere)
{
    SetEnvironmentVariableW(L"VORLINK_SCENARIO", L"nowhere.toml");
    auto checks = Examine(RunVorlinkctl({"doctor", "--json"}));
    EXPECT_EQ(checks["scenario"]["verdict"], "problem");
    EXPECT_THAT(std::string(checks["scenario"]["text"]), HasSubstr("nowhere.toml"));
}

TEST(Doctor, TellsOfTheBuiltInNeighbourhood)
{
    SetEnvironmentVariableW(L"VORLINK_SCENARIO", nullptr);
    EXPECT_THAT(RunVorlinkctl({"doctor"}).output, HasSubstr("ok       scenario   the simulator's own"));
}

TEST(Doctor, MissesTheLibrary)
{
    UseScenario(oneDevice);
    auto const program = ProgramWith({"vorlink_simulator.dll", "vorlinkctl.exe.manifest"});
    auto const result = RunChild(program, {"doctor", "--json"});
    EXPECT_EQ(result.exitCode, 1u);
    auto checks = Examine(result);
    EXPECT_EQ(checks["library"]["verdict"], "problem");
    EXPECT_THAT(std::string(checks["library"]["text"]), StartsWith("There is no vorlink.dll in "));
    EXPECT_EQ(checks["library"]["hint"], "Put the vorlink.dll of the same build beside vorlinkctl.exe.");
    EXPECT_EQ(checks["platform"]["verdict"], "ok") << "it goes on";
}

TEST(Doctor, WarnsOfALibraryOfAnotherBuild)
{
    UseScenario(oneDevice);
    auto const program = ProgramWith({"vorlink.dll", "vorlink_simulator.dll", "vorlinkctl.exe.manifest"});
    auto library = ReadFile("apart/vorlink.dll");
    // Behind its signature, and another word, the version resource has the minor and the major number.
    auto const at = library.find("\xBD\x04\xEF\xFE");
    ASSERT_NE(at, std::string::npos);
    library[at + 10] = 9;
    std::ofstream("apart/vorlink.dll", std::ios::binary) << library;
    auto checks = Examine(RunChild(program, {"doctor", "--json"}));
    EXPECT_EQ(checks["library"]["verdict"], "warning");
    EXPECT_THAT(std::string(checks["library"]["text"]), StartsWith("vorlink.dll 9."));
    EXPECT_THAT(std::string(checks["library"]["hint"]), HasSubstr("this vorlinkctl " VORLINK_VERSION));
}

TEST(Doctor, MissesTheSimulator)
{
    UseScenario(oneDevice);
    auto const program = ProgramWith({"vorlink.dll", "vorlinkctl.exe.manifest"});
    auto const result = RunChild(program, {"doctor", "--json"});
    EXPECT_EQ(result.exitCode, 1u);
    auto checks = Examine(result);
    EXPECT_EQ(checks["platform"]["verdict"], "problem");
    EXPECT_THAT(std::string(checks["platform"]["text"]), HasSubstr("0x8007007E, its module is missing"));
    EXPECT_EQ(checks["scenario"]["verdict"], "warning");
    EXPECT_THAT(std::string(checks["scenario"]["text"]), HasSubstr("but the simulator does not answer"));
    EXPECT_FALSE(checks.contains("search"));
}

TEST(Doctor, WithoutAManifestMeetsWinesOwnPlatform)
{
    if (!IsWine())
    {
        GTEST_SKIP() << "on Windows it meets the real one";
    }
    SetEnvironmentVariableW(L"VORLINK_SCENARIO", nullptr);
    auto const program = ProgramWith({"vorlink.dll"});
    auto const result = RunChild(program, {"doctor", "--json"});
    EXPECT_EQ(result.exitCode, 1u);
    auto checks = Examine(result);
    EXPECT_EQ(checks["platform"]["verdict"], "problem");
    EXPECT_THAT(std::string(checks["platform"]["text"]), StartsWith("Wine's own ("));
    EXPECT_EQ(checks["code page"]["verdict"], "warning");
    EXPECT_FALSE(checks.contains("scenario"));
}

TEST(Doctor, LooksIntoTheDataFileOfItsFolder)
{
    UseScenario(oneDevice);
    std::ofstream("MyLEData") << "Tag=C1D2E3F4A5B6\nbroken\n";
    auto const result = RunVorlinkctl({"doctor"});
    EXPECT_EQ(result.exitCode, 0u) << "a warning is no problem";
    EXPECT_THAT(result.output, HasSubstr("warning  data file  1 LE device in MyLEData, and 1 malformed line\n"));
    EXPECT_THAT(result.output, EndsWith("\nNo problems, 1 warning.\n"));
}

TEST(Doctor, ChangesNothing)
{
    UseScenario(oneDevice);
    RunVorlinkctl({"doctor"});
    EXPECT_FALSE(std::filesystem::exists("log.log"));
    EXPECT_FALSE(std::filesystem::exists("MyLEData"));
}
