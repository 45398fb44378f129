// The operations that set the library up, and the handles.
#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/wrapper/CHost.h"

#include <gmock/gmock.h>

#include <array>
#include <atomic>
#include <cstddef>
#include <set>
#include <thread>

using namespace test;

TEST(SetUp, InitializeAnswersAsTheLibraryDoes)
{
    auto* const vorlink = Open();
    std::int32_t known = -1;
    EXPECT_EQ(vorlink_initialize(vorlink, &known), VORLINK_OK);
    EXPECT_EQ(known, MakeVorlink()->Initialize() ? 1 : 0);
    EXPECT_EQ(vorlink_initialize(vorlink, nullptr), VORLINK_OK);
    EXPECT_EQ(vorlink_uninitialize(vorlink), VORLINK_OK);
}

TEST(SetUp, TheLogIsSwitchedOnAndOff)
{
    Load(prompt);
    auto* const vorlink = Open();
    PairInbox pairs;
    EXPECT_EQ(vorlink_pair(vorlink, "Nobody", OnPaired, &pairs), VORLINK_OK);
    EXPECT_FALSE(LogExists());
    EXPECT_EQ(vorlink_set_log_enabled(vorlink, 2), VORLINK_OK);
    EXPECT_EQ(vorlink_pair(vorlink, "Nobody", OnPaired, &pairs), VORLINK_OK);
    auto const records = Log().size();
    EXPECT_GT(records, 0u);
    EXPECT_EQ(vorlink_set_log_enabled(vorlink, 0), VORLINK_OK);
    EXPECT_EQ(vorlink_pair(vorlink, "Nobody", OnPaired, &pairs), VORLINK_OK);
    EXPECT_EQ(Log().size(), records);
}

TEST(SetUp, EachHandleIsAnotherOne)
{
    auto* const first = Open();
    auto* const second = Open();
    EXPECT_NE(first, second);
    EXPECT_EQ(vorlink_close(first), VORLINK_OK);
    EXPECT_EQ(vorlink_uninitialize(second), VORLINK_OK);
    EXPECT_EQ(vorlink_close(second), VORLINK_OK);
}

TEST(SetUp, ManyThreadsMayBeTheFirstToOpen)
{
    constexpr std::size_t count = 16;
    std::array<vorlink_t*, count> handles{};
    std::array<std::thread, count> threads;
    std::atomic<bool> go = false;
    for (std::size_t i = 0; i < count; ++i)
    {
        threads.at(i) = std::thread([&, i] {
            while (!go)
            {
            }
            EXPECT_EQ(vorlink_open(&handles.at(i)), VORLINK_OK);
        });
    }
    go = true;
    for (auto& thread : threads)
    {
        thread.join();
    }
    EXPECT_EQ(std::set<vorlink_t*>(handles.begin(), handles.end()).size(), count);
    for (auto* const handle : handles)
    {
        EXPECT_EQ(vorlink_close(handle), VORLINK_OK);
    }
}
