// The phone watcher's life: starting it, the ways it ends, what a stop leaves.
#include "tests/library/PhoneHost.h"
#include "tests/support/ReplacedImport.h"

#include <windows.h>

#include <atomic>
#include <system_error>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    std::string const two = Device("Ana", addressA) + Device("Ben", addressB);

    std::vector<std::string> WatcherCalls()
    {
        return WithoutTokens(Trace({"DeviceWatcher."}));
    }

    std::atomic<int> threads{0};

    HANDLE WINAPI CountedThread(LPSECURITY_ATTRIBUTES attributes, SIZE_T stack, LPTHREAD_START_ROUTINE start,
                                LPVOID argument, DWORD flags, LPDWORD id)
    {
        ++threads;
        return CreateThread(attributes, stack, start, argument, flags, id);
    }

    HANDLE WINAPI NoThread(LPSECURITY_ATTRIBUTES, SIZE_T, LPTHREAD_START_ROUTINE, LPVOID, DWORD, LPDWORD)
    {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
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
    LoggingVorlink()->StartIosWatcher(Phones::Callback);
    EXPECT_FALSE(LogExists());
}

TEST(PhoneWatcher, SecondStartStopsItAndLeavesOneRegistrationAndTheList)
{
    auto const vorlink = Watching(two);
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
    auto const vorlink = Watching(two);
    vorlink->StartIosWatcher(Phones::Callback);
    ASSERT_TRUE(SimulateDeviceLeaves(idA.c_str()));
    ASSERT_TRUE(SimulateDeviceLeaves(idB.c_str()));
    SimulatorClearTrace();
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
    ASSERT_TRUE(SimulatorWaitIdle(20'000));
    EXPECT_THAT(WatcherCalls(),
                ElementsAre("DeviceWatcher.add_Added(#2)", "DeviceWatcher.add_Updated(#2)",
                            "DeviceWatcher.add_Removed(#2)", "DeviceWatcher.add_EnumerationCompleted(#2)",
                            "DeviceWatcher.add_Stopped(#2)", "DeviceWatcher.Start(#2)"));
    EXPECT_THAT(Kept(*vorlink), IsEmpty());
}

TEST(PhoneWatcher, OnlyASuccessfulStartBeginsAThread)
{
    ReplaceImport(LibraryModule(), "CreateThread", &CountedThread);
    Load(patient);
    auto const vorlink = MakeVorlink();
    vorlink->StartIosWatcher(Phones::Callback);
    EXPECT_EQ(threads, 1);
    vorlink->StartIosWatcher(Phones::Callback);
    EXPECT_EQ(threads, 1);
    vorlink->StartIosWatcher(Phones::Callback);
    EXPECT_EQ(threads, 2);
}

TEST(PhoneWatcher, CompletedEnumerationEndsItOnThePlatformsThread)
{
    Load(prompt + two);
    auto const vorlink = LoggingVorlink();
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
    ASSERT_TRUE(WaitForCall("DeviceWatcher.Stop(#1)"));
    ASSERT_TRUE(SimulatorWaitIdle(20'000));
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
    Load(prompt + two);
    auto const vorlink = MakeVorlink();
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
    ASSERT_TRUE(WaitForCall("DeviceWatcher.Stop(#1)"));
    ASSERT_TRUE(SimulatorWaitIdle(20'000));
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
    ASSERT_TRUE(WaitForCall("DeviceWatcher.Stop(#2)"));
}

TEST(PhoneWatcher, IsSharedByAllObjects)
{
    auto vorlink = Watching(two);
    vorlink.reset();
    auto const other = MakeVorlink();
    EXPECT_FALSE(other->StartIosWatcher(OtherPhones::Callback));
    EXPECT_THAT(LogOf("StopIosWatcher"), ElementsAre(StopRecord(2)));
    EXPECT_THAT(Kept(*other), ElementsAre("Ana", "Ben"));
}

TEST(PhoneWatcher, AbortedByThePlatformItStaysStartedForTheLibrary)
{
    auto const vorlink = Watching(two);
    SimulateWatchersAbort();
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Stopped(#1)"));
    ASSERT_TRUE(SimulatorWaitIdle(20'000));
    EXPECT_FALSE(LogExists() && !LogOf("StopIosWatcher").empty());
    EXPECT_FALSE(vorlink->StartIosWatcher(Phones::Callback));
    EXPECT_THAT(LogOf("StopIosWatcher"), ElementsAre(StopRecord(2)));
}

TEST(PhoneWatcher, UninitializeEmptiesTheListAndLetsItRun)
{
    auto const vorlink = Watching(two + Device("Cat", addressC, "appears-ms = 'never'"));
    vorlink->Uninitialize();
    EXPECT_THAT(Trace({"DeviceWatcher.Stop("}), IsEmpty());
    EXPECT_THAT(Kept(*vorlink), IsEmpty());
    ASSERT_TRUE(SimulateDeviceAppears(idC.c_str()));
    ASSERT_TRUE(Phones::WaitFor(3));
    ASSERT_TRUE(SimulatorWaitIdle(20'000));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Cat"));
}

TEST(PhoneWatcher, FailedCreationReachesTheHostAndLeavesItIdle)
{
    Load(patient + two);
    auto const vorlink = MakeVorlink();
    ASSERT_TRUE(
        SimulateFailure("DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties", platformCode));
    EXPECT_EQ(CodeOfStart(*vorlink), platformCode);
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
}

TEST(PhoneWatcher, FailedCreationHasStoredTheCallbackAndClearedTheList)
{
    auto const vorlink = Watching(two + Device("Cat", addressC, "appears-ms = 'never'"));
    HoldArrival(idC);
    vorlink->StartIosWatcher(Phones::Callback);
    ASSERT_TRUE(
        SimulateFailure("DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties", platformCode));
    EXPECT_EQ(CodeOf([&] { vorlink->StartIosWatcher(OtherPhones::Callback); }), platformCode);
    EXPECT_THAT(Kept(*vorlink), IsEmpty());
    SimulatorReleaseEvents();
    ASSERT_TRUE(OtherPhones::WaitFor(1));
    EXPECT_THAT(Phones::Names(), ElementsAre(L"Ana", L"Ben"));
}

TEST(PhoneWatcher, FailedStopHasStoredTheCallback)
{
    auto const vorlink = Watching(two + Device("Cat", addressC, "appears-ms = 'never'"));
    HoldArrival(idC);
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Stop", platformCode));
    EXPECT_EQ(CodeOf([&] { vorlink->StartIosWatcher(OtherPhones::Callback); }), platformCode);
    SimulatorReleaseEvents();
    ASSERT_TRUE(OtherPhones::WaitFor(1));
    EXPECT_THAT(Phones::Names(), ElementsAre(L"Ana", L"Ben"));
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
    ASSERT_TRUE(SimulatorWaitIdle(20'000));
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
    ASSERT_TRUE(SimulatorWaitIdle(20'000));
    EXPECT_THAT(LogOf("StopIosWatcher"), ElementsAre(StopRecord(0), StopRecord(0)));
}

namespace
{
    class FailingStart : public testing::TestWithParam<char const*>
    {
    };
} // namespace

// The platform does not stop a watcher that was never started, so its refusal reaches the host then.
TEST_P(FailingStart, ReachesTheHostAndLeavesTheWatcherForTheNextCallToStop)
{
    Load(patient + two);
    auto const vorlink = LoggingVorlink();
    ASSERT_TRUE(SimulateFailure(GetParam(), platformCode)) << SimulatorLastError();
    EXPECT_EQ(CodeOfStart(*vorlink), platformCode);
    SimulatorClearTrace();
    EXPECT_EQ(CodeOfStart(*vorlink), illegalMethodCall);
    EXPECT_THAT(Trace({"DeviceInformation.Create"}), IsEmpty());
    EXPECT_THAT(Trace({"DeviceWatcher.Stop("}), ElementsAre("DeviceWatcher.Stop(#1) -> 0x8000000E"));
    EXPECT_FALSE(LogExists());
}

INSTANTIATE_TEST_SUITE_P(PhoneWatcher, FailingStart,
                         testing::Values("DeviceWatcher.add_Added", "DeviceWatcher.add_Updated",
                                         "DeviceWatcher.add_Removed", "DeviceWatcher.add_EnumerationCompleted",
                                         "DeviceWatcher.add_Stopped", "DeviceWatcher.Start"),
                         [](auto const& test) { return std::string(test.param).substr(sizeof "DeviceWatcher"); });

TEST(PhoneWatcher, FailedStartBeginsNoThread)
{
    ReplaceImport(LibraryModule(), "CreateThread", &CountedThread);
    Load(patient);
    auto const vorlink = MakeVorlink();
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Start", platformCode));
    EXPECT_EQ(CodeOfStart(*vorlink), platformCode);
    EXPECT_EQ(threads, 0);
}

TEST(PhoneWatcher, FailedStopReachesTheHostBehindTheRevokedRegistrationsAndMayBeRepeated)
{
    auto const vorlink = Watching(two);
    SimulatorClearTrace();
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Stop", platformCode));
    EXPECT_EQ(CodeOfStart(*vorlink), platformCode);
    EXPECT_THAT(WithoutTokens(Trace({"DeviceWatcher."})),
                ElementsAre("DeviceWatcher.remove_Added(#1)", "DeviceWatcher.remove_Updated(#1)",
                            "DeviceWatcher.remove_EnumerationCompleted(#1)", "DeviceWatcher.remove_Stopped(#1)",
                            "DeviceWatcher.Stop(#1) -> 0x80070490"));
    EXPECT_THAT(LogOf("StopIosWatcher"), IsEmpty());
    SimulatorClearTrace();
    EXPECT_FALSE(vorlink->StartIosWatcher(Phones::Callback)) << "it was still set";
    EXPECT_THAT(WithoutTokens(Trace({"DeviceWatcher."})), ElementsAre("DeviceWatcher.Stop(#1)"));
    EXPECT_THAT(LogOf("StopIosWatcher"), ElementsAre(StopRecord(2)));
}

TEST(PhoneWatcher, ThreadThatCannotStartReachesTheHostAndLeavesTheWatcherRunning)
{
    Load(patient + two);
    auto const vorlink = LoggingVorlink();
    ReplaceImport(LibraryModule(), "CreateThread", &NoThread);
    try
    {
        vorlink->StartIosWatcher(Phones::Callback);
        ADD_FAILURE() << "no error";
    }
    catch (std::system_error const& error)
    {
        // Not by ==: each statically linked module has a category of its own.
        EXPECT_STREQ(error.code().category().name(), "generic");
        EXPECT_EQ(error.code().value(), static_cast<int>(std::errc::resource_unavailable_try_again));
    }
    ASSERT_TRUE(Phones::WaitFor(2));
    ASSERT_TRUE(SimulatorWaitIdle(20'000));
    EXPECT_FALSE(vorlink->StartIosWatcher(Phones::Callback));
    EXPECT_THAT(LogOf("StopIosWatcher"), ElementsAre(StopRecord(2)));
}

TEST(PhoneWatcher, UnloadRevokesWhatIsHeldAndStopsNothing)
{
    Load(patient);
    HMODULE const module = LoadLibraryW(L"vorlink.dll");
    ASSERT_TRUE(module);
    {
        auto const factory = GetProcAddress(module, "getVorlinkPtr");
        auto const vorlink = reinterpret_cast<std::unique_ptr<Vorlink> (*)()>(reinterpret_cast<void*>(factory))();
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
