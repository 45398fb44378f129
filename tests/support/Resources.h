// What the process holds of the system.
#pragma once

#include "simulator/VorlinkSimulator.h"

#include <gtest/gtest.h>

#include <windows.h>
#include <psapi.h>
#include <tlhelp32.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstdio>

namespace test
{
    inline DWORD Threads()
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

    // By asking for each value that a handle may have: Wine's GetProcessHandleCount says 0, and its list of the handles
    // of all processes is no safe thing to ask for while others come and go.
    inline std::size_t Handles()
    {
        constexpr std::uintptr_t most = 0x4000;
        std::size_t count = 0;
        for (std::uintptr_t value = 4; value < most; value += 4)
        {
            DWORD flags = 0;
            count += GetHandleInformation(reinterpret_cast<HANDLE>(value), &flags) ? 1u : 0u;
        }
        return count;
    }

    struct Allocated
    {
        long long bytes = 0;
        long long blocks = 0;
    };

    // Of all heaps.
    inline Allocated HeapContents()
    {
        std::array<HANDLE, 64> heaps{};
        DWORD const count = GetProcessHeaps(static_cast<DWORD>(heaps.size()), heaps.data());
        EXPECT_LE(count, heaps.size());
        Allocated allocated;
        for (DWORD heap = 0; heap < count; ++heap)
        {
            PROCESS_HEAP_ENTRY entry{};
            while (HeapWalk(heaps[heap], &entry))
            {
                if (entry.wFlags & PROCESS_HEAP_ENTRY_BUSY)
                {
                    allocated.bytes += entry.cbData;
                    ++allocated.blocks;
                }
            }
        }
        return allocated;
    }

    struct Resources
    {
        std::size_t handles = 0;
        DWORD threads = 0;
        std::uint32_t objects = 0; // of the simulated platform
        Allocated heaps;
        long long bytes = 0; // private ones
    };

    inline Resources Measure()
    {
        Resources resources{Handles(), Threads(), SimulatorLiveObjects(), HeapContents(), 0};
        // The extended structure's private bytes are this same number, and Wine leaves them empty.
        PROCESS_MEMORY_COUNTERS memory{};
        GetProcessMemoryInfo(GetCurrentProcess(), &memory, sizeof memory);
        resources.bytes = static_cast<long long>(memory.PagefileUsage);
        return resources;
    }

    inline void Print(char const* when, Resources const& resources)
    {
        std::printf("%s: %zu handles, %lu threads, %u objects of the platform, %lld bytes in %lld blocks, %lld KiB\n",
                    when, resources.handles, resources.threads, resources.objects, resources.heaps.bytes,
                    resources.heaps.blocks, resources.bytes / 1024);
    }
} // namespace test
