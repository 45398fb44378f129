// The phone watcher's life: starting it, the ways it ends, what a stop leaves.
#include "tests/library/PhoneHost.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/StandIns.h"

#include <windows.h>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    std::vector<std::string> WatcherCalls()
    {
        return WithoutTokens(Trace({"DeviceWatcher."}));
    }
} // namespace

TEST(PhoneWatcher, AsksForClassicEndpointsThatCanPairOrArePaired)
{
    Load(patient);
    EXPECT_TRUE(MakeVorlink()->StartIosWatcher(Phones::Callback));
    EXPECT_THAT(Trace({"DeviceInformation.Create"}),
                ElementsAre(R"x(DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties()x"
                            R"x("(System.Devices.Aep.ProtocolId:= "{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}") )x"
                            R"x(AND(System.Devices.Aep.CanPair:= System.StructuredQueryType.Boolean#True OR )x"
                            R"x(System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#True)", )x"
                            R"x(null, AssociationEndpoint) -> #1)x"));
}

TEST(PhoneWatcher, RegistersInOrderAndThenStarts)
{
    Load(patient);
    EXPECT_TRUE(MakeVorlink()->StartIosWatcher(Phones::Callback));
    EXPECT_THAT(WatcherCalls(),
                ElementsAre("DeviceWatcher.add_Added(#1)", "DeviceWatcher.add_Updated(#1)",
                            "DeviceWatcher.add_Removed(#1)", "DeviceWatcher.add_EnumerationCompleted(#1)",
                            "DeviceWatcher.add_Stopped(#1)", "DeviceWatcher.Start(#1)"));
}

TEST(PhoneWatcher, WritesNoRecordOfItsStart)
{
    Load(patient);
    MakeLoggingVorlink()->StartIosWatcher(Phones::Callback);
    EXPECT_FALSE(LogExists());
}

TEST(PhoneWatcher, SecondStartStopsItAndLeavesOneRegistrationAndTheList)
{
    auto const vorlink = Watching(twoPhones);
    SimulatorClearTrace();
    EXPECT_FALSE(vorlink->StartIosWatcher(Phones::Callback));
    EXPECT_THAT(WithoutTokens(Trace({"DeviceWatcher.", "DeviceInformation.Create"})),
                ElementsAre("DeviceWatcher.remove_Added(#1)", "DeviceWatcher.remove_Updated(#1)",
                            "DeviceWatcher.remove_EnumerationCompleted(#1)", "DeviceWatcher.remove_Stopped(#1)",
                            "DeviceWatcher.Stop(#1)"));
    EXPECT_THAT(LogOf("StopIosWatcher"), ElementsAre(StopRecord(2)));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ana", "Ben"));
}

TEST(PhoneWatcher, ThirdStartWatchesAgainWithAnEmptyList)
{
    auto const vorlink = Watching(twoPhones);
    vorlink->StartIosWatcher(Phones::Callback);
    ASSERT_TRUE(SimulateDeviceLeaves(idA.c_str()));
    ASSERT_TRUE(SimulateDeviceLeaves(idB.c_str()));
    SimulatorClearTrace();
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
    ASSERT_TRUE(WaitIdle());
    EXPECT_THAT(WatcherCalls(),
                ElementsAre("DeviceWatcher.add_Added(#2)", "DeviceWatcher.add_Updated(#2)",
                            "DeviceWatcher.add_Removed(#2)", "DeviceWatcher.add_EnumerationCompleted(#2)",
                            "DeviceWatcher.add_Stopped(#2)", "DeviceWatcher.Start(#2)"));
    EXPECT_THAT(Kept(*vorlink), IsEmpty());
}

TEST(PhoneWatcher, OnlyASuccessfulStartBeginsAThread)
{
    ReplaceImport(LibraryModule(), "CreateThread", CountThread);
    Load(patient);
    auto const vorlink = MakeVorlink();
    vorlink->StartIosWatcher(Phones::Callback);
    EXPECT_EQ(threadsStarted, 1);
    vorlink->StartIosWatcher(Phones::Callback);
    EXPECT_EQ(threadsStarted, 1);
    vorlink->StartIosWatcher(Phones::Callback);
    EXPECT_EQ(threadsStarted, 2);
}

TEST(PhoneWatcher, CompletedEnumerationEndsItOnThePlatformsThread)
{
    Load(prompt + twoPhones);
    auto const vorlink = MakeLoggingVorlink();
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
    ASSERT_TRUE(WaitForCall("DeviceWatcher.Stop(#1)"));
    ASSERT_TRUE(WaitIdle());
    EXPECT_THAT(WithoutTokens(Trace({"! DeviceWatcher.", "DeviceWatcher.remove_", "DeviceWatcher.Stop("})),
                ElementsAre("! DeviceWatcher.Added(#1, " + idA + ")", "! DeviceWatcher.Added(#1, " + idB + ")",
                            "! DeviceWatcher.EnumerationCompleted(#1)", "DeviceWatcher.remove_Added(#1)",
                            "DeviceWatcher.remove_Updated(#1)", "DeviceWatcher.remove_EnumerationCompleted(#1)",
                            "DeviceWatcher.remove_Stopped(#1)", "DeviceWatcher.Stop(#1)"));
    for (auto const& line : TraceLines())
    {
        EXPECT_TRUE(line.thread != GetCurrentThreadId() || !line.text.starts_with("DeviceWatcher.Stop("));
    }
    EXPECT_THAT(Log(), ElementsAre(AddedRecord("Ana"), AddedRecord("Ben"), StopRecord(2)));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ana", "Ben"));
}

