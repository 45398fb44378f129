// What a watcher of the neighbourhood sees, and when it may start and stop.
#include "tests/unit/NeighbourhoodListener.h"

#include <gmock/gmock.h>

#include <thread>

using namespace simulator;
using namespace test;
using platform::DeviceWatcherStatus;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;

namespace
{
    constexpr char name[] = "System.ItemNameDisplay";
    constexpr char canPair[] = "System.Devices.Aep.CanPair:=System.StructuredQueryType.Boolean#True";

    auto Added(char const* id)
    {
        return "added " + std::string(id);
    }

    auto Removed(char const* id)
    {
        return "removed " + std::string(id);
    }

    auto Updated(char const* id)
    {
        return "updated " + std::string(id);
    }
} // namespace

TEST(NeighbourhoodWatch, TellsWhatIsThereAndThenThatThisWasAll)
{
    Live();
    Watcher watcher;
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    EXPECT_THAT(watcher.ToldUpTo("completed"), ElementsAre(Added(speaker), "completed"));
    EXPECT_EQ(StatusOf(*watcher.watching), DeviceWatcherStatus::EnumerationCompleted);
}

TEST(NeighbourhoodWatch, TellsAllThatIsKnownOfWhatIsNew)
{
    Live("", "enumeration-completes-ms = 'never'");
    Watcher watcher;
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    watcher.ToldUpTo(Added(speaker));
    EXPECT_EQ(watcher.LastProperties()[name], Value("Speaker"));
    EXPECT_EQ(watcher.LastProperties()["System.Devices.Aep.DeviceAddress"], Value("00:00:00:00:00:01"));
}

TEST(NeighbourhoodWatch, PassesOverWhatDoesNotMatch)
{
    Live("can-pair = false");
    Watcher watcher(canPair);
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    EXPECT_THAT(watcher.ToldUpTo("completed"), ElementsAre("completed"));
}

TEST(NeighbourhoodWatch, ForWhatNoBluetoothDeviceIsFindsNothing)
{
    Live();
    Watcher watcher("", {}, platform::DeviceInformationKind::DevicePanel);
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    EXPECT_THAT(watcher.ToldUpTo("completed"), ElementsAre("completed"));
}

TEST(NeighbourhoodWatch, ForContainersFindsOneOfBothProtocols)
{
    Live("protocols = ['classic', 'le']\nleaves-ms = 2");
    Watcher watcher("", {}, platform::DeviceInformationKind::AssociationEndpointContainer);
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    constexpr char container[] = "{6f9d2e3b-41c7-5a08-9b6e-000000000001}";
    EXPECT_THAT(watcher.ToldUpTo(Removed(container)), ElementsAre(Added(container), "completed", Removed(container)));
}

TEST(NeighbourhoodWatch, ForDevicesFollowsTheirPairing)
{
    Live("appears-ms = 'never'");
    Watcher watcher("", {}, platform::DeviceInformationKind::Device);
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    constexpr char device[] = R"(BTHENUM\Dev_000000000001\7&2768a9f8&0&BluetoothDevice_000000000001)";
    Happens({speaker, std::nullopt, {{"System.Devices.Aep.IsPaired", true}}});
    Happens({speaker, std::nullopt, {{"System.Devices.Aep.IsConnected", true}}});
    Happens({speaker, std::nullopt, {{"System.Devices.Aep.IsPaired", false}}});
    EXPECT_THAT(watcher.Told(), ElementsAre("completed", Added(device), Removed(device)));
}

TEST(NeighbourhoodWatch, LosesADeviceAtItsTime)
{
    Live("leaves-ms = 1");
    Watcher watcher;
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    EXPECT_THAT(watcher.ToldUpTo(Removed(speaker)), ElementsAre(Added(speaker), "completed", Removed(speaker)));
}

TEST(NeighbourhoodWatch, TellsOfChangesThatItShows)
{
    Live();
    Watcher watcher("", {"system.itemnamedisplay"});
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    watcher.ToldUpTo("completed");
    Happens({speaker, std::nullopt, {{name, "Radio"}, {"System.Devices.Aep.SignalStrength", -40}}});
    watcher.ToldUpTo(Updated(speaker));
    EXPECT_EQ(watcher.LastProperties(), (Properties{{"system.itemnamedisplay", "Radio"}}));
}

TEST(NeighbourhoodWatch, KeepsQuietOfChangesThatItDoesNotShow)
{
    Live();
    Watcher watcher("", {name});
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    watcher.ToldUpTo("completed");
    Happens({speaker, std::nullopt, {{"System.Devices.Aep.SignalStrength", -40}}});
    EXPECT_THAT(watcher.Told(), ElementsAre(Added(speaker), "completed"));
}

TEST(NeighbourhoodWatch, TakesWhatBeginsToMatchAsNewAndWhatCeasesToAsGone)
{
    Live("can-pair = false");
    Watcher watcher(canPair);
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    watcher.ToldUpTo("completed");
    Happens({speaker, std::nullopt, {{std::string(canPairProperty), true}}});
    Happens({speaker, std::nullopt, {{std::string(canPairProperty), false}}});
    EXPECT_THAT(watcher.ToldUpTo(Removed(speaker)), ElementsAre("completed", Added(speaker), Removed(speaker)));
}

TEST(NeighbourhoodWatch, MissesLatecomersWhereTheScenarioSaysSo)
{
    Live("appears-ms = 'never'", "enumeration-completes-ms = 0\nappear-after-completion = false");
    Watcher watcher;
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    watcher.ToldUpTo("completed");
    Happens({speaker, true});
    EXPECT_THAT(watcher.Told(), ElementsAre("completed"));
}

