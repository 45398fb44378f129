// What many starts and stops of the phone watcher leave in the process.
#include "tests/library/PhoneHost.h"

#include <windows.h>
#include <psapi.h>
#include <tlhelp32.h>

#include <chrono>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <thread>
#include <vector>

using namespace test;

namespace
{
    void Ignore(wchar_t const*, std::uint32_t) {}

    DWORD Threads()
    {
        HANDLE const snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0);
        THREADENTRY32 entry{};
        entry.dwSize = sizeof entry;
        DWORD count = 0;
        for (BOOL more = Thread32First(snapshot, &entry); more; more = Thread32Next(snapshot, &entry))
        {
            count += entry.th32OwnerProcessID == GetCurrentProcessId() ? 1u : 0u;
        }
        CloseHandle(snapshot);
        return count;
    }

    struct SystemHandle
    {
        void* object;
        ULONG_PTR process;
        ULONG_PTR value;
        ULONG access;
        USHORT creator;
        USHORT type;
        ULONG attributes;
        ULONG reserved;
    };

    // From the list of all handles, since Wine does not count a process's own.
    std::size_t Handles()
    {
        using Query = LONG(WINAPI*)(int, void*, ULONG, ULONG*);
        auto const query = reinterpret_cast<Query>(
            reinterpret_cast<void*>(GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "NtQuerySystemInformation")));
        constexpr int extendedHandleInformation = 64;
        std::vector<std::byte> buffer(16 * 1024 * 1024);
        ULONG size = 0;
        EXPECT_EQ(query(extendedHandleInformation, buffer.data(), static_cast<ULONG>(buffer.size()), &size), 0);
        ULONG_PTR count = 0;
        std::memcpy(&count, buffer.data(), sizeof count);
        std::size_t own = 0;
        for (ULONG_PTR index = 0; index < count; ++index)
        {
            SystemHandle handle{};
            std::memcpy(&handle, buffer.data() + 2 * sizeof(ULONG_PTR) + index * sizeof handle, sizeof handle);
            own += handle.process == GetCurrentProcessId() ? 1u : 0u;
        }
        return own;
    }

    struct Resources
    {
        std::size_t handles = Handles();
        DWORD threads = Threads();
        std::uint32_t objects = SimulatorLiveObjects();
        SIZE_T bytes = 0;
    };

    Resources Measure()
    {
        Resources resources;
        PROCESS_MEMORY_COUNTERS memory{};
        GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
        resources.bytes = memory.PagefileUsage;
        return resources;
    }

    void Print(char const* when, Resources const& resources)
    {
        std::printf("%s: %zu handles, %lu threads, %u objects of the platform, %llu KiB\n", when, resources.handles,
                    resources.threads, resources.objects, static_cast<unsigned long long>(resources.bytes / 1024));
    }

    int Rounds()
    {
        char const* const rounds = std::getenv("VORLINK_TEST_ROUNDS");
        return rounds ? std::atoi(rounds) : 10;
    }

    void StartAndStop(Vorlink& vorlink)
    {
        ASSERT_TRUE(vorlink.StartIosWatcher(Ignore));
        ASSERT_TRUE(WaitIdle());
        ASSERT_FALSE(vorlink.StartIosWatcher(Ignore));
        ASSERT_TRUE(WaitIdle());
        SimulatorClearTrace();
    }
} // namespace

// VORLINK_TEST_ROUNDS: how often, for a longer look than the tests' own.
TEST(SlowPhoneLeftovers, AreNoneOnceTheThreadsHaveEnded)
{
    Load(patient + Device("Ana", addressA));
    auto const vorlink = MakeVorlink();
    StartAndStop(*vorlink); // what the first use of things takes stays
    auto const before = Measure();
    Print("after one round", before);
    for (int round = 0; round < Rounds(); ++round)
    {
        StartAndStop(*vorlink);
    }
    Print("after all rounds", Measure());
    auto const limit = std::chrono::steady_clock::now() + std::chrono::seconds(40);
    // The first round's own ends too. The simulated platform may have taken one more or two to its own, for good.
    auto const threads = before.threads - 1 + 2;
    while (Threads() > threads && std::chrono::steady_clock::now() < limit)
    {
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    auto const after = Measure();
    Print("after 25 s", after);
    EXPECT_LE(after.threads, threads);
    EXPECT_LE(after.handles, before.handles + 4) << "that some come late does not hang on the rounds";
    EXPECT_LE(after.objects, before.objects);
}