TEST(PhoneWatcher, CompletedEnumerationLetsTheNextStartWatch)
{
    Load(prompt + twoPhones);
    auto const vorlink = MakeVorlink();
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
    ASSERT_TRUE(WaitForCall("DeviceWatcher.Stop(#1)"));
    ASSERT_TRUE(WaitIdle());
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
    ASSERT_TRUE(WaitForCall("DeviceWatcher.Stop(#2)"));
}

TEST(PhoneWatcher, IsSharedByAllObjects)
{
    auto vorlink = Watching(twoPhones);
    vorlink.reset();
    auto const other = MakeVorlink();
    EXPECT_FALSE(other->StartIosWatcher(OtherPhones::Callback));
    EXPECT_THAT(LogOf("StopIosWatcher"), ElementsAre(StopRecord(2)));
    EXPECT_THAT(Kept(*other), ElementsAre("Ana", "Ben"));
}

TEST(PhoneWatcher, AbortedByThePlatformItStaysStartedForTheLibrary)
{
    auto const vorlink = Watching(twoPhones);
    SimulateWatchersAbort();
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Stopped(#1)"));
    ASSERT_TRUE(WaitIdle());
    EXPECT_FALSE(LogExists() && !LogOf("StopIosWatcher").empty());
    EXPECT_FALSE(vorlink->StartIosWatcher(Phones::Callback));
    EXPECT_THAT(LogOf("StopIosWatcher"), ElementsAre(StopRecord(2)));
}

TEST(PhoneWatcher, UninitializeEmptiesTheListAndLetsItRun)
{
    auto const vorlink = Watching(twoPhones + Device("Cat", addressC, "appears-ms = 'never'"));
    vorlink->Uninitialize();
    EXPECT_THAT(Trace({"DeviceWatcher.Stop("}), IsEmpty());
    EXPECT_THAT(Kept(*vorlink), IsEmpty());
    ASSERT_TRUE(SimulateDeviceAppears(idC.c_str()));
    ASSERT_TRUE(Phones::WaitFor(3));
    ASSERT_TRUE(WaitIdle());
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Cat"));
}

// The platform keeps a stopped watcher for as long as an event of its is under way.
TEST(PhoneWatcher, EventsOfAnEarlierOneAreTakenForTheCurrentOnes)
{
    auto const vorlink = Watching(Device("Ana", addressA, "appears-ms = 'never'"));
    HoldArrival(idA);
    EXPECT_FALSE(vorlink->StartIosWatcher(Phones::Callback));
    ASSERT_TRUE(SimulateDeviceLeaves(idA.c_str()));
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
    EXPECT_THAT(WithoutTokens(Trace({"DeviceWatcher.remove_Removed"})), ElementsAre("DeviceWatcher.remove_Removed(#1)"))
        << "it lives, so it is asked";
    SimulatorReleaseEvents();
    ASSERT_TRUE(Phones::WaitFor(1));
    ASSERT_TRUE(WaitIdle());
    EXPECT_THAT(Trace({"! DeviceWatcher.Added"}), ElementsAre("! DeviceWatcher.Added(#1, " + idA + ")"));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ana"));
}

TEST(PhoneWatcher, CompletionOfAnEarlierOneEndsTheCurrentOne)
{
    auto const vorlink = Watching("");
    SimulatorHoldEvents();
    SimulateEnumerationCompletes();
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.EnumerationCompleted(#1)"));
    EXPECT_FALSE(vorlink->StartIosWatcher(Phones::Callback));
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
    SimulatorReleaseEvents();
    ASSERT_TRUE(WaitForCall("DeviceWatcher.Stop(#2)"));
    ASSERT_TRUE(WaitIdle());
    EXPECT_THAT(LogOf("StopIosWatcher"), ElementsAre(StopRecord(0), StopRecord(0)));
}

TEST(PhoneWatcher, UnloadRevokesWhatIsHeldAndStopsNothing)
{
    Load(patient);
    HMODULE const module = LoadLibraryW(L"vorlink.dll");
    ASSERT_TRUE(module);
    {
        auto const vorlink = MakeVorlink(module);
        // No thread then that would keep the library loaded.
        ASSERT_TRUE(SimulateFailure("DeviceWatcher.Start", platformCode));
        EXPECT_EQ(CodeOfStart(*vorlink), platformCode);
    }
    SimulatorClearTrace();
    ASSERT_TRUE(FreeLibrary(module));
    EXPECT_FALSE(GetModuleHandleW(L"vorlink.dll"));
    EXPECT_THAT(WithoutTokens(Trace()),
                ElementsAre("DeviceWatcher.remove_Stopped(#1)", "DeviceWatcher.remove_EnumerationCompleted(#1)",
                            "DeviceWatcher.remove_Removed(#1)", "DeviceWatcher.remove_Updated(#1)",
                            "DeviceWatcher.remove_Added(#1)"));
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
}
