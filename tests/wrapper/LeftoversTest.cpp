// What stays in the process of handles, of threads that have asked for their errors, and of refused calls.
#include "tests/support/Resources.h"
#include "tests/wrapper/CHost.h"

using namespace test;

namespace
{
    constexpr int rounds = 300;

    // More blocks than before, of many rounds that come after a few.
    template <typename Round>
    long long BlocksLeft(Round round)
    {
        auto const repeat = [&](int times) {
            for (int i = 0; i < times; ++i)
            {
                round();
            }
        };
        repeat(20);
        auto const before = HeapContents();
        repeat(rounds);
        auto const after = HeapContents();
        return after.blocks - before.blocks;
    }

    DWORD WINAPI AskForTheError(void*)
    {
        vorlink_close(nullptr);
        return vorlink_last_error()[0] != '\0' ? 1 : 0;
    }
} // namespace

TEST(Leftovers, OfHandlesThereAreNone)
{
    EXPECT_LT(BlocksLeft([] { vorlink_close(Open()); }), rounds / 3);
}

// The host's own threads, which the compiler's runtime knows nothing of.
TEST(Leftovers, OfThreadsThereAreNone)
{
    auto const left = BlocksLeft([] {
        HANDLE const thread = CreateThread(nullptr, 0, AskForTheError, nullptr, 0, nullptr);
        WaitForSingleObject(thread, INFINITE);
        DWORD code = 0;
        GetExitCodeThread(thread, &code);
        EXPECT_EQ(code, 1u);
        CloseHandle(thread);
    });
    EXPECT_LT(left, rounds / 3);
}

TEST(Leftovers, OfRefusedCallsThereAreNone)
{
    Load(prompt + slowTag);
    auto* const vorlink = Open();
    PairInbox pairs;
    ASSERT_EQ(vorlink_pair(vorlink, "Tag", OnPaired, &pairs), VORLINK_OK);
    std::string const name(1000, 'n');
    auto const left = BlocksLeft([&] {
        EXPECT_EQ(vorlink_pair(vorlink, name.c_str(), OnPaired, &pairs), VORLINK_BUSY);
        EXPECT_EQ(vorlink_pair(vorlink, nullptr, OnPaired, &pairs), VORLINK_INVALID_ARGUMENT);
    });
    EXPECT_LT(left, rounds / 3);
}
