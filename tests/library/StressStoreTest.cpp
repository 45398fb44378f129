// The store's file while the process that saves it is killed.
#include "tests/library/Stress.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/ProcessEnd.h"
#include "tests/support/StandIns.h"

#include <fstream>
#include <regex>

using namespace test;

namespace
{
    constexpr char address[] = "c1:d2:e3:f4:a5:0a";
    constexpr int others = 20'000;

    // Names the event by which the process that saves, which runs this same test, says that it is at it.
    constexpr wchar_t saverVariable[] = L"VORLINK_TEST_SAVER";

    std::wstring SaverEvent()
    {
        std::wstring name(100, L'\0');
        name.resize(GetEnvironmentVariableW(saverVariable, name.data(), static_cast<DWORD>(name.size())));
        return name;
    }

    std::string const& OtherEntries()
    {
        static std::string const lines = [] {
            std::string text;
            for (int index = 0; index < others; ++index)
            {
                text += "Device " + std::to_string(10'000 + index) + "=Value " + std::to_string(index) + "\n";
            }
            return text;
        }();
        return lines;
    }

    // Lists one device, another one each time, by a number that grows from process to process.
    UINT WINAPI WriteListing(char const* command, UINT)
    {
        static ULONGLONG number = GetTickCount64();
        static int listings = 0;
        std::string const line = command;
        std::ofstream(line.substr(line.find('>') + 1), std::ios::binary)
            << R"(Instance ID:                BTHLE\Dev_c1d2e3f4a5b6\8&1a2b3c4d&0&)" << ++number
            << "\r\nDevice Description:         ?? LE ??\r\n";
        if (++listings == 2) // so one save is done
        {
            HANDLE const event = OpenEventW(EVENT_MODIFY_STATE, FALSE, SaverEvent().c_str());
            SetEvent(event);
            CloseHandle(event);
        }
        return 33;
    }

    // Until the process is killed, or is of no use any more.
    void SaveAgainAndAgain()
    {
        SilentOutput const silent;
        Load(prompt + Device("Tag", address, pairsAtOnce));
        ReplaceImport(LibraryModule(), "Sleep", SleepShortly);
        ReplaceImport(LibraryModule(), "WinExec", WriteListing);
        LibraryThreads::Watch();
        auto const vorlink = MakeVorlink();
        vorlink->Initialize();
        auto const end = std::chrono::steady_clock::now() + patience;
        while (std::chrono::steady_clock::now() < end && LibraryThreads::WaitForAll())
        {
            SimulateDeviceChanges(ClassicId(address).c_str(), "System.Devices.Aep.IsPaired", "false");
            vorlink->PairedDevice("Tag", Host::Callback);
            SimulatorClearTrace();
        }
    }

    class StressStore : public Stress
    {
    protected:
        // Starts the process that saves, and kills it some time when it is at it. False when it did not come to that.
        static bool KillASaver()
        {
            std::wstring const name = L"vorlink-saver-" + std::to_wstring(GetCurrentProcessId());
            HANDLE const saves = CreateEventW(nullptr, TRUE, FALSE, name.c_str());
            SetEnvironmentVariableW(saverVariable, name.c_str());
            std::wstring program(MAX_PATH, L'\0');
            program.resize(GetModuleFileNameW(nullptr, program.data(), MAX_PATH));
            auto const* const test = testing::UnitTest::GetInstance()->current_test_info();
            std::string const filter = std::string(test->test_suite_name()) + "." + test->name();
            std::wstring arguments =
                L"saver --gtest_brief=1 --gtest_filter=" + std::wstring(filter.begin(), filter.end());
            STARTUPINFOW startup{};
            startup.cb = sizeof startup;
            PROCESS_INFORMATION saver{};
            if (!CreateProcessW(program.c_str(), arguments.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                &startup, &saver))
            {
                return false;
            }
            HANDLE const first[] = {saves, saver.hProcess};
            bool const atIt = WaitForMultipleObjects(2, first, FALSE, 20'000) == WAIT_OBJECT_0;
            SpinUpTo(std::chrono::milliseconds(300));
            TerminateProcess(saver.hProcess, killed);
            WaitForSingleObject(saver.hProcess, INFINITE);
            DWORD code = 0;
            GetExitCodeProcess(saver.hProcess, &code);
            CloseHandle(saver.hThread);
            CloseHandle(saver.hProcess);
            CloseHandle(saves);
            return atIt && code == killed;
        }

        static void WriteOtherEntries()
        {
            std::ofstream("MyLEData", std::ios::binary) << OtherEntries();
        }

    private:
        static constexpr UINT killed = 7;
    };
} // namespace

TEST_F(StressStore, OfAKilledProcessIsWhole)
{
    std::filesystem::current_path(DirectoryOfTheTest());
    if (!SaverEvent().empty())
    {
        SaveAgainAndAgain();
        return;
    }
    WriteOtherEntries();
    int missing = 0;
    int empty = 0;
    int cut = 0;
    long long latest = 0;
    while (GoesOn())
    {
        ASSERT_TRUE(KillASaver());
        ++rounds;
        auto const text = ReadFile("MyLEData");
        static std::regex const entry(R"(Tag=(\d+)\n)");
        std::smatch match;
        std::string const own = text.substr(std::min(text.size(), OtherEntries().size()));
        bool const whole = text.starts_with(OtherEntries()) && std::regex_match(own, match, entry);
        long long const number = whole ? std::stoll(match[1]) : 0;
        if (number >= latest && whole)
        {
            events += number > latest ? 1 : 0;
            latest = number;
            continue;
        }
        ++failures;
        ++(!std::filesystem::exists("MyLEData") ? missing : text.empty() ? empty : cut);
        WriteOtherEntries();
    }
    EXPECT_GT(events + failures, 0);
    EXPECT_EQ(failures, 0) << missing << " missing, " << empty << " empty, " << cut << " cut short or of old";
}
