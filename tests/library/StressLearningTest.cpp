// Lookups after pairings, several at a time, and beside the host's own reading and emptying of the store.
#include "tests/library/Stress.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/StandIns.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <condition_variable>
#include <fstream>
#include <mutex>
#include <set>
#include <sstream>

using namespace test;
using testing::AllOf;
using testing::EndsWith;
using testing::IsEmpty;
using testing::IsSubsetOf;
using testing::Not;

namespace
{
    constexpr char addressA[] = "c1:d2:e3:f4:a5:0a";
    constexpr char addressB[] = "c1:d2:e3:f4:a5:0b";
    constexpr int loaded = 1'000;

    // Two threads that go on at the same moment. A library that lets one do its work at a time keeps it waiting in
    // vain.
    class Pairs
    {
    public:
        static void Meet()
        {
            std::unique_lock lock(mutex);
            bool const isFirst = ++arrived % 2 != 0;
            int const both = arrived + (isFirst ? 1 : 0);
            changed.notify_all();
            changed.wait_for(lock, std::chrono::milliseconds(50), [&] { return arrived >= both; });
            arrived = std::max(arrived, both); // the next one need not wait for those that have gone
        }

    private:
        static inline std::mutex mutex;
        static inline std::condition_variable changed;
        static inline int arrived = 0;
    };

    // A listing of devices that nobody has seen before, written where the command line sends it.
    UINT WINAPI WriteListing(char const* command, UINT)
    {
        static std::atomic<int> pieces = 0;
        std::string const line = command;
        std::ofstream listing(line.substr(line.find('>') + 1), std::ios::binary);
        for (int device = 0; device < 200; ++device)
        {
            listing << R"(Instance ID:                BTHLE\Dev_c1d2e3f4a5b6\8&1a2b3c4d&0&)"
                    << "Piece " << ++pieces << "\r\nDevice Description:         ?? LE ??\r\n\r\n";
        }
        listing.close();
        ++events;
        Pairs::Meet();
        return 33;
    }

    std::string Key(int index)
    {
        return "Device " + std::to_string(10'000 + index);
    }

    class StressLearning : public Stress
    {
    protected:
        std::unique_ptr<Vorlink> vorlink;

        // Two devices that pair at once, and a store that holds many others.
        void Prepare()
        {
            std::string const pairs = pairsAtOnce;
            Load(prompt + Device("A", addressA, pairs) + Device("B", addressB, pairs));
            std::ofstream store("MyLEData", std::ios::binary);
            for (int index = 0; index < loaded; ++index)
            {
                store << Key(index) << "=Value " << index << '\n';
            }
            store.close();
            ReplaceImport(LibraryModule(), "Sleep", SleepShortly);
            ReplaceImport(LibraryModule(), "WinExec", WriteListing);
            LibraryThreads::Watch();
            vorlink = MakeVorlink();
            vorlink->Initialize();
        }

        // Pairs it anew and waits for the outcome, behind which the lookup begins.
        void Pair(char const* name, char const* address)
        {
            SimulateDeviceChanges(ClassicId(address).c_str(), "System.Devices.Aep.IsPaired", "false");
            auto const before = Host::Count();
            vorlink->PairedDevice(name, Host::Callback);
            if (!Host::WaitFor(before + 1) || !Host::At(before).paired)
            {
                trouble = "a pairing without the outcome";
            }
            SimulatorClearTrace();
        }

        void EndLookups()
        {
            if (!LibraryThreads::WaitForAll())
            {
                trouble = "a lookup without an end";
            }
            ++rounds;
        }

        // What went wrong while nothing could be told on standard output.
        std::string trouble;
    };

    std::vector<std::string> LinesOf(std::string const& text)
    {
        std::istringstream stream(text);
        std::vector<std::string> lines;
        for (std::string line; std::getline(stream, line);)
        {
            lines.push_back(line);
        }
        return lines;
    }
} // namespace

TEST_F(StressLearning, TwoLookupsAtATimeLoseNothing)
{
    {
        SilentOutput const silent; // of the store's echo
        Prepare();
        while (GoesOn() && trouble.empty())
        {
            Pair("A", addressA);
            Pair("B", addressB);
            EndLookups();
        }
    }
    EXPECT_EQ(trouble, "");
    auto const store = ReadFile("MyLEData");
    std::set<std::string> keys;
    for (auto const& line : LinesOf(store))
    {
        auto const end = line.find('=');
        bool const isWhole = end != std::string::npos && end + 1 < line.size();
        failures += isWhole && keys.insert(line.substr(0, end)).second ? 0 : 1;
    }
    for (int index = 0; index < loaded; ++index)
    {
        failures += keys.erase(Key(index)) == 1 ? 0 : 1;
    }
    EXPECT_EQ(failures, 0) << "lines that are cut or double, and devices that are lost";
    EXPECT_THAT(keys, AllOf(Not(IsEmpty()), IsSubsetOf({"A", "B"})));
    EXPECT_THAT(store, EndsWith("\n"));
}

TEST_F(StressLearning, LookupGoesOnBesideTheHostsReadingAndEmptying)
{
    {
        SilentOutput const silent;
        Prepare();
        while (GoesOn() && trouble.empty())
        {
            Pair("A", addressA);
            Pairs::Meet();
            do
            {
                if (Random(1) == 0)
                {
                    vorlink->Uninitialize();
                }
                vorlink->Initialize();
            } while (!LibraryThreads::WaitForAll(std::chrono::milliseconds(0)));
            ++rounds;
        }
    }
    EXPECT_EQ(trouble, "");
    EXPECT_GT(events, 0);
}
