// vorlinkctl log, from outside.
#include "tests/host/ChildProcess.h"
#include "tests/host/LiveVorlinkctl.h"
#include "tests/host/Neighbourhood.h"
#include "tests/host/log/LogLines.h"
#include "tests/support/LogFile.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <set>
#include <sstream>
#include <string>
#include <vector>

using namespace test;
using testing::AllOf;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace
{
    void Append(std::string const& text)
    {
        std::ofstream("log.log", std::ios::binary | std::ios::app) << text;
    }

    std::vector<nlohmann::json> JsonLines(std::string const& text)
    {
        std::istringstream lines(text);
        std::vector<nlohmann::json> objects;
        for (std::string line; std::getline(lines, line);)
        {
            objects.push_back(nlohmann::json::parse(line));
        }
        return objects;
    }

    constexpr char friends[] = R"(
[[device]]
name = "Tag"
address = "c1:d2:e3:f4:a5:b6"
protocols = ["classic", "le"]
[device.le]
is-paired = true
[[device]]
name = "A Friend of a Friend"
address = "d0:3e:7d:92:0c:58"
[device.pairing]
status = "ConnectionRejected"
)";

    // A log in which every flow has its say.
    void MakeRealLog()
    {
        UseScenario(friends);
        SetEnvironmentVariableW(L"VORLINK_SIMULATOR_STATE", (std::filesystem::current_path() / "state.txt").c_str());
        std::ofstream("MyLEData", std::ios::binary) << "Tag=c1:d2:e3:f4:a5:b6\n";
        for (auto const& arguments :
             {Arguments{"pair", "Tag"}, Arguments{"pair", "Tag"}, Arguments{"unpair", "Tag"}, Arguments{"pair", "X"},
              Arguments{"phones"}, Arguments{"pair-phone", "A Friend of a Friend"}, Arguments{"pair-phone", "X"}})
        {
            auto withLog = arguments;
            withLog.emplace_back("--log");
            RunVorlinkctl(withLog);
        }
    }
} // namespace

TEST(SlowLogCommand, KnowsEachRecordThatTheLibraryWrites)
{
    MakeRealLog();
    auto const records = JsonLines(RunVorlinkctl({"log", "--json"}).output);
    EXPECT_EQ(records.size(), Log().size());
    std::set<std::string> flows;
    for (auto const& record : records)
    {
        EXPECT_FALSE(record["meaning"].is_null()) << record;
        EXPECT_FALSE(record["run"].is_null()) << record;
        flows.insert(record["flow"]);
    }
    EXPECT_THAT(flows, ElementsAre("learn", "pair", "phones", "unpair"));
}

