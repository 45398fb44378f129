// The LE side of an unpairing, on its own thread, beside the host's next operation on the same object.
#include "tests/library/Stress.h"
#include "tests/library/UnpairHost.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <thread>

using namespace test;

namespace
{
    constexpr char otherAt[] = "a4:c1:38:00:00:0b";
    constexpr int neighbours = 20;

    // The library's own times, the end of a search after 3 seconds among them, are a hundredth.
    BOOL WINAPI QuickTicks(LARGE_INTEGER* ticks)
    {
        BOOL const told = QueryPerformanceCounter(ticks);
        ticks->QuadPart *= 100;
        return told;
    }

    void WINAPI QuickSleep(DWORD milliseconds)
    {
        Sleep(milliseconds < 100 ? milliseconds : milliseconds / 100);
    }

    std::string AddressOf(int neighbour)
    {
        return "5c:f3:70:00:00:" + std::to_string(10 + neighbour);
    }

    void SetPaired(std::string const& id, bool paired)
    {
        EXPECT_TRUE(SimulateDeviceChanges(id.c_str(), "System.Devices.Aep.IsPaired", paired ? "true" : "false"))
            << SimulatorLastError();
    }

    // Calls of the method for others than these, in the trace.
    std::vector<std::string> Strays(char const* method, std::vector<std::string> const& allowed)
    {
        auto calls = Trace({method});
        std::erase_if(calls, [&](std::string const& call) {
            return std::ranges::any_of(allowed, [&](auto const& id) { return call.find(id) != std::string::npos; });
        });
        return calls;
    }

    class StressUnpair : public Stress
    {
    protected:
        std::unique_ptr<Vorlink> vorlink;
        std::thread air;
        std::atomic<bool> isOver = false;

        // "Tag" of both protocols, paired and known; "Other"; and many in whose midst they are looked for.
        void Prepare()
        {
            std::string scenario = PairedTag("'classic', 'le'") +
                                   Device("Other", otherAt, "[device.pairing]\nduration-ms = 1\nstatus = 'Failed'\n");
            for (int neighbour = 0; neighbour < neighbours; ++neighbour)
            {
                scenario += Device("Neighbour", AddressOf(neighbour), "protocols = ['classic', 'le']");
            }
            Load(scenario);
            ReplaceImport(LibraryModule(), "QueryPerformanceCounter", QuickTicks);
            ReplaceImport(LibraryModule(), "Sleep", QuickSleep);
            LibraryThreads::Watch();
            vorlink = MakeVorlink();
            KnowLe(*vorlink, knownTag);
            // As over any radio, something changes all the time, which wakes whoever waits for devices.
            air = std::thread([this] {
                for (bool odd = false; !isOver; odd = !odd)
                {
                    for (auto const& id : {ClassicId(AddressOf(0)), LeId(AddressOf(0))})
                    {
                        SimulateDeviceChanges(id.c_str(), "System.ItemNameDisplay",
                                              odd ? "\"Neighbour\"" : "\"Neighbor\"");
                    }
                    std::this_thread::sleep_for(std::chrono::milliseconds(20));
                }
            });
        }

        // Unpairs the tag and goes on at once with `next`, while the LE side is still sought. A search that an earlier
        // one's end cut short finds nothing and is not reported, which is no failure.
        template <typename Next>
        void UnpairBeside(Next next)
        {
            SetPaired(ClassicId(tagAddress), true);
            SetPaired(LeId(tagAddress), true);
            SimulatorClearTrace();
            auto const before = UnpairHost::Count();
            vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
            bool const found = !Trace({"DeviceInformationPairing.UnpairAsync"}).empty();
            next();
            if (found)
            {
                ++events;
                ASSERT_TRUE(UnpairHost::WaitFor(before + 1)) << "an unpairing without an outcome";
            }
            Count(Strays("DeviceInformationPairing.UnpairAsync", {ClassicId(tagAddress), LeId(tagAddress)}));
            if (LibraryThreads::Count() > 100)
            {
                ASSERT_TRUE(LibraryThreads::WaitForAll());
            }
            ++rounds;
        }

        // What is done to another device than the one that was named.
        void Count(std::vector<std::string> const& calls)
        {
            failures += static_cast<int>(calls.size());
            strays.insert(strays.end(), calls.begin(), calls.end());
            strays.resize(std::min<std::size_t>(strays.size(), 5));
        }

        std::vector<std::string> strays;

        void TearDown() override
        {
            isOver = true;
            if (air.joinable())
            {
                air.join();
            }
            EXPECT_TRUE(LibraryThreads::WaitForAll());
            EXPECT_GT(events, 0);
            EXPECT_EQ(failures, 0) << testing::PrintToString(strays);
        }
    };
} // namespace

TEST_F(StressUnpair, LeSideGoesOnBesideAPairing)
{
    Prepare();
    while (GoesOn())
    {
        ASSERT_NO_FATAL_FAILURE(UnpairBeside([&] {
            auto const before = Host::Count();
            vorlink->PairedDevice("Other", Host::Callback);
            ASSERT_TRUE(Host::WaitFor(before + 1)) << "a pairing without an outcome";
            EXPECT_EQ(Text(Host::At(before).name), "Other");
            Count(Strays("DeviceInformationCustomPairing.PairAsync", {ClassicId(otherAt)}));
        }));
    }
}

TEST_F(StressUnpair, LeSideGoesOnBesideAnotherUnpairing)
{
    Prepare();
    while (GoesOn())
    {
        ASSERT_NO_FATAL_FAILURE(
            UnpairBeside([&] { vorlink->UnpairedCurrent("Nobody", [](bool, int) { ++failures; }); }));
    }
}
