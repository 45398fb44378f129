// A crowd of phones that comes, changes and goes while the platform tells of several at a time.
#include "tests/library/PhoneHost.h"
#include "tests/library/Stress.h"

#include <algorithm>
#include <array>
#include <thread>

using namespace test;

namespace
{
    constexpr auto outOfBounds = static_cast<std::int32_t>(0x8000000B);

    class Crowd
    {
    public:
        static std::string Scenario()
        {
            std::string scenario = patient + "event-threads = 4\n";
            for (int index = 0; index < size; ++index)
            {
                scenario += Device(NameOf(index, false), AddressOf(index), "appears-ms = 'never'");
            }
            return scenario;
        }

        // Some that come, change or go, at once; then waits until the library has heard of it all.
        void Move(int count, int (*random)(int))
        {
            for (int move = 0; move < count; ++move)
            {
                Move(random(size - 1), random(2) == 0);
            }
            EXPECT_TRUE(SimulatorWaitIdle(20'000));
            events += static_cast<int>(Trace({"! DeviceWatcher."}).size());
            SimulatorClearTrace();
        }

        std::vector<std::string> Present() const
        {
            std::vector<std::string> names;
            for (int index = 0; index < size; ++index)
            {
                auto const& phone = phones[static_cast<std::size_t>(index)];
                if (phone.present)
                {
                    names.push_back(NameOf(index, phone.renamed));
                }
            }
            return names;
        }

    private:
        static constexpr int size = 8;

        struct State
        {
            bool present = false;
            bool renamed = false;
        };

        std::array<State, size> phones;

        static std::string NameOf(int index, bool renamed)
        {
            return (renamed ? "Renamed " : "Phone ") + std::to_string(index);
        }

        static std::string AddressOf(int index)
        {
            return "a4:c1:38:00:00:0" + std::to_string(index);
        }

        void Move(int index, bool renames)
        {
            auto& phone = phones[static_cast<std::size_t>(index)];
            auto const id = ClassicId(AddressOf(index));
            if (renames)
            {
                phone.renamed = !phone.renamed;
                auto const name = "\"" + NameOf(index, phone.renamed) + "\"";
                EXPECT_TRUE(SimulateDeviceChanges(id.c_str(), "System.ItemNameDisplay", name.c_str()));
            }
            else
            {
                phone.present = !phone.present;
                EXPECT_TRUE(phone.present ? SimulateDeviceAppears(id.c_str()) : SimulateDeviceLeaves(id.c_str()))
                    << SimulatorLastError();
            }
        }
    };

    std::atomic<int> names{0};

    void CountName(wchar_t const*, std::uint32_t)
    {
        ++names;
    }

    void IgnoreReport(PairReport) {}

    // A list that becomes shorter meanwhile may fail it.
    void Search(Vorlink& vorlink)
    {
        auto const code = CodeOf([&] { vorlink.IosPairedDevicce("Nobody", IgnoreReport); });
        if (code != 0 && code != outOfBounds)
        {
            ++failures;
        }
    }

    using SleepFunction = void WINAPI(DWORD);

    // The watcher's end after 25 seconds does not come.
    void WINAPI SleepForEver(DWORD milliseconds)
    {
        Sleep(milliseconds == 1 ? INFINITE : milliseconds);
    }

    // It comes in its time, but is not looked for a thousand times a second: many starts have many of them.
    void WINAPI SleepLonger(DWORD milliseconds)
    {
        Sleep(milliseconds == 1 ? 50 : milliseconds);
    }

    class StressPhones : public Stress
    {
    protected:
        std::unique_ptr<Vorlink> vorlink;
        Crowd crowd;
        std::thread mover;
        std::atomic<bool> moving{true};

        void Watch(SleepFunction* sleep)
        {
            Load(Crowd::Scenario());
            ReplaceImport(LibraryModule(), "Sleep", sleep);
            vorlink = MakeVorlink();
            ASSERT_TRUE(vorlink->StartIosWatcher(CountName));
        }

        void MoveMeanwhile()
        {
            mover = std::thread([this] {
                while (moving)
                {
                    crowd.Move(16, Random);
                }
            });
        }

        void EndMoving()
        {
            moving = false;
            mover.join();
        }

        // From now on a watcher runs that has met all who are there, and nothing comes from earlier ones.
        void RestartInPeace()
        {
            do
            {
                EXPECT_TRUE(SimulatorWaitIdle(20'000));
                SimulatorClearTrace();
                vorlink->StartIosWatcher(CountName);
                EXPECT_TRUE(SimulatorWaitIdle(20'000));
            } while (!Trace({"DeviceWatcher.Stop("}).empty()); // by this start, or by an earlier one's end
        }

        void ExpectThatThePresentAreKept()
        {
            vorlink->SetLogEnabled(true);
            auto kept = Kept(*vorlink);
            std::ranges::sort(kept);
            auto present = crowd.Present();
            std::ranges::sort(present);
            EXPECT_EQ(kept, present);
        }
    };
} // namespace

TEST_F(StressPhones, ComeChangeAndGoSideBySide)
{
    Watch(SleepForEver);
    while (GoesOn())
    {
        crowd.Move(16, Random);
        ++rounds;
    }
    ExpectThatThePresentAreKept();
}

TEST_F(StressPhones, ComeChangeAndGoWhileTheHostSearchesAndUninitializes)
{
    Watch(SleepForEver);
    MoveMeanwhile();
    while (GoesOn())
    {
        Search(*vorlink);
        if (Random(200) == 0)
        {
            EXPECT_TRUE(vorlink->Uninitialize());
        }
        std::this_thread::yield();
        ++rounds;
    }
    EndMoving();
    RestartInPeace();
    ExpectThatThePresentAreKept();
    EXPECT_EQ(failures, 0);
}

TEST_F(StressPhones, ComeChangeAndGoWhileTheHostStopsAndStarts)
{
    Watch(SleepLonger);
    MoveMeanwhile();
    while (GoesOn())
    {
        vorlink->StartIosWatcher(CountName);
        std::this_thread::sleep_for(std::chrono::milliseconds(Random(50)));
        Search(*vorlink);
        if (Random(4) == 0)
        {
            EXPECT_TRUE(vorlink->Uninitialize());
        }
        ++rounds;
    }
    EndMoving();
    RestartInPeace();
    ExpectThatThePresentAreKept();
    EXPECT_EQ(failures, 0);
}

namespace
{
    // Operations of a host with several threads: one at a time.
    std::mutex operation;
    Vorlink* host = nullptr;

    void CallBack(wchar_t const*, std::uint32_t)
    {
        ++names;
        std::lock_guard const lock(operation);
        Search(*host);
        if (names % 8 == 0)
        {
            host->Uninitialize();
        }
        if (names % 16 == 0)
        {
            host->StartIosWatcher(CallBack);
        }
    }
} // namespace

TEST_F(StressPhones, ComeWhileTheCallbackItselfCallsTheLibrary)
{
    Watch(SleepLonger);
    host = vorlink.get();
    MoveMeanwhile();
    while (GoesOn())
    {
        {
            std::lock_guard const lock(operation);
            vorlink->StartIosWatcher(CallBack);
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(Random(50)));
        ++rounds;
    }
    EndMoving();
    EXPECT_TRUE(SimulatorWaitIdle(20'000));
    EXPECT_GT(names, 0);
    EXPECT_EQ(failures, 0);
}
