// Pairing and unpairing in turn, in one process and for hosts of the apartments that can wait.
#include "tests/library/UnpairHost.h"

#include <gtest/gtest.h>

#include <windows.h>
#include <objbase.h>

#include <thread>

using namespace test;

namespace
{
    std::string UnpairedTag()
    {
        return prompt +
               Device("Tag", tagAddress, "[device.pairing]\nduration-ms = 20\n[device.unpairing]\nduration-ms = 20");
    }

    // One round, waited for; `round` counts from 1.
    void PairAndUnpair(Vorlink& vorlink, std::size_t round)
    {
        vorlink.PairedDevice("Tag", Host::Callback);
        ASSERT_TRUE(Host::WaitFor(round));
        EXPECT_EQ(Host::At(round - 1).paired, 1);
        vorlink.UnpairedCurrent("Tag", UnpairHost::Callback);
        ASSERT_TRUE(UnpairHost::WaitFor(round));
        EXPECT_TRUE(UnpairHost::At(round - 1).success);
    }
} // namespace

TEST(UnpairRounds, SameDeviceIsPairedAndUnpairedThreeTimesAndPairedAgain)
{
    Load(UnpairedTag());
    auto const vorlink = MakeVorlink();
    for (std::size_t round = 1; round <= 3; ++round)
    {
        ASSERT_NO_FATAL_FAILURE(PairAndUnpair(*vorlink, round)) << "round " << round;
    }
    vorlink->PairedDevice("Tag", Host::Callback);
    ASSERT_TRUE(Host::WaitFor(4));
    EXPECT_EQ(Host::At(3).paired, 1);
}

TEST(UnpairRounds, SecondUnpairingInARowIsNoSuccess)
{
    Load(UnpairedTag());
    auto const vorlink = MakeVorlink();
    ASSERT_NO_FATAL_FAILURE(PairAndUnpair(*vorlink, 1));
    vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
    ASSERT_TRUE(UnpairHost::WaitFor(2));
    EXPECT_FALSE(UnpairHost::At(1).success);
}

TEST(UnpairRounds, MultithreadedHostPairsAndUnpairs)
{
    Load(UnpairedTag());
    auto const vorlink = MakeVorlink();
    std::thread([&] {
        ASSERT_EQ(CoInitializeEx(nullptr, COINIT_MULTITHREADED), S_OK);
        PairAndUnpair(*vorlink, 1);
        CoUninitialize();
    }).join();
    EXPECT_EQ(UnpairHost::Count(), 1u);
}
