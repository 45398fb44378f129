// Whoever changes a file by its lock loses nobody's change.
#include "simulator/scenario/FileLock.h"

#include <gtest/gtest.h>

#include <fstream>
#include <thread>
#include <vector>

using namespace simulator;

TEST(FileLock, IsHeldByOneAtATime)
{
    auto const count = [] {
        for (int round = 0; round < 25; ++round)
        {
            FileLock const lock("count.txt");
            EXPECT_TRUE(lock.IsHeld());
            int number = 0;
            std::ifstream("count.txt") >> number;
            std::ofstream("count.txt") << number + 1;
        }
    };
    std::vector<std::thread> threads;
    for (int thread = 0; thread < 4; ++thread)
    {
        threads.emplace_back(count);
    }
    for (auto& thread : threads)
    {
        thread.join();
    }
    int number = 0;
    std::ifstream("count.txt") >> number;
    EXPECT_EQ(number, 100);
}

TEST(FileLock, IsNotHeldWhereItsFileCannotBe)
{
    EXPECT_FALSE(FileLock("no/such/folder.txt").IsHeld());
}
