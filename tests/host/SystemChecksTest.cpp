// What vorlinkctl doctor finds about the system and the folder, one check at a time.
#include "host/doctor/SystemChecks.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <filesystem>
#include <fstream>

using namespace host;
using testing::EndsWith;
using testing::HasSubstr;

namespace
{
    constexpr char const* tool = "C:/Windows/System32/pnputil.exe";
} // namespace

TEST(ToolCheck, IsContentWithAToolThatLists)
{
    auto const finding = CheckTool(tool);
    EXPECT_EQ(finding.verdict, Verdict::Ok);
    EXPECT_THAT(finding.text, EndsWith("pnputil.exe lists devices"));
}

TEST(ToolCheck, WarnsOfAMissingTool)
{
    auto const finding = CheckTool("nowhere/tool.exe");
    EXPECT_EQ(finding.verdict, Verdict::Warning);
    EXPECT_THAT(finding.text, HasSubstr("there is no nowhere"));
}

TEST(ToolCheck, WarnsOfAToolThatDoesNotStart)
{
    std::ofstream("tool.exe") << "no program";
    auto const finding = CheckTool("tool.exe");
    EXPECT_EQ(finding.verdict, Verdict::Warning);
    EXPECT_THAT(finding.text, HasSubstr("does not start: Windows error 193"));
}

TEST(ToolCheck, WarnsOfAToolThatPrintsNothing)
{
    std::ofstream("scenario.toml") << "[listing]\nmissing = true\n";
    SetEnvironmentVariableW(L"VORLINK_SCENARIO", std::filesystem::absolute("scenario.toml").c_str());
    auto const finding = CheckTool(tool);
    EXPECT_EQ(finding.verdict, Verdict::Warning);
    EXPECT_THAT(finding.text, EndsWith("lists nothing"));
}

TEST(SlowToolCheck, WarnsOfAToolThatIsLate)
{
    std::ofstream("scenario.toml") << "[listing]\nduration-ms = 30000\n";
    SetEnvironmentVariableW(L"VORLINK_SCENARIO", std::filesystem::absolute("scenario.toml").c_str());
    auto const finding = CheckTool(tool);
    EXPECT_EQ(finding.verdict, Verdict::Warning);
    EXPECT_THAT(finding.text, EndsWith("lists nothing within 5 s"));
}

TEST(ToolCheck, LeavesNothingBehind)
{
    std::filesystem::create_directory("temp");
    SetEnvironmentVariableW(L"TMP", std::filesystem::absolute("temp").c_str());
    CheckTool(tool);
    EXPECT_TRUE(std::filesystem::is_empty("temp"));
}

TEST(DataFileCheck, IsContentWithoutAFile)
{
    EXPECT_EQ(CheckDataFile(".").verdict, Verdict::Ok);
    EXPECT_THAT(CheckDataFile(".").text, HasSubstr("no MyLEData in this folder"));
}

TEST(DataFileCheck, CountsTheFilesEntries)
{
    std::ofstream("MyLEData") << "Tag=C1D2E3F4A5B6\nbroken\n";
    EXPECT_EQ(CheckDataFile(".").text, "1 LE device in MyLEData, and 1 malformed line");
    EXPECT_EQ(CheckDataFile(".").verdict, Verdict::Warning);
}

TEST(DataFileCheck, WarnsOfWhatCannotBeRead)
{
    std::filesystem::create_directory("MyLEData");
    EXPECT_EQ(CheckDataFile(".").verdict, Verdict::Warning);
    EXPECT_EQ(CheckDataFile(".").text, "MyLEData cannot be read");
}

TEST(FolderCheck, WritesAndLeavesNothingBehind)
{
    std::filesystem::create_directory("folder");
    EXPECT_EQ(CheckFolder("folder").verdict, Verdict::Ok);
    EXPECT_TRUE(std::filesystem::is_empty("folder"));
}

TEST(FolderCheck, WarnsOfOneThatCannotBeWritten)
{
    auto const finding = CheckFolder("nowhere");
    EXPECT_EQ(finding.verdict, Verdict::Warning);
    EXPECT_THAT(finding.text, HasSubstr("(Windows error 3)"));
}

TEST(CodePageCheck, AsksForUtf8InBoth)
{
    EXPECT_EQ(CheckCodePage(65001, 65001).verdict, Verdict::Ok);
    EXPECT_EQ(CheckCodePage(1252, 65001).verdict, Verdict::Warning);
    EXPECT_EQ(CheckCodePage(65001, 437).verdict, Verdict::Warning);
    EXPECT_EQ(CheckCodePage(1252, 437).text, "ANSI 1252, OEM 437");
}
