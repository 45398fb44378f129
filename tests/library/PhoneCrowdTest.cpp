// A crowd of phones that comes, changes and goes while the host searches.
#include "tests/library/PhoneHost.h"
#include "tests/support/ReplacedImport.h"

#include <windows.h>

#include <atomic>
#include <cstdio>
#include <map>
#include <thread>

using namespace test;
using testing::IsEmpty;

namespace
{
    std::string Address(int index)
    {
        char address[18];
        std::snprintf(address, sizeof address, "a4:c1:38:00:%02x:%02x", static_cast<unsigned>(index / 256) & 0xFFu,
                      static_cast<unsigned>(index) & 0xFFu);
        return address;
    }

    void Ignore(wchar_t const*, std::uint32_t) {}

    // The library's clock: on a machine with much to do the crowd may need longer than the watcher's own 25 seconds.
    BOOL WINAPI StandStill(LARGE_INTEGER* ticks)
    {
        ticks->QuadPart = 0;
        return TRUE;
    }

    std::atomic<int> notFound = 0;

    void CountNotFound(PairReport)
    {
        ++notFound;
    }
} // namespace

TEST(PhoneCrowd, SearchAmongItFailsAtMostByTheEndThatCameNearer)
{
    constexpr int crowd = 1000;
    std::string devices;
    for (int index = 0; index < crowd; ++index)
    {
        devices += Device("Phone", Address(index), "appears-ms = 'never'");
    }
    Load(patient + devices);
    auto const vorlink = MakeVorlink();
    ReplaceImport(LibraryModule(), "QueryPerformanceCounter", StandStill);
    ASSERT_TRUE(vorlink->StartIosWatcher(Ignore));

    std::atomic<bool> moved = false;
    // One at a time, so that the searches meet each stage of the crowd.
    auto const forEach = [&](auto move) {
        for (int index = 0; index < crowd; ++index)
        {
            EXPECT_TRUE(move(ClassicId(Address(index)).c_str())) << SimulatorLastError();
            EXPECT_TRUE(WaitIdle());
        }
    };
    std::thread mover([&] {
        forEach([](char const* id) { return SimulateDeviceAppears(id); });
        forEach([](char const* id) { return SimulateDeviceChanges(id, "System.ItemNameDisplay", "\"Other\""); });
        forEach([](char const* id) { return SimulateDeviceLeaves(id); });
        moved = true;
    });

    int searches = 0;
    std::map<std::int32_t, int> failures;
    while (!moved)
    {
        ++searches;
        if (auto const code = CodeOf([&] { vorlink->IosPairedDevicce("Nobody", CountNotFound); }))
        {
            ++failures[code];
        }
        SimulatorClearTrace(); // or it would hold a line for each name that was read
    }
    mover.join();

    std::printf("%d searches, %d without a match, %d beyond the end\n", searches, notFound.load(),
                failures[outOfBounds]);
    EXPECT_EQ(notFound + failures[outOfBounds], searches) << "no other failure, and each search ends once";
    EXPECT_GT(notFound, 0);
    EXPECT_FALSE(vorlink->StartIosWatcher(Ignore));
    vorlink->SetLogEnabled(true);
    EXPECT_THAT(Kept(*vorlink), IsEmpty()) << "all have left";
}
