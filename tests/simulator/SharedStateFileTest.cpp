// The state file of several processes at once. Each of these tests also plays the other processes: it starts itself
// again, with a role.
#include "tests/host/ChildProcess.h"
#include "tests/simulator/CeremonyClient.h"
#include "tests/support/LogFile.h"

#include <windows.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <future>

using namespace test;
using testing::HasSubstr;

namespace
{
    constexpr wchar_t roleVariable[] = L"VORLINK_TEST_ROLE";

    int Role()
    {
        wchar_t text[8]{};
        GetEnvironmentVariableW(roleVariable, text, 8);
        return _wtoi(text);
    }

    std::string Id(int role)
    {
        return ClassicId("00:00:00:00:00:0" + std::to_string(role));
    }

    // As long as another process replaces it, a file may not open.
    std::string Reread(std::filesystem::path const& file)
    {
        auto text = ReadFile(file.string());
        for (int attempt = 0; attempt < 100 && text.empty(); ++attempt)
        {
            Sleep(1);
            text = ReadFile(file.string());
        }
        return text;
    }

    class SharedStateFile : public SimulatorTest
    {
    protected:
        void SetUp() override
        {
            SimulatorTest::SetUp();
            if (Role() != 0)
            {
                SimulatorReset(); // by the files of whoever started this
                return;
            }
            std::string scenario = prompt;
            for (int role = 1; role < 6; ++role)
            {
                scenario += Device("Device", "00:00:00:00:00:0" + std::to_string(role),
                                   "[device.pairing]\nduration-ms = 0\n[device.unpairing]\nduration-ms = 0");
            }
            std::ofstream("scenario.toml", std::ios::binary) << scenario;
            SetEnvironmentVariableW(L"TEST_PREMATURE_EXIT_FILE", nullptr); // it is this process's
            SetEnvironmentVariableW(L"VORLINK_SCENARIO", (folder / "scenario.toml").c_str());
            SetEnvironmentVariableW(L"VORLINK_SIMULATOR_STATE", (folder / "state.txt").c_str());
            SimulatorReset();
        }

        static PROCESS_INFORMATION StartOther(int role)
        {
            auto const name = L"other" + std::to_wstring(role);
            SetEnvironmentVariableW(roleVariable, std::to_wstring(role).c_str());
            auto* const output = FileForChild(name.c_str());
            auto const process = StartChild(BinFolder() / "simulator_tests.exe",
                                            {std::string("--gtest_filter=SharedStateFile.") +
                                             testing::UnitTest::GetInstance()->current_test_info()->name()},
                                            output, output);
            CloseHandle(output);
            SetEnvironmentVariableW(roleVariable, nullptr);
            return process;
        }

        static std::filesystem::path Named(wchar_t const* variable)
        {
            std::wstring name(32'768, L'\0');
            name.resize(GetEnvironmentVariableW(variable, name.data(), static_cast<DWORD>(name.size())));
            return name;
        }

        std::filesystem::path const folder = std::filesystem::current_path();
    };
} // namespace

TEST_F(SharedStateFile, LosesNoChange)
{
    if (int const role = Role())
    {
        auto const state = Named(L"VORLINK_SIMULATOR_STATE");
        for (int round = 0; round < 8; ++round)
        {
            ASSERT_EQ(Pairer(Id(role)).Pair(), 0);
            ASSERT_THAT("\n" + Reread(state), HasSubstr("\npaired " + Id(role) + "\n"));
            ASSERT_EQ(UnpairOutcome(BeginUnpair(FindDevice(Id(role)))), 0);
            ASSERT_THAT("\n" + Reread(state), HasSubstr("\nunpaired " + Id(role) + "\n"));
        }
        ASSERT_EQ(Pairer(Id(role)).Pair(), 0);
        return;
    }
    PROCESS_INFORMATION others[] = {StartOther(1), StartOther(2), StartOther(3), StartOther(4)};
    for (int role = 1; role < 5; ++role)
    {
        EXPECT_EQ(WaitForEnd(others[role - 1]), 0u) << ReadFile("other" + std::to_string(role));
    }
    EXPECT_EQ(Pairer(Id(5)).Pair(), 0);
    EXPECT_EQ(ReadFile("state.txt"), "paired " + Id(1) + "\npaired " + Id(2) + "\npaired " + Id(3) + "\npaired " +
                                         Id(4) + "\npaired " + Id(5) + "\n");
}

TEST_F(SharedStateFile, IsWaitedForAndFreeWhenItsHolderIsKilled)
{
    if (Role() != 0)
    {
        auto lock = Named(L"VORLINK_SIMULATOR_STATE");
        lock += ".lock";
        auto* const file = CreateFileW(lock.c_str(), GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_WRITE,
                                       nullptr, OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
        OVERLAPPED begin{};
        ASSERT_TRUE(LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &begin));
        std::ofstream(lock.parent_path() / "held") << "held";
        Sleep(INFINITE);
    }
    auto const holder = StartOther(1);
    while (!std::filesystem::exists("held"))
    {
        Sleep(10);
    }
    auto pairing = std::async(std::launch::async, [] { return Pairer(Id(1)).Pair(); });
    EXPECT_EQ(pairing.wait_for(std::chrono::milliseconds(300)), std::future_status::timeout);
    EXPECT_FALSE(std::filesystem::exists("state.txt"));
    TerminateProcess(holder.hProcess, 1);
    WaitForEnd(holder);
    EXPECT_EQ(pairing.get(), 0);
    EXPECT_THAT(ReadFile("state.txt"), HasSubstr("paired " + Id(1) + "\nunpaired " + Id(2)));
}
