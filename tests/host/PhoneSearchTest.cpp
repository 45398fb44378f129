// The search of vorlinkctl phones: that it is live, how it ends, and what it leaves in the user's folder.
#include "tests/host/ChildProcess.h"
#include "tests/host/Folders.h"
#include "tests/host/LiveVorlinkctl.h"
#include "tests/host/Neighbourhood.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <chrono>
#include <filesystem>

using namespace test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace
{
    constexpr char endless[] = R"(
enumeration-completes-ms = "never"
[[device]]
name = "Phone"
address = "c4:00:00:00:00:01"
)";

    constexpr char endedEarly[] = "1 device found so far; the search was ended early.\n";

    // Of which the library ends the search by itself, after 200 ms.
    constexpr char shortSearch[] = R"(
enumeration-completes-ms = 200
[[device]]
name = "Phone"
address = "c4:00:00:00:00:01"
)";
} // namespace

TEST(PhoneSearch, NamesAreReadWhileItRunsAndCtrlCEndsIt)
{
    UseScenario(endless);
    LiveVorlinkctl vorlinkctl({"phones"});
    EXPECT_EQ(vorlinkctl.ReadLine(), "Phone");
    EXPECT_TRUE(vorlinkctl.Runs());
    vorlinkctl.PressCtrlC();
    auto const result = vorlinkctl.Finish();
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, endedEarly);
}

TEST(PhoneSearch, CtrlCBeforeAnyNameIsNotFound)
{
    UseScenario("enumeration-completes-ms = 'never'\n");
    auto const temp = UseOwnTempFolder();
    LiveVorlinkctl vorlinkctl({"phones"});
    while (NamesIn(temp).empty() && vorlinkctl.Runs()) // the search begins with its temporary folder
    {
        Sleep(5);
    }
    vorlinkctl.PressCtrlC();
    auto const result = vorlinkctl.Finish();
    EXPECT_EQ(result.exitCode, 3u);
    EXPECT_THAT(result.output, StartsWith("No device found so far; the search was ended early.\n"));
}

TEST(PhoneSearch, EndsWithTheTimeLimit)
{
    UseScenario(endless);
    auto const result = RunVorlinkctl({"phones", "--timeout", "2"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, std::string("Phone\n") + endedEarly);
}

TEST(PhoneSearch, EndsAsSoonAsTheLibraryHasEndedIt)
{
    UseScenario(shortSearch);
    auto const start = std::chrono::steady_clock::now();
    auto const result = RunVorlinkctl({"phones"});
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(15));
    EXPECT_EQ(result.output, "Phone\n1 device found.\n");
}

TEST(PhoneSearch, ANameThatLooksLikeTheEndDoesNotEndIt)
{
    UseScenario(R"(
enumeration-completes-ms = "never"
[[device]]
name = "x\n2026-01-02 03:04:05 006[File:SubVorlink][Line:87][Function:StopIosWatcher] entry StopIosWatcher  1 "
address = "c4:00:00:00:00:01"
[[device]]
name = "Phone"
address = "c4:00:00:00:00:02"
appears-ms = 700
)");
    EXPECT_THAT(RunVorlinkctl({"phones", "--timeout", "4"}).output, HasSubstr("\nPhone\n2 devices found so far;"));
}

TEST(PhoneSearch, WithoutTheLogLeavesNothingBehind)
{
    UseScenario(endless);
    auto const temp = UseOwnTempFolder();
    LiveVorlinkctl vorlinkctl({"phones"});
    EXPECT_EQ(vorlinkctl.ReadLine(), "Phone");
    EXPECT_THAT(NamesIn("."), ElementsAre("scenario.toml", "stderr.txt", "temp"));
    EXPECT_EQ(NamesIn(temp).size(), 1u) << "where the log is meanwhile";
    vorlinkctl.PressCtrlC();
    vorlinkctl.Finish();
    EXPECT_THAT(NamesIn("."), ElementsAre("scenario.toml", "stderr.txt", "temp"));
    EXPECT_THAT(NamesIn(temp), IsEmpty());
}

