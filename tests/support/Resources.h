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
#include <cstring>
#include <vector>

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

    // From the list of all handles: Wine's GetProcessHandleCount says 0.
    inline std::size_t Handles()
    {
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
