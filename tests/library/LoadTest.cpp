// What loading the library, using it and unloading it again leaves in the process.
#include "tests/support/Host.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <array>
#include <cstdio>

using namespace test;

namespace
{
    // The library loads, makes an object, and is gone again.
    void LoadAndUnload()
    {
        HMODULE const module = LoadLibraryW(L"vorlink.dll");
        ASSERT_TRUE(module);
        MakeVorlink(module)->Uninitialize();
        ASSERT_TRUE(FreeLibrary(module));
        ASSERT_FALSE(GetModuleHandleW(L"vorlink.dll"));
    }

    // What is allocated of all heaps, and in how many blocks.
    struct Allocated
    {
        long long bytes = 0;
        long long blocks = 0;
    };

    Allocated Measure()
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
} // namespace

TEST(Load, AndUnloadLeaveNothingThatGrows)
{
    for (int round = 0; round < 10; ++round)
    {
        LoadAndUnload(); // what the first use of things takes stays
    }
    constexpr int rounds = 100;
    auto const before = Measure();
    for (int round = 0; round < rounds; ++round)
    {
        LoadAndUnload();
    }
    auto const after = Measure();
    std::printf("%lld bytes in %.1f blocks a round\n", (after.bytes - before.bytes) / rounds,
                static_cast<double>(after.blocks - before.blocks) / rounds);
    // What is left is the runtime's own for the host's thread and for its locks, which it makes at their first use.
    EXPECT_LT(after.bytes - before.bytes, rounds * 4096LL);
}
