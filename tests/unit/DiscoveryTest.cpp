// The start of a run: what it asks of the platform, what it leaves of the run before.
#include "pairing/LibraryState.h"
#include "pairing/SubVorlink.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Taker.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

using namespace test;
using namespace vorlink;
using testing::ElementsAre;
using testing::SizeIs;

namespace
{
    // A run's one request for a watcher.
    struct Run
    {
        char const* name;
        bool le;
        bool allEndpoints;
        char const* arguments;
    };

    void PrintTo(Run const& run, std::ostream* stream)
    {
        *stream << run.name;
    }

    constexpr Run runs[] = {
        {"ClassicPairable", false, false,
         R"x("(System.Devices.Aep.ProtocolId:= "{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}") )x"
         R"x(AND(System.Devices.Aep.CanPair:= System.StructuredQueryType.Boolean#True OR )x"
         R"x(System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#True)", )x"
         "null, AssociationEndpoint"},
        {"ClassicAll", false, true,
         R"x("(System.Devices.Aep.ProtocolId:= "{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}") ", )x"
         R"x(["System.Devices.Aep.DeviceAddress", "System.Devices.Aep.IsConnected"], AssociationEndpoint)x"},
        {"LePairable", true, false,
         R"x("(System.Devices.Aep.ProtocolId:="{bb7bb05e-5972-42b5-94fc-76eaa7084d49}") )x"
         R"x(AND (System.Devices.Aep.CanPair:=System.StructuredQueryType.Boolean#True OR )x"
         R"x(System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#True)", )x"
         "null, AssociationEndpoint"},
        {"LeAll", true, true,
         R"x("(System.Devices.Aep.ProtocolId:="{bb7bb05e-5972-42b5-94fc-76eaa7084d49}") ", )x"
         R"x(["System.Devices.Aep.DeviceAddress", "System.Devices.Aep.IsConnected"], AssociationEndpoint)x"},
    };

    using DiscoveryOf = testing::TestWithParam<Run>;

    std::vector<std::string> CallsOfWatchers()
    {
        return WithoutTokens(Trace({"DeviceWatcher."}));
    }
} // namespace

TEST_P(DiscoveryOf, PassesItsSelectorAndItsProperties)
{
    Load(patient);
    SubVorlink().StartDiscovery(GetParam().le, GetParam().allEndpoints);
    constexpr char create[] = "DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties(";
    EXPECT_THAT(Trace({create}), ElementsAre(create + std::string(GetParam().arguments) + ") -> #1"));
}

INSTANTIATE_TEST_SUITE_P(All, DiscoveryOf, testing::ValuesIn(runs),
                         [](auto const& test) { return std::string(test.param.name); });

TEST(Discovery, CompletedEnumerationFinishesTheRun)
{
    Load(patient);
    SubVorlink object;
    object.StartDiscovery(false, false);
    enumeration::DeviceInformation slot{nullptr};
    auto taker = WaitingTaker(slot);
    EXPECT_FALSE(Library().enumerationFinished);
    SimulateEnumerationCompletes();
    EXPECT_EQ(Result(taker), RunFinished);
}

TEST(Discovery, RegistersInOrderAndThenStarts)
{
    Load(patient);
    SubVorlink object;
    object.StartDiscovery(false, false);
    EXPECT_THAT(CallsOfWatchers(),
                ElementsAre("DeviceWatcher.add_Added(#1)", "DeviceWatcher.add_Updated(#1)",
                            "DeviceWatcher.add_EnumerationCompleted(#1)", "DeviceWatcher.Start(#1)"));
}

TEST(Discovery, NextRunReplacesTheHandlersOfOneWhoseWatcherLivesEventByEvent)
{
    Load(patient);
    SubVorlink first;
    SubVorlink second;
    first.StartDiscovery(false, false); // its watcher lives on in `first`
    SimulatorClearTrace();
    second.StartDiscovery(false, false);
    EXPECT_THAT(CallsOfWatchers(),
                ElementsAre("DeviceWatcher.add_Added(#2)", "DeviceWatcher.remove_Added(#1)",
                            "DeviceWatcher.add_Updated(#2)", "DeviceWatcher.remove_Updated(#1)",
                            "DeviceWatcher.add_EnumerationCompleted(#2)",
                            "DeviceWatcher.remove_EnumerationCompleted(#1)", "DeviceWatcher.Start(#2)"));
}

TEST(Discovery, NextRunOfTheSameObjectReleasesTheWatcherBeforeItRegisters)
{
    Load(patient);
    SubVorlink object;
    object.StartDiscovery(false, false);
    ASSERT_TRUE(WaitIdle());
    auto const objects = SimulatorLiveObjects();
    SimulatorClearTrace();
    object.StartDiscovery(false, false);
    // Neither stopped, nor there any more for its handlers to be removed.
    EXPECT_THAT(CallsOfWatchers(),
                ElementsAre("DeviceWatcher.add_Added(#2)", "DeviceWatcher.add_Updated(#2)",
                            "DeviceWatcher.add_EnumerationCompleted(#2)", "DeviceWatcher.Start(#2)"));
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(SimulatorLiveObjects(), objects);
}

TEST(Discovery, NextRunKeepsWhatTheEarlierOneQueued)
{
    Load(patient + Device("Headset", "a4:c1:38:5e:22:0f"));
    SubVorlink object;
    object.StartDiscovery(false, false);
    ASSERT_TRUE(WaitIdle());
    ASSERT_THAT(Library().deviceQueue, SizeIs(1));
    ASSERT_TRUE(SimulateDeviceLeaves(ClassicId("a4:c1:38:5e:22:0f").c_str()));
    object.StartDiscovery(false, false);
    ASSERT_TRUE(WaitIdle());
    EXPECT_THAT(Library().deviceQueue, SizeIs(1));
}

TEST(Discovery, NextRunIsNoLongerFinishedOrCancelled)
{
    Load(patient);
    Library().enumerationFinished = true;
    Library().enumerationCancelled = true;
    SubVorlink().StartDiscovery(false, false);
    EXPECT_FALSE(Library().enumerationFinished);
    EXPECT_FALSE(Library().enumerationCancelled);
}