TEST(SlowLogCommand, TellsWhatBecameOfEachRun)
{
    MakeRealLog();
    auto const result = RunVorlinkctl({"log"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.error, IsEmpty());
    for (auto const* const heading :
         {"  Pairing of \"Tag\": Paired after ", "  Pairing of \"Tag\": AlreadyPaired after ",
          "  Learning the LE side of \"Tag\": ", "  Unpairing of \"Tag\": Unpaired",
          "  Pairing of \"X\": Not found after ", "  Search for phones: Over; devices seen: 2 after ",
          "  Pairing of \"A Friend of a Friend\": ConnectionRejected after "})
    {
        EXPECT_THAT(result.output, HasSubstr(heading));
    }
}

TEST(LogCommand, ShowsTheFileThatIsNamed)
{
    std::ofstream(std::filesystem::path(L"Zo\u00EB.log"), std::ios::binary)
        << AsksToPair(0, "Tag") << EndsPairing(1500, "Paired");
    auto const result = RunVorlinkctl({"log", "Zoë.log"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, "Zoë.log: 2 records in 1 run\n"
                             "\n2026-01-02 10:00:00  Pairing of \"Tag\": Paired after 1.5 s\n"
                             "  10:00:00 000          pair    Call  Pair entry name ->Tag  "
                             "= the host asks to pair \"Tag\"\n"
                             "               ·· 1.5 s of silence, the longest here\n"
                             "  10:00:01 500  +1.5 s  pair    DevicePairingResultStatus::Paired  "
                             "= the device is paired now\n");
}

TEST(LogCommand, NeedsNoLibrary)
{
    Append(AsksToPair(0, "Tag"));
    std::filesystem::create_directory("lonely");
    std::filesystem::copy_file(BinFolder() / "vorlinkctl.exe", "lonely/vorlinkctl.exe");
    EXPECT_EQ(RunChild(std::filesystem::absolute("lonely/vorlinkctl.exe"), {"log"}).exitCode, 0u);
}

TEST(LogCommand, AMissingFileIsNotFound)
{
    for (auto const& arguments : {Arguments{"log"}, Arguments{"log", "--json"}})
    {
        auto const result = RunVorlinkctl(arguments);
        EXPECT_EQ(result.exitCode, 3u);
        EXPECT_THAT(result.output, IsEmpty());
        EXPECT_THAT(result.error, StartsWith("vorlinkctl: there is no \"log.log\".\n"));
    }
}

TEST(LogCommand, AFolderIsNoLog)
{
    std::filesystem::create_directory("log.log");
    auto const result = RunVorlinkctl({"log"});
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_THAT(result.error, HasSubstr("\"log.log\" cannot be read."));
}

TEST(LogCommand, ADamagedLogIsShownAsFarAsItGoes)
{
    using namespace std::string_literals;
    Append("cut off\n\0\0\x1b[2J\xff\n"s + AsksToPair(5000, "Tag") + EndsPairing(1000, "Paired") + "2026-01-02 10:00");
    auto const result = RunVorlinkctl({"log"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output, AllOf(HasSubstr("cut off\n"), HasSubstr("\\x00\\x00\\x1B[2J\\xFF\n"),
                                     HasSubstr("the clock goes back by 4.0 s\n"),
                                     HasSubstr("Paired\\x0A2026-01-02 10:00"), Not(HasSubstr("\x1b"))));
    EXPECT_EQ(JsonLines(RunVorlinkctl({"log", "--json"}).output).size(), 4u);
}

TEST(LogCommand, AnEmptyLogHasNoRecords)
{
    Append("");
    EXPECT_EQ(RunVorlinkctl({"log"}).output, "log.log: 0 records in 0 runs\n");
    EXPECT_EQ(RunVorlinkctl({"log", "--json"}).output, "");
}

TEST(LogCommand, JsonHasTheDocumentedKeys)
{
    Append("garbage\n" + AsksToPair(0, "Zoë") + EndsPairing(7, "Paired"));
    auto const result = RunVorlinkctl({"log", "--json"});
    auto const records = JsonLines(result.output);
    ASSERT_EQ(records.size(), 3u);
    EXPECT_EQ(records[0], (nlohmann::json{{"event", "record"},
                                          {"time", nullptr},
                                          {"ms", nullptr},
                                          {"since_ms", nullptr},
                                          {"line", nullptr},
                                          {"function", nullptr},
                                          {"flow", "other"},
                                          {"run", nullptr},
                                          {"message", "garbage"},
                                          {"meaning", nullptr}}));
    EXPECT_EQ(records[2], (nlohmann::json{{"event", "record"},
                                          {"time", "2026-01-02 10:00:00 007"},
                                          {"ms", 1'767'348'000'007},
                                          {"since_ms", 7},
                                          {"line", 796},
                                          {"function", "SubVorlink::PairingDevice"},
                                          {"flow", "pair"},
                                          {"run", 1},
                                          {"message", "DevicePairingResultStatus::Paired"},
                                          {"meaning", "the device is paired now"}}));
}

TEST(SlowLogCommand, ALongOneTellsHowFarItIs)
{
    std::ofstream log("log.log", std::ios::binary);
    auto const once = AsksToPair(0, "Tag") + EndsPairing(7, "Paired");
    for (int pair = 0; pair < 150'000; ++pair)
    {
        log << once;
    }
    log.close();
    auto const result = RunVorlinkctl({"log"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output, StartsWith("log.log: 300000 records in 150000 runs\n"));
    EXPECT_THAT(result.error, EndsWith("ing log.log ...\n")); // reading or printing
    EXPECT_THAT(RunVorlinkctl({"log", "--quiet"}).error, IsEmpty());
}

TEST(LogCommand, FollowingShowsWhatIsWrittenUntilCtrlC)
{
    LiveVorlinkctl vorlinkctl({"log", "--follow", "--json"}); // of a log that is not there yet
    Append(AsksToPair(0, "Tag"));
    EXPECT_THAT(vorlinkctl.ReadLine(), HasSubstr("Call  Pair entry name ->Tag"));
    auto const end = EndsPairing(7, "Paired");
    Append(end.substr(0, 40));
    Sleep(300); // time in which half a record must not come
    Append(end.substr(40));
    EXPECT_THAT(vorlinkctl.ReadLine(), HasSubstr("\"message\":\"DevicePairingResultStatus::Paired\""));
    std::filesystem::remove("log.log");
    Append(AsksToUnpair(9, "Another"));
    EXPECT_THAT(vorlinkctl.ReadLine(), AllOf(HasSubstr("name-> Another"), HasSubstr("\"run\":1,")));
    vorlinkctl.PressCtrlC();
    auto const result = vorlinkctl.Finish();
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output, IsEmpty());
}

TEST(LogCommand, FollowingBeginsWithTheLastRecordsAndEndsWithTheTimeLimit)
{
    for (int minute = 0; minute < 20; ++minute)
    {
        Append(AsksToPair(60'000 * minute, "Tag") + EndsPairing(60'000 * minute + 7, "Paired"));
    }
    auto const result = RunVorlinkctl({"log", "--follow", "--timeout", "1"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output, AllOf(HasSubstr("10:19:00"), HasSubstr("10:15:00"), Not(HasSubstr("10:14:00"))));
    EXPECT_THAT(result.output, EndsWith("  Pairing of \"Tag\": Paired after 7 ms\n"));
}

TEST(LogCommand, FollowingWhatNeverComesIsNotFound)
{
    auto const result = RunVorlinkctl({"log", "--follow", "--timeout", "1"});
    EXPECT_EQ(result.exitCode, 3u);
    EXPECT_THAT(result.error, StartsWith("There is no log.log yet."));
}

TEST(LogCommand, APageReplacesTheOneBefore)
{
    Append(AsksToPair(0, "Tag"));
    for (int time = 0; time < 2; ++time)
    {
        auto const result = RunVorlinkctl({"log", "--html", "Zoë.html"});
        EXPECT_EQ(result.exitCode, 0u);
        EXPECT_EQ(result.output, "Wrote Zoë.html.\n");
        Append(EndsPairing(7, "Paired"));
    }
    auto const page = ReadFile(L"Zo\u00EB.html");
    EXPECT_THAT(page, AllOf(StartsWith("<!doctype html>"), EndsWith("</html>\n"), HasSubstr("Paired after 7 ms")));
    EXPECT_FALSE(std::filesystem::exists(L"Zo\u00EB.html.new"));
}

TEST(LogCommand, APageThatCannotBeWrittenIsAFailure)
{
    Append(AsksToPair(0, "Tag"));
    std::filesystem::create_directories("page.html/with/folders");
    for (auto const* const page : {"page.html", "nowhere/page.html"})
    {
        auto const result = RunVorlinkctl({"log", "--html", page});
        EXPECT_EQ(result.exitCode, 1u);
        EXPECT_THAT(result.output, IsEmpty());
        EXPECT_THAT(result.error, HasSubstr(std::string("\"") + page + "\" cannot be written"));
    }
    EXPECT_TRUE(std::filesystem::exists("page.html/with/folders"));
    EXPECT_FALSE(std::filesystem::exists("page.html.new"));
}

TEST(LogCommand, APageDoesNotTakeTheLogsPlace)
{
    Append(AsksToPair(0, "Tag"));
    EXPECT_EQ(RunVorlinkctl({"log", "--html", "./LOG.LOG"}).exitCode, 2u);
    EXPECT_EQ(ReadFile("log.log"), AsksToPair(0, "Tag"));
}

TEST(LogCommand, APageIsOfItsOwn)
{
    EXPECT_EQ(RunVorlinkctl({"log", "--html", "page.html", "--json"}).exitCode, 2u);
    EXPECT_EQ(RunVorlinkctl({"log", "--html", "page.html", "--follow"}).exitCode, 2u);
}

TEST(LogCommand, ATimeLimitIsOfFollowingAlone)
{
    EXPECT_EQ(RunVorlinkctl({"log", "--timeout", "1"}).exitCode, 2u);
}
