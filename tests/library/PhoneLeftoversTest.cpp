// What many starts and stops of the phone watcher leave in the process.
#include "tests/library/PhoneHost.h"
#include "tests/support/Resources.h"

#include <chrono>
#include <cstdlib>
#include <thread>

using namespace test;

namespace
{
    void Ignore(wchar_t const*, std::uint32_t) {}

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
