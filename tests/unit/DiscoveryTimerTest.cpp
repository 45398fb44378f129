// The 3 seconds of wall clock after which a run over all endpoints ends, whatever the machine does meanwhile.
#include "pairing/LibraryState.h"
#include "pairing/SubVorlink.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Taker.h"

#include <gtest/gtest.h>

#include <ctime>

using namespace test;
using namespace vorlink;

namespace
{
    constexpr std::chrono::milliseconds pastTheTimer(3500);

    using DiscoveryOfAll = testing::TestWithParam<bool>;
    using DiscoveryOfPairable = testing::TestWithParam<bool>;

    std::string Protocol(testing::TestParamInfo<bool> const& le)
    {
        return le.param ? "Le" : "Classic";
    }
} // namespace

TEST_P(DiscoveryOfAll, EndsThreeSecondsAfterItsStart)
{
    Load(patient);
    SubVorlink object;
    auto const start = std::clock();
    object.StartDiscovery(GetParam(), true);
    enumeration::DeviceInformation slot{nullptr};
    auto taker = WaitingTaker(slot);
    EXPECT_EQ(Result(taker), RunFinished);
    auto const milliseconds = std::clock() - start;
    EXPECT_GE(milliseconds, 3000);
    EXPECT_LT(milliseconds, 10'000);
}

INSTANTIATE_TEST_SUITE_P(Slow, DiscoveryOfAll, testing::Bool(), Protocol);

TEST_P(DiscoveryOfPairable, HasNoTimer)
{
    Load(patient);
    SubVorlink object;
    object.StartDiscovery(GetParam(), false);
    enumeration::DeviceInformation slot{nullptr};
    auto taker = WaitingTaker(slot);
    EXPECT_FALSE(IsReady(taker, pastTheTimer));
    EXPECT_FALSE(Library().enumerationFinished);
    SimulateEnumerationCompletes();
    EXPECT_EQ(Result(taker), RunFinished);
}

INSTANTIATE_TEST_SUITE_P(Slow, DiscoveryOfPairable, testing::Bool(), Protocol);

TEST(SlowDiscovery, TimerOfAnEarlierRunEndsTheCurrentOne)
{
    Load(patient);
    SubVorlink object;
    object.StartDiscovery(true, true);
    enumeration::DeviceInformation slot{nullptr};
    auto taker = WaitingTaker(slot);
    EXPECT_FALSE(IsReady(taker, std::chrono::milliseconds(1500))); // half of the timer's life
    auto const second = std::clock();
    object.StartDiscovery(true, true);
    EXPECT_EQ(Result(taker), RunFinished);
    EXPECT_LT(std::clock() - second, 3000) << "its own timer ends no sooner";
}
