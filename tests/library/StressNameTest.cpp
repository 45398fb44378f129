// The name of the device being paired, replaced while the outcome of an earlier pairing is on its way.
#include "tests/library/PhoneHost.h"
#include "tests/library/Stress.h"

#include <array>
#include <cstring>
#include <thread>

using namespace test;

namespace
{
    constexpr int notReadyToPair = 1;
    constexpr std::size_t room = sizeof(PairReport::name) + sizeof(PairReport::addressText);

    // Identifiers without an address, so that a name may fill all of the report.
    std::array<char const*, 2> const ids = {"Bluetooth#A", "Bluetooth#B"};

    std::string NameOf(std::size_t device)
    {
        return std::string(room, static_cast<char>('a' + device));
    }

    // A long text is copied in two halves, as by a thread that loses its processor in between.
    void* CopyByHalves(void* to, void const* from, std::size_t size)
    {
        std::size_t const half = size < room ? 0 : size / 2;
        std::memcpy(to, from, half);
        if (half != 0)
        {
            SwitchToThread();
        }
        std::memcpy(static_cast<char*>(to) + half, static_cast<char const*>(from) + half, size - half);
        return to;
    }

    void Check(PairReport report)
    {
        auto const* const first = reinterpret_cast<char const*>(&report) + offsetof(PairReport, name);
        for (std::size_t index = 1; index < room; ++index)
        {
            if (first[index] != *first)
            {
                ++failures;
                break;
            }
        }
        ++events;
    }

    using StressName = Stress;
} // namespace

TEST_F(StressName, OfEachReportIsWhollyOneOfTheTwo)
{
    std::string scenario = patient;
    for (std::size_t device = 0; device < ids.size(); ++device)
    {
        scenario += Device(NameOf(device), device == 0 ? addressA : addressB,
                           std::string("[device.pairing]\nduration-ms = 'never'\n[device.classic]\nid = '") +
                               ids[device] + "'");
    }
    Load(scenario);
    ReplaceImport(LibraryModule(), "memcpy", CopyByHalves);
    auto const vorlink = MakeVorlink();
    ASSERT_TRUE(vorlink->StartIosWatcher([](wchar_t const*, std::uint32_t) {}));
    ASSERT_TRUE(WaitIdle());

    // As soon as a device has a pairing pending it ends.
    std::atomic<bool> isOver = false;
    std::thread platform([&] {
        while (!isOver)
        {
            for (auto const* const id : ids)
            {
                SimulatePairingCompletes(id, notReadyToPair);
            }
        }
    });
    while (GoesOn() || (events < 2 && !HasFailure()))
    {
        for (std::size_t device = 0; device < ids.size(); ++device)
        {
            vorlink->IosPairedDevicce(NameOf(device), Check);
        }
        ++rounds;
        if (rounds % 100 == 0)
        {
            SimulatorClearTrace();
        }
    }
    isOver = true;
    platform.join();
    EXPECT_GT(events, 1);
    EXPECT_EQ(failures, 0) << "reports with a part of one name and a part of another";
}
