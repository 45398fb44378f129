// The trace as JSON, from the verb and in the file that VORLINK_SIMULATOR_TRACE names.
#include "simulator/trace/TraceLine.h"
#include "tests/host/ChildProcess.h"
#include "tests/simulator/CeremonyClient.h"
#include "tests/support/LogFile.h"

#include <windows.h>

#include <chrono>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <map>
#include <nlohmann/json.hpp>
#include <sstream>
#include <thread>

using namespace test;
using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{
    using Json = nlohmann::json;

    std::vector<Json> Objects(std::string const& text)
    {
        std::istringstream lines(text);
        std::vector<Json> objects;
        for (std::string line; std::getline(lines, line);)
        {
            objects.push_back(Json::parse(line));
        }
        return objects;
    }

    std::string TraceJson()
    {
        std::string text(SimulatorTraceJson(nullptr, 0) + 65536, '\0');
        SimulatorTraceJson(text.data(), text.size());
        text.resize(text.find('\0'));
        return text;
    }

    // The fields that a test can know.
    Json Known(Json object)
    {
        for (auto const* const key : {"time", "utc", "process", "number", "thread", "us"})
        {
            object.erase(key);
        }
        return object;
    }

    std::int64_t MicrosecondsNow()
    {
        auto const now = std::chrono::system_clock::now().time_since_epoch();
        return std::chrono::floor<std::chrono::microseconds>(now).count();
    }

    using JsonTrace = SimulatorTest;

    class TraceFile : public SimulatorTest
    {
    protected:
        static constexpr auto variable = L"VORLINK_SIMULATOR_TRACE";

        static void Use(std::filesystem::path const& path)
        {
            SetEnvironmentVariableW(variable, path.c_str());
            SimulatorReset();
        }

        void SetUp() override
        {
            SimulatorTest::SetUp();
            std::filesystem::remove(file);
        }

        void TearDown() override
        {
            Use({});
        }

        std::filesystem::path const file = std::filesystem::current_path() / L"Zo\u00EB.jsonl";
    };
} // namespace

TEST_F(JsonTrace, TellsOfCallsAndEvents)
{
    auto const watcher = MakeWatcher();
    EventRegistrationToken token{};
    watcher->add_EnumerationCompleted(On<WatcherHandler>([](auto*, auto*) { return E_FAIL; }).Get(), &token);
    SimulatorClearTrace();
    StatusOf(watcher);
    watcher->Start();
    ASSERT_TRUE(WaitIdle());
    watcher->Start();
    watcher->remove_EnumerationCompleted(token);
    auto const lines = Objects(TraceJson());
    std::vector<Json> known;
    std::ranges::transform(lines, std::back_inserter(known), Known);
    auto const line = [](char const* kind, char const* name, Json const& arguments, Json const& result,
                         Json const& code) {
        return Json{{"kind", kind},     {"name", std::string("DeviceWatcher.") + name},
                    {"object", "#1"},   {"arguments", arguments},
                    {"result", result}, {"hresult", code}};
    };
    EXPECT_EQ(known,
              (std::vector<Json>{
                  line("call", "get_Status", "", "Created", "0x00000000"),
                  line("call", "Start", "", nullptr, "0x00000000"),
                  line("event", "EnumerationCompleted", "", nullptr, nullptr),
                  line("event", "EnumerationCompleted", "", nullptr, "0x80004005"),
                  line("call", "Start", "", nullptr, "0x8000000E"),
                  line("call", "remove_EnumerationCompleted", std::to_string(token.value), nullptr, "0x00000000"),
              }));
    for (std::size_t at = 0; at < lines.size(); ++at)
    {
        EXPECT_EQ(lines[at]["process"], GetCurrentProcessId());
        EXPECT_EQ(lines[at]["number"], lines[0]["number"].get<std::size_t>() + at);
        EXPECT_EQ(lines[at]["thread"] == GetCurrentThreadId(), lines[at]["kind"] == "call");
        EXPECT_EQ(lines[at]["us"].is_null(), lines[at]["kind"] == "event");
    }
}

