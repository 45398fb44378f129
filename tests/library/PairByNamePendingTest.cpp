// Pairings by name that the platform has not answered when the host calls again.
#include "tests/support/Host.h"
#include "tests/support/Neighbourhood.h"

#include <gtest/gtest.h>

using namespace test;

namespace
{
    constexpr char address[] = "a4:c1:38:5e:22:0f";
} // namespace

TEST(PairByName, UnknownNameLeavesTheNameOfAPendingPairingAndReplacesItsCallback)
{
    Load(prompt + Device("Headset", address, pairsOnDemand));
    auto const vorlink = MakeVorlink();
    vorlink->PairedDevice("Headset", Host::Callback);
    vorlink->PairedDevice("Nobody", OtherHost::Callback);
    EXPECT_EQ(OtherHost::Count(), 1u);
    ASSERT_TRUE(WaitForCall("Accept("));
    ASSERT_TRUE(SimulatePairingCompletes(ClassicId(address).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(OtherHost::WaitFor(2));
    EXPECT_EQ(Text(OtherHost::At(1).name), "Headset");
    EXPECT_EQ(OtherHost::At(1).address, 0xa4c1385e220fu);
    EXPECT_EQ(Host::Count(), 0u);
}

TEST(PairByName, TwoCallsStartTwoCeremoniesAndReportToTheLatestCallback)
{
    Load(prompt + Device("Headset", address, pairsOnDemand) + Device("Speaker", "a4:c1:38:5e:22:10", pairsOnDemand));
    auto const vorlink = MakeVorlink();
    vorlink->PairedDevice("Headset", Host::Callback);
    vorlink->PairedDevice("Speaker", OtherHost::Callback);
    ASSERT_TRUE(WaitForCall("Accept(", 2));
    ASSERT_TRUE(SimulatePairingCompletes(ClassicId(address).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(OtherHost::WaitFor(1));
    ASSERT_TRUE(SimulatePairingCompletes(ClassicId("a4:c1:38:5e:22:10").c_str(), 19)) << SimulatorLastError();
    ASSERT_TRUE(OtherHost::WaitFor(2));
    EXPECT_EQ(Host::Count(), 0u);
    // The earlier ceremony reports its own device's address under the later name.
    EXPECT_EQ(OtherHost::At(0).address, 0xa4c1385e220fu);
    EXPECT_EQ(OtherHost::At(0).paired, 1);
    EXPECT_EQ(Text(OtherHost::At(0).name), "Speaker");
    EXPECT_EQ(OtherHost::At(1).paired, 0);
    EXPECT_EQ(Text(OtherHost::At(1).addressText), "a4c1385e2210");
}

TEST(PairByName, TwoPendingPairingsOfOneNameAreBothReported)
{
    constexpr char other[] = "a4:c1:38:5e:22:10";
    Load(prompt + Device("Headset", address, pairsOnDemand) + Device("Headset", other, pairsOnDemand));
    auto const vorlink = MakeVorlink();
    vorlink->PairedDevice("Headset", Host::Callback);
    ASSERT_TRUE(WaitIdle()); // the other one is queued then, and the next call takes it first
    vorlink->PairedDevice("Headset", Host::Callback);
    ASSERT_TRUE(WaitForCall("Accept(", 2));
    EXPECT_EQ(Host::Count(), 0u);
    ASSERT_TRUE(SimulatePairingCompletes(ClassicId(other).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(Host::WaitFor(1));
    ASSERT_TRUE(SimulatePairingCompletes(ClassicId(address).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(Host::WaitFor(2));
    EXPECT_EQ(Host::At(0).address, 0xa4c1385e2210u);
    EXPECT_EQ(Host::At(1).address, 0xa4c1385e220fu);
    for (std::size_t report = 0; report < 2; ++report)
    {
        EXPECT_EQ(Host::At(report).paired, 1);
        EXPECT_EQ(Text(Host::At(report).name), "Headset");
    }
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(Host::Count(), 2u);
}

TEST(PairByName, SecondCallForTheSameDeviceIsAnsweredByThePlatformAndNotReported)
{
    Load(prompt + Device("Headset", address, pairsOnDemand));
    auto const vorlink = MakeVorlink();
    vorlink->PairedDevice("Headset", Host::Callback);
    ASSERT_TRUE(WaitForCall("Accept("));
    vorlink->PairedDevice("Headset", OtherHost::Callback);
    ASSERT_TRUE(WaitForCall("-> OperationAlreadyInProgress"));
    ASSERT_TRUE(SimulatePairingCompletes(ClassicId(address).c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(OtherHost::WaitFor(1));
    EXPECT_EQ(OtherHost::At(0).paired, 1);
    EXPECT_EQ(Host::Count(), 0u);
}

TEST(PairByName, ReturnsWhileThePlatformIsStillPairing)
{
    Load(prompt + Device("Headset", address, pairsOnDemand));
    MakeVorlink()->PairedDevice("Headset", Host::Callback);
    EXPECT_EQ(Host::Count(), 0u);
    ASSERT_TRUE(WaitForCall("Accept("));
    EXPECT_EQ(Host::Count(), 0u);
}
