// vorlinkctl trace, from outside.
#include "tests/host/ChildProcess.h"
#include "tests/host/Neighbourhood.h"
#include "tests/host/log/LogLines.h"
#include "tests/host/trace/TraceLines.h"
#include "tests/support/LogFile.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

using namespace test;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

namespace
{
    using Json = nlohmann::json;

    void Write(std::filesystem::path const& path, std::string const& text)
    {
        std::ofstream(path, std::ios::binary) << text;
    }

    std::vector<Json> JsonLines(std::string const& text)
    {
        std::istringstream lines(text);
        std::vector<Json> objects;
        for (std::string line; std::getline(lines, line);)
        {
            objects.push_back(Json::parse(line));
        }
        return objects;
    }

    std::string const start = CallOf("DeviceWatcher.Start", R"("#1")");
} // namespace

TEST(TraceCommand, ShowsWhatAProgramLeft)
{
    UseScenario("enumeration-completes-ms = 0\n[[device]]\nname = \"Tag\"\naddress = \"c1:d2:e3:f4:a5:b6\"\n"
                "[device.pairing]\nduration-ms = 0\n");
    SetEnvironmentVariableW(L"VORLINK_SIMULATOR_TRACE", (std::filesystem::current_path() / "trace.jsonl").c_str());
    EXPECT_EQ(RunVorlinkctl({"pair", "Tag", "--no-learn", "--log"}).exitCode, 0u);
    SetEnvironmentVariableW(L"VORLINK_SIMULATOR_TRACE", nullptr);
    auto const text = RunVorlinkctl({"trace", "trace.jsonl"}).output;
    std::size_t at = 0;
    for (auto const* const piece :
         {"trace.jsonl: ", " of that time.\n", " and seconds since then\n", "log     Call  Pair entry name ->Tag",
          "DeviceWatcher.Start(#1)", "! DeviceWatcher.Added(#1, Classic c1:d2:e3:f4:a5:b6)",
          "DeviceInformationCustomPairing.PairWithProtectionLevelAsync(Classic c1:d2:e3:f4:a5:b6, ConfirmOnly, ",
          "! DeviceInformationCustomPairing.PairingRequested(", "DevicePairingResult.get_Status("})
    {
        at = text.find(piece, at);
        ASSERT_NE(at, std::string::npos) << piece << " is missing or too early in:\n" << text;
    }
    // In its millisecond, whose calls it stands before: a record's time has no microseconds.
    EXPECT_NE(text.find("log     DevicePairingResultStatus::Paired"), std::string::npos) << text;
}

TEST(TraceCommand, MergesTheLogThatIsNamedOrLiesThere)
{
    Write("trace.jsonl", TraceLine(5'500, 0, start));
    Write(std::filesystem::path(L"Zo\u00EB.log"), AsksToPair(5, "Tag"));
    auto const alone = RunVorlinkctl({"trace", "trace.jsonl"});
    EXPECT_EQ(alone.exitCode, 0u);
    EXPECT_EQ(alone.output, "trace.jsonl: 1 line.\n\n2026-01-02 10:00:00 005, and seconds since then\n"
                            "     0.000000  36      DeviceWatcher.Start(#1)  12 µs\n");
    auto const* const both = "2026-01-02 10:00:00 005, and seconds since then\n"
                             "     0.000     log     Call  Pair entry name ->Tag  = the host asks to pair \"Tag\"\n"
                             "     0.000500  36      DeviceWatcher.Start(#1)  12 µs\n";
    EXPECT_EQ(RunVorlinkctl({"trace", "trace.jsonl", "--log", "Zoë.log"}).output,
              "trace.jsonl: 1 line; Zoë.log: 1 record of that time.\n\n" + std::string(both));
    std::filesystem::rename(L"Zo\u00EB.log", "log.log");
    EXPECT_EQ(RunVorlinkctl({"trace", "trace.jsonl"}).output,
              "trace.jsonl: 1 line; log.log: 1 record of that time.\n\n" + std::string(both));
}

TEST(TraceCommand, GivesTheLinesBackAsJson)
{
    Write("trace.jsonl", TraceLine(5'500, 7, start));
    Write("log.log", AsksToPair(5, "Tag"));
    auto const lines = JsonLines(RunVorlinkctl({"trace", "trace.jsonl", "--json"}).output);
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_EQ(lines[0]["message"], "Call  Pair entry name ->Tag");
    EXPECT_EQ(lines[0]["flow"], "pair");
    EXPECT_EQ(lines[1], (Json{{"event", "trace"},
                              {"time", "2026-01-02 10:00:00 005"},
                              {"ms", 1'767'348'000'005.5},
                              {"utc", "2026-01-02T09:00:00.005500Z"},
                              {"process", 32},
                              {"number", 7},
                              {"thread", 36},
                              {"kind", "call"},
                              {"name", "DeviceWatcher.Start"},
                              {"object", "#1"},
                              {"arguments", ""},
                              {"result", nullptr},
                              {"hresult", "0x00000000"},
                              {"us", 12}}));
}

TEST(TraceCommand, SkipsGarbageAndTellsWhere)
{
    Write("trace.jsonl", "garbage\n" + TraceLine(0, 0, start) + "\x1b[2J\n");
    auto const result = RunVorlinkctl({"trace", "trace.jsonl"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.error, "vorlinkctl: trace.jsonl:1: no line of a trace; skipped.\n"
                            "vorlinkctl: trace.jsonl:3: no line of a trace; skipped.\n");
    EXPECT_THAT(result.output,
                AllOf(StartsWith("trace.jsonl: 1 line.\n"), EndsWith("DeviceWatcher.Start(#1)  12 µs\n")));
    std::string garbage;
    for (int line = 0; line < 13; ++line)
    {
        garbage += "garbage\n";
    }
    Write("trace.jsonl", garbage);
    EXPECT_THAT(RunVorlinkctl({"trace", "trace.jsonl"}).error,
                AllOf(HasSubstr("trace.jsonl:10:"), Not(HasSubstr("trace.jsonl:11:")),
                      EndsWith("vorlinkctl: 3 more such lines.\n")));
}

TEST(TraceCommand, SaysThatATraceIsEmpty)
{
    Write("trace.jsonl", "");
    Write("log.log", AsksToPair(5, "Tag"));
    auto const result = RunVorlinkctl({"trace", "trace.jsonl"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, "trace.jsonl: an empty trace; nothing was asked of the simulated platform.\n");
    EXPECT_THAT(RunVorlinkctl({"trace", "trace.jsonl", "--json"}).output, IsEmpty());
}

TEST(TraceCommand, AMissingFileIsNotFound)
{
    auto const result = RunVorlinkctl({"trace", "trace.jsonl"});
    EXPECT_EQ(result.exitCode, 3u);
    EXPECT_THAT(result.error, StartsWith("vorlinkctl: there is no \"trace.jsonl\".\n"));
    Write("trace.jsonl", TraceLine(0, 0, start));
    EXPECT_EQ(RunVorlinkctl({"trace", "trace.jsonl", "--log", "other.log"}).exitCode, 3u);
    std::filesystem::create_directory("folder");
    EXPECT_EQ(RunVorlinkctl({"trace", "folder"}).exitCode, 1u);
}

TEST(TraceCommand, WritesAPage)
{
    auto const trace = TraceLine(0, 0, start);
    Write("trace.jsonl", trace);
    Write("log.log", AsksToPair(5, "Tag"));
    auto const result = RunVorlinkctl({"trace", "trace.jsonl", "--html", "page.html"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, "Wrote page.html.\n");
    EXPECT_THAT(ReadFile("page.html"), AllOf(StartsWith("<!doctype html>"), EndsWith("</html>\n"),
                                             HasSubstr("DeviceWatcher.Start(#1)"), HasSubstr("Pair entry name")));
    for (auto const* const file : {"trace.jsonl", "log.log"})
    {
        EXPECT_EQ(RunVorlinkctl({"trace", "trace.jsonl", "--html", file}).exitCode, 2u) << file;
    }
    EXPECT_EQ(ReadFile("trace.jsonl"), trace);
    EXPECT_EQ(RunVorlinkctl({"trace", "trace.jsonl", "--html", "nowhere/page.html"}).exitCode, 1u);
}

namespace
{
    void WriteLines(int count)
    {
        std::ofstream file("trace.jsonl", std::ios::binary);
        for (int line = 0; line < count; ++line)
        {
            file << TraceLine(line, line, start);
        }
    }
} // namespace

TEST(SlowTraceCommand, TakesAMillionLines)
{
    WriteLines(1'000'000);
    auto const result = RunVorlinkctl({"trace", "trace.jsonl"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output, StartsWith("trace.jsonl: 1000000 lines.\n"));
    EXPECT_EQ(std::ranges::count(result.output, '\n'), 1'000'003);
    EXPECT_THAT(result.error, EndsWith("ing trace.jsonl ...\n"));
}

TEST(SlowTraceCommand, APageHasTheLatestLines)
{
    WriteLines(200'007);
    EXPECT_EQ(RunVorlinkctl({"trace", "trace.jsonl", "--html", "page.html"}).output,
              "Wrote page.html with the last 200000 lines; it lacks 7 older ones.\n");
    EXPECT_THAT(ReadFile("page.html"), AllOf(HasSubstr("\"left\":7,"), HasSubstr("[1767348000000007,")));
}