TEST(PhoneSearch, EndedByTheLibraryLeavesNothingBehindEither)
{
    UseScenario(shortSearch);
    auto const temp = UseOwnTempFolder();
    RunVorlinkctl({"phones"});
    EXPECT_THAT(NamesIn("."), ElementsAre("scenario.toml", "stderr.txt", "stdout.txt", "temp"));
    EXPECT_THAT(NamesIn(temp), IsEmpty());
}

TEST(PhoneSearch, WithoutAPlaceForTemporaryFilesIsAFailure)
{
    SetEnvironmentVariableW(L"TMP", (std::filesystem::current_path() / "missing").c_str());
    auto const result = RunVorlinkctl({"phones"});
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_THAT(result.error, HasSubstr("vorlinkctl: "));
    EXPECT_THAT(result.output, IsEmpty());
}

TEST(PhoneSearch, WithTheLogShowsItsRecords)
{
    for (auto const* const scenario : {shortSearch, endless})
    {
        UseScenario(scenario);
        auto const result = RunVorlinkctl({"phones", "--log", "--timeout", "3"});
        EXPECT_THAT(result.output, StartsWith("Phone\n1 device found"));
        EXPECT_THAT(result.output, HasSubstr("\n\nWhat the library logged (log.log):\n  2"));
        EXPECT_THAT(result.output, HasSubstr("[Function:OnDeviceAdded] OnDeviceAdded    name = Phone \n"));
        EXPECT_THAT(result.output, HasSubstr("[Function:StopIosWatcher] entry StopIosWatcher  1 \n"));
        EXPECT_TRUE(std::filesystem::exists("log.log"));
    }
}

TEST(PhoneSearch, IsNotEndedByTheRecordsOfEarlierRuns)
{
    UseScenario(shortSearch);
    RunVorlinkctl({"phones", "--log"});
    UseScenario(endless);
    EXPECT_THAT(RunVorlinkctl({"phones", "--log", "--timeout", "1"}).output, HasSubstr("the search was ended early"));
}

// Also where the user's limit is the same moment: there is one end.
TEST(SlowPhoneSearch, EndsWithTheLibrarysOwnLimit)
{
    UseScenario(endless);
    auto const start = std::chrono::steady_clock::now();
    auto const result = RunVorlinkctl({"phones", "--timeout", "25"});
    EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::seconds(25));
    EXPECT_EQ(result.output, "Phone\n1 device found.\n");
}

TEST(PhoneSearch, ShowsItsRecordsAlsoWhereTheLogCannotBeWritten)
{
    UseScenario(shortSearch);
    std::filesystem::create_directory("log.log");
    auto const result = RunVorlinkctl({"phones", "--log"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output, StartsWith("Phone\n1 device found.\n"));
    EXPECT_THAT(result.output, HasSubstr("[Function:OnDeviceAdded] OnDeviceAdded    name = Phone \n"));
    EXPECT_THAT(result.error, HasSubstr("The records are not in log.log: it cannot be written in this folder"));
}

TEST(PhoneSearch, ThatIsKilledLeavesItsFolderToTheNextOne)
{
    UseScenario(endless);
    auto const temp = UseOwnTempFolder();
    LiveVorlinkctl vorlinkctl({"phones"});
    EXPECT_EQ(vorlinkctl.ReadLine(), "Phone");
    vorlinkctl.Kill();
    EXPECT_EQ(NamesIn(temp).size(), 1u);
    std::filesystem::create_directory(temp / "vorlinkctl-notes");
    RunVorlinkctl({"phones", "--timeout", "1"});
    EXPECT_THAT(NamesIn(temp), ElementsAre("vorlinkctl-notes"));
}

TEST(PhoneSearch, TwoAtOnceKeepTheirRecordsApart)
{
    UseScenario(endless);
    LiveVorlinkctl other({"phones", "--log"});
    EXPECT_EQ(other.ReadLine(), "Phone");
    UseScenario(shortSearch);
    auto const result = RunVorlinkctl({"pair", "Nobody", "--log"});
    EXPECT_THAT(result.output, HasSubstr("name ->Nobody"));
    EXPECT_THAT(result.output, Not(HasSubstr("OnDeviceAdded")));
    other.PressCtrlC();
    EXPECT_THAT(other.Finish().output, Not(HasSubstr("name ->Nobody")));
}
