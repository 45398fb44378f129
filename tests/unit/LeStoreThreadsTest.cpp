// The LE data store under several threads.
#include "pairing/LeStore.h"
#include "pairing/LibraryState.h"
#include "tests/support/CapturedOutput.h"

#include <gmock/gmock.h>

#include <atomic>
#include <fstream>
#include <string>
#include <thread>
#include <vector>

using namespace test;
using namespace vorlink;
using testing::IsEmpty;

// A crash, a lost entry or a torn value otherwise, within few rounds.
TEST(LeStore, ManyThreadsMayUseItsMemoryAtATime)
{
    constexpr int threads = 4;
    constexpr int rounds = 5'000;
    std::atomic<int> wrong = 0;
    std::vector<std::thread> users;
    for (int thread = 0; thread < threads; ++thread)
    {
        users.emplace_back([&, thread] {
            std::string const own = "own" + std::to_string(thread);
            for (int round = 0; round < rounds; ++round)
            {
                std::string const value = std::string(40, 'v') + std::to_string(round);
                ReplaceLeData(own, value);
                wrong += GetLeData(own) == value ? 0 : 1;
                wrong += LeDataHasValue(value) ? 0 : 1;
                wrong += EraseLeData(own) == 1 ? 0 : 1;
            }
        });
    }
    for (auto& user : users)
    {
        user.join();
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_THAT(Library().leDataMap, IsEmpty());
}

TEST(LeStore, ManyThreadsMayUseItsFileAtATime)
{
    constexpr int threads = 4;
    std::string const values[]{std::string(40, 'a'), std::string(40, 'b')};
    std::atomic<int> torn = 0;
    OutputOf([&] {
        std::vector<std::thread> users;
        for (int thread = 0; thread < threads; ++thread)
        {
            users.emplace_back([&, thread] {
                std::string const own = "own" + std::to_string(thread);
                for (int round = 0; round < 20; ++round)
                {
                    ReplaceLeData("shared", values[round % 2]);
                    ReplaceLeData(own, std::to_string(round));
                    auto const read = GetLeData("shared");
                    torn += read == values[0] || read == values[1] ? 0 : 1;
                    torn += GetLeData(own) == std::to_string(round) ? 0 : 1;
                    torn += LeDataHasValue(read.substr(0, 20)) ? 0 : 1;
                    SaveLeData(leDataFile);
                    LoadLeData(leDataFile);
                }
            });
        }
        for (auto& user : users)
        {
            user.join();
        }
    });
    EXPECT_EQ(torn, 0);
    LeData saved;
    std::ifstream file(leDataFile, std::ios::binary);
    std::string echo;
    ReadLeData(file, saved, echo);
    EXPECT_EQ(saved, Library().leDataMap) << "the last save is of the last state";
    EXPECT_EQ(saved.size(), threads + 1u);
}