TEST(NeighbourhoodWatch, StartsAnewOnceItHasStopped)
{
    Live();
    Watcher watcher;
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    watcher.ToldUpTo("completed");
    ASSERT_EQ(watcher.Stop(), WatchAnswer::Done);
    watcher.ToldUpTo("stopped");
    EXPECT_EQ(StatusOf(*watcher.watching), DeviceWatcherStatus::Stopped);
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    EXPECT_THAT(watcher.ToldUpTo("completed"),
                ElementsAre(Added(speaker), "completed", "stopped", Added(speaker), "completed"));
}

TEST(NeighbourhoodWatch, NeitherStartsTwiceNorStopsBeforeItHasStarted)
{
    Live();
    Watcher watcher;
    EXPECT_EQ(watcher.Stop(), WatchAnswer::WrongStatus);
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    EXPECT_EQ(watcher.Start(), WatchAnswer::WrongStatus);
}

TEST(NeighbourhoodWatch, WithABlankFilterDoesNotStart)
{
    Live();
    Watcher watcher("  ");
    EXPECT_EQ(watcher.Start(), WatchAnswer::BlankFilter);
    EXPECT_EQ(StatusOf(*watcher.watching), DeviceWatcherStatus::Created);
}

TEST(NeighbourhoodWatch, OfAnEarlierNeighbourhoodFallsSilent)
{
    Live();
    Watcher watcher;
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    watcher.ToldUpTo("completed");
    Live();
    EXPECT_THAT(watcher.Told(), ElementsAre(Added(speaker), "completed"));
    EXPECT_EQ(StatusOf(*watcher.watching), DeviceWatcherStatus::Aborted);
    EXPECT_EQ(watcher.Start(), WatchAnswer::Outdated);
}

TEST(NeighbourhoodWatch, ThatNobodyHoldsEndsByItself)
{
    Live();
    {
        Watcher watcher;
        ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    }
    std::lock_guard const lock(TheNeighbourhood().mutex);
    EXPECT_THAT(TheNeighbourhood().runs, IsEmpty());
}

// Two devices flicker under several watchers, each with several threads: whatever order the threads take, each
// endpoint's own reports alternate.
TEST(NeighbourhoodWatch, OnSeveralThreadsKeepsEachEndpointsOrder)
{
    Live("[[device]]\nname = 'Phone'\naddress = '00:00:00:00:00:02'\n",
         "enumeration-completes-ms = 0\nevent-threads = 4");
    Watcher watchers[3];
    for (auto& watcher : watchers)
    {
        ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    }
    auto const flicker = [](char const* id) {
        for (int round = 0; round < 100; ++round)
        {
            Happens({id, false});
            Happens({id, true});
        }
    };
    std::thread other(flicker, phone);
    flicker(speaker);
    other.join();
    for (auto& watcher : watchers)
    {
        auto const told = watcher.Told();
        EXPECT_THAT(told, Contains("completed"));
        for (auto const* const id : {speaker, phone})
        {
            bool isThere = false;
            for (auto const& line : told)
            {
                if (line == Added(id) || line == Removed(id))
                {
                    EXPECT_NE(isThere, line == Added(id)) << line;
                    isThere = line == Added(id);
                }
            }
            EXPECT_TRUE(isThere);
        }
    }
}

TEST(NeighbourhoodWatch, NotesWhenAnEndpointWasSeen)
{
    auto const lastSeen = std::string(lastSeenProperty);
    Live("appears-ms = 'never'\n[device.properties]\n'" + lastSeen + "' = 2001-01-01T00:00:00Z");
    Watcher watcher("", {lastSeen});
    ASSERT_EQ(watcher.Start(), WatchAnswer::Done);
    EXPECT_THAT(watcher.Told(), ElementsAre("completed"));
    auto const begun = Now();
    Happens({speaker, true});
    EXPECT_THAT(watcher.Told(), ElementsAre("completed", Added(speaker)));
    auto const appeared = std::get<DateTime>(watcher.LastProperties()[lastSeen]);
    EXPECT_GE(appeared, begun);
    EXPECT_LE(appeared, Now());

    Happens({speaker, std::nullopt, {{"System.Devices.Aep.SignalStrength", -40}}}); // which nobody asked for
    EXPECT_THAT(watcher.Told(), ElementsAre("completed", Added(speaker), Updated(speaker)));
    EXPECT_EQ(watcher.LastProperties().size(), 1u);
    EXPECT_GT(std::get<DateTime>(watcher.LastProperties()[lastSeen]), appeared);

    auto const told = DateTime{7};
    Happens({speaker, std::nullopt, {{lastSeen, told}}});
    watcher.Told();
    EXPECT_EQ(watcher.LastProperties()[lastSeen], Value{told});
}

TEST(NeighbourhoodWatch, SeesNothingOfWhatIsAway)
{
    auto const lastSeen = std::string(lastSeenProperty);
    auto const known = [&] {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        return FindNeighbour(neighbourhood, speaker)->endpoint.properties[lastSeen];
    };
    Live("appears-ms = 'never'");
    Happens({speaker, std::nullopt, {{name, "Radio"}}});
    EXPECT_EQ(known(), Value{});
    Happens({speaker, false});
    Happens({speaker, std::nullopt, {{name, "Radio"}}});
    EXPECT_EQ(known(), Value{});
    Happens({speaker, true});
    EXPECT_NE(known(), Value{});
    Live();
    EXPECT_NE(known(), Value{}); // there from the beginning
}