TEST_F(JsonTrace, ATextIsNoObject)
{
    Com<IDeviceWatcher> watcher;
    TryMakeWatcher("((, (", {"System.Devices.Aep.IsConnected"}, watcher);
    auto const line = Objects(TraceJson()).back();
    EXPECT_EQ(line["object"], nullptr);
    EXPECT_EQ(line["arguments"], R"("((, (", ["System.Devices.Aep.IsConnected"], AssociationEndpoint)");
}

TEST_F(JsonTrace, HasTheTimeOfTheLibrarysLog)
{
    auto const before = MicrosecondsNow();
    Statics();
    auto const after = MicrosecondsNow();
    auto const line = Objects(TraceJson()).back();
    auto const utc = line["utc"].get<std::string>();
    auto const timeOf = [&](std::int64_t us) {
        std::time_t const seconds = us / 1'000'000;
        char text[64];
        std::strftime(text, sizeof text, "%Y-%m-%dT%H:%M:%S.", std::gmtime(&seconds));
        return text + std::to_string(1'000'000 + us % 1'000'000).substr(1) + "Z";
    };
    EXPECT_LE(timeOf(before), utc);
    EXPECT_LE(utc, timeOf(after));
    std::time_t const seconds = before / 1'000'000;
    std::time_t const end = after / 1'000'000;
    char first[64];
    char last[64];
    std::strftime(first, sizeof first, "%Y-%m-%d %H:%M:%S ", std::localtime(&seconds));
    std::strftime(last, sizeof last, "%Y-%m-%d %H:%M:%S ", std::localtime(&end));
    auto const fraction = utc.substr(utc.find('.') + 1, 3);
    EXPECT_THAT(line["time"].get<std::string>(), testing::AnyOf(first + fraction, last + fraction));
}

TEST_F(JsonTrace, TellsHowLongACallTook)
{
    simulator::TraceLine line{};
    line.code = S_OK;
    line.took = std::chrono::microseconds(1'234'567);
    EXPECT_EQ(Json::parse(simulator::JsonOf(line))["us"], 1'234'567);
    line.code.reset();
    EXPECT_EQ(Json::parse(simulator::JsonOf(line))["us"], nullptr) << "it has not returned";
}

TEST_F(JsonTrace, IsCopiedAsFarAsThereIsRoom)
{
    SimulatorClearTrace();
    char buffer[6];
    EXPECT_EQ(SimulatorTraceJson(buffer, sizeof buffer), 1u);
    Statics();
    EXPECT_EQ(SimulatorTraceJson(buffer, sizeof buffer), TraceJson().size() + 1);
    EXPECT_STREQ(buffer, "{\"tim");
}

TEST(JsonTraceText, IsValidWhateverItHolds)
{
    using namespace std::string_literals;
    std::pair<std::string, std::string> const cases[] = {
        {"", R"("")"},
        {"a\"b\\c", R"("a\"b\\c")"},
        {"\0\n\x1b\x7f"s, R"("\u0000\u000a\u001b\u007f")"},
        {"Zo\xC3\xAB \xE2\x82\xAC \xF0\x9F\x93\xB1", "\"Zo\xC3\xAB \xE2\x82\xAC \xF0\x9F\x93\xB1\""},
        {"\xFF", R"("\ufffd")"},
        {"\x80", R"("\ufffd")"},                     // a byte that continues nothing
        {"\xC0\x80", R"("\ufffd\ufffd")"},           // longer than it needs to be
        {"\xE0\x9F\xBF", R"("\ufffd\ufffd\ufffd")"}, // likewise
        {"\xED\xA0\x80", R"("\ufffd\ufffd\ufffd")"}, // half of a pair
        {"\xF4\x90\x80\x80", R"("\ufffd\ufffd\ufffd\ufffd")"},
        {"\xE2\x82", R"("\ufffd\ufffd")"}, // cut off
        {"\xC3(", R"("\ufffd(")"},
        {"\xE2\x82(", R"("\ufffd\ufffd(")"},
    };
    for (auto const& [text, json] : cases)
    {
        EXPECT_EQ(simulator::JsonText(text), json);
        EXPECT_TRUE(Json::accept(simulator::JsonText(text)));
    }
    std::string all;
    for (int pair = 0; pair < 0x10000; ++pair)
    {
        all += static_cast<char>(pair >> 8);
        all += static_cast<char>(pair);
    }
    EXPECT_TRUE(Json::accept(simulator::JsonText(all)));
}

TEST_F(TraceFile, GetsEachLineAtOnce)
{
    Use(file);
    Statics();
    auto const first = ReadFile(file);
    EXPECT_THAT(first, EndsWith("}\n"));
    EXPECT_EQ(first, TraceJson());
    SimulatorClearTrace();
    Statics();
    EXPECT_EQ(ReadFile(file), first + TraceJson());
}

TEST_F(TraceFile, IsAppendedTo)
{
    std::ofstream(file, std::ios::binary) << "before\n";
    Use(file);
    Statics();
    EXPECT_EQ(ReadFile(file), "before\n" + TraceJson());
}

TEST_F(TraceFile, ThatCannotBeWrittenIsToldOnce)
{
    testing::internal::CaptureStderr();
    Use("nowhere/trace.jsonl");
    Statics();
    Statics();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "vorlink_simulator: nowhere/trace.jsonl: the trace cannot be written\n");
    EXPECT_THAT(TraceJson(), HasSubstr("GetActivationFactory"));
}

TEST_F(TraceFile, IsNotGarbledBySeveralProcesses)
{
    constexpr wchar_t roleVariable[] = L"VORLINK_TEST_ROLE";
    constexpr int calls = 400;
    if (GetEnvironmentVariableW(roleVariable, nullptr, 0) != 0)
    {
        SimulatorReset();
        auto const statics = Statics2();
        std::thread other([&] {
            for (int call = 0; call < calls; ++call)
            {
                Com<IDeviceWatcher> watcher;
                statics->CreateWatcherWithKindAqsFilterAndAdditionalProperties(
                    String(std::string(static_cast<std::size_t>(call), '(')).Get(), nullptr,
                    DeviceInformationKind::AssociationEndpoint, watcher.Put());
            }
        });
        auto const watcher = MakeWatcher();
        for (int call = 0; call < calls; ++call)
        {
            StatusOf(watcher);
        }
        other.join();
        std::wstring trace(32'768, L'\0');
        trace.resize(GetEnvironmentVariableW(variable, trace.data(), static_cast<DWORD>(trace.size())));
        auto const folder = std::filesystem::path(trace).parent_path();
        std::ofstream(folder / ("done" + std::to_string(GetCurrentProcessId()))) << "done";
        Sleep(INFINITE); // until it is killed
    }
    SetEnvironmentVariableW(L"TEST_PREMATURE_EXIT_FILE", nullptr); // it is this process's
    SetEnvironmentVariableW(variable, file.c_str());
    SetEnvironmentVariableW(roleVariable, L"1");
    std::vector<PROCESS_INFORMATION> others;
    for (int other = 0; other < 3; ++other)
    {
        auto* const output = FileForChild((L"other" + std::to_wstring(other)).c_str());
        others.push_back(StartChild(BinFolder() / "simulator_tests.exe",
                                    {"--gtest_filter=TraceFile.IsNotGarbledBySeveralProcesses"}, output, output));
        CloseHandle(output);
    }
    SetEnvironmentVariableW(roleVariable, nullptr);
    for (auto const& other : others)
    {
        auto const done = "done" + std::to_string(other.dwProcessId);
        while (!std::filesystem::exists(done) && WaitForSingleObject(other.hProcess, 10) == WAIT_TIMEOUT)
        {
        }
        TerminateProcess(other.hProcess, 1);
        WaitForEnd(other);
    }
    auto const text = ReadFile(file);
    EXPECT_THAT(text, EndsWith("}\n"));
    std::map<std::uint32_t, std::vector<std::size_t>> numbers;
    for (auto const& line : Objects(text))
    {
        numbers[line["process"]].push_back(line["number"]);
    }
    EXPECT_EQ(numbers.size(), 3u);
    for (auto& [process, ofProcess] : numbers)
    {
        std::ranges::sort(ofProcess);
        EXPECT_GT(ofProcess.size(), 2u * calls);
        EXPECT_EQ(ofProcess.back() - ofProcess.front() + 1, ofProcess.size()) << "lines are lost";
        EXPECT_EQ(std::ranges::adjacent_find(ofProcess), ofProcess.end());
    }
}
