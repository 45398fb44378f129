// How far a start has come when the platform refuses one of its calls.
#include "pairing/LibraryState.h"
#include "pairing/SubVorlink.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Taker.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <optional>
#include <utility>

using namespace test;
using namespace vorlink;

namespace
{
    // A start in a finished and cancelled run's place that fails at `method`.
    void FailAt(char const* method, SubVorlink& object)
    {
        Load(patient);
        Library().enumerationFinished = true;
        Library().enumerationCancelled = true;
        ASSERT_TRUE(SimulateFailure(method, illegalMethodCall)) << SimulatorLastError();
        EXPECT_THROW(object.StartDiscovery(false, false), winrt::hresult_error);
        EXPECT_TRUE(IsFree(Library().enumerationMutex));
    }

    using DiscoveryFailure = testing::TestWithParam<char const*>;
} // namespace

TEST_P(DiscoveryFailure, LeavesTheWatcherInTheObject)
{
    std::optional<SubVorlink> object(std::in_place);
    FailAt(GetParam(), *object);
    auto const objects = SimulatorLiveObjects();
    object.reset();
    EXPECT_EQ(SimulatorLiveObjects(), objects - 1);
}

INSTANTIATE_TEST_SUITE_P(BehindTheCreation, DiscoveryFailure,
                         testing::Values("DeviceWatcher.add_Added", "DeviceWatcher.add_Updated",
                                         "DeviceWatcher.add_EnumerationCompleted", "DeviceWatcher.Start"),
                         MethodName);

TEST(DiscoveryFailure, OfTheCreationLeavesARunThatIsNotCancelledAndStillFinished)
{
    SubVorlink object;
    FailAt(createWatcher, object);
    EXPECT_FALSE(Library().enumerationCancelled);
    EXPECT_TRUE(Library().enumerationFinished);
}

TEST(DiscoveryFailure, OfTheLastRegistrationLeavesTheRunFinished)
{
    SubVorlink object;
    FailAt("DeviceWatcher.add_EnumerationCompleted", object);
    EXPECT_TRUE(Library().enumerationFinished);
}

TEST(DiscoveryFailure, OfTheStartLeavesTheRunUnfinished)
{
    SubVorlink object;
    FailAt("DeviceWatcher.Start", object);
    EXPECT_FALSE(Library().enumerationFinished);
}
