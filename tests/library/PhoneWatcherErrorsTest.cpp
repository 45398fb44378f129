// How errors of the platform reach the host that starts or stops the phone watcher, and what they leave.
#include "tests/library/PhoneHost.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/StandIns.h"
#include "tests/support/Trace.h"

#include <windows.h>

#include <system_error>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    using FailingStart = testing::TestWithParam<char const*>;
} // namespace

TEST(PhoneWatcher, FailedCreationReachesTheHostAndLeavesItIdle)
{
    Load(patient + twoPhones);
    auto const vorlink = MakeVorlink();
    ASSERT_TRUE(SimulateFailure(createWatcher, platformCode));
    EXPECT_EQ(CodeOfStart(*vorlink), platformCode);
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
}

TEST(PhoneWatcher, FailedCreationHasStoredTheCallbackAndClearedTheList)
{
    auto const vorlink = Watching(twoPhones + Device("Cat", addressC, "appears-ms = 'never'"));
    HoldArrival(idC);
    vorlink->StartIosWatcher(Phones::Callback);
    ASSERT_TRUE(SimulateFailure(createWatcher, platformCode));
    EXPECT_EQ(CodeOf([&] { vorlink->StartIosWatcher(OtherPhones::Callback); }), platformCode);
    EXPECT_THAT(Kept(*vorlink), IsEmpty());
    SimulatorReleaseEvents();
    ASSERT_TRUE(OtherPhones::WaitFor(1));
    EXPECT_THAT(Phones::Names(), ElementsAre(L"Ana", L"Ben"));
}

TEST(PhoneWatcher, FailedStopHasStoredTheCallback)
{
    auto const vorlink = Watching(twoPhones + Device("Cat", addressC, "appears-ms = 'never'"));
    HoldArrival(idC);
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Stop", platformCode));
    EXPECT_EQ(CodeOf([&] { vorlink->StartIosWatcher(OtherPhones::Callback); }), platformCode);
    SimulatorReleaseEvents();
    ASSERT_TRUE(OtherPhones::WaitFor(1));
    EXPECT_THAT(Phones::Names(), ElementsAre(L"Ana", L"Ben"));
}

// The platform does not stop a watcher that was never started, so its refusal reaches the host then.
TEST_P(FailingStart, ReachesTheHostAndLeavesTheWatcherForTheNextCallToStop)
{
    Load(patient + twoPhones);
    auto const vorlink = MakeLoggingVorlink();
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
                         MethodName);

TEST(PhoneWatcher, FailedStartBeginsNoThread)
{
    ReplaceImport(LibraryModule(), "CreateThread", CountThread);
    Load(patient);
    auto const vorlink = MakeVorlink();
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Start", platformCode));
    EXPECT_EQ(CodeOfStart(*vorlink), platformCode);
    EXPECT_EQ(threadsStarted, 0);
}

TEST(PhoneWatcher, FailedStopReachesTheHostBehindTheRevokedRegistrationsAndMayBeRepeated)
{
    auto const vorlink = Watching(twoPhones);
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
    Load(patient + twoPhones);
    auto const vorlink = MakeLoggingVorlink();
    ReplaceImport(LibraryModule(), "CreateThread", RefuseThread);
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
    ASSERT_TRUE(WaitIdle());
    EXPECT_FALSE(vorlink->StartIosWatcher(Phones::Callback));
    EXPECT_THAT(LogOf("StopIosWatcher"), ElementsAre(StopRecord(2)));
}
