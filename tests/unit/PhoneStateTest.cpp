// What the operations of the phone watcher leave in its state.
#include "pairing/PhoneWatcher.h"
#include "tests/support/LogFile.h"
#include "tests/support/Trace.h"
#include "tests/unit/PhoneState.h"

#include <gmock/gmock.h>

using namespace test;
using namespace vorlink;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

TEST(PhoneState, IsIdleAtFirst)
{
    EXPECT_FALSE(Library().IosWatcher);
    EXPECT_EQ(Registrations(), "-----");
    EXPECT_EQ(Library().iosDeviceCallback, nullptr);
}

TEST(PhoneState, HoldsTheWatcherAndItsRegistrationsWhileItRuns)
{
    StartWatching(patient + Device("Ana", phoneAddress));
    EXPECT_TRUE(Library().IosWatcher);
    EXPECT_EQ(Registrations(), "AURES");
    EXPECT_THAT(Kept(), ElementsAre(L"Ana"));
}

TEST(PhoneState, StopLeavesTheRegistrationForRemovedAndTheList)
{
    StartWatching(patient + Device("Ana", phoneAddress));
    StopIosWatcher();
    EXPECT_FALSE(Library().IosWatcher);
    EXPECT_EQ(Registrations(), "--R--");
    EXPECT_THAT(Kept(), ElementsAre(L"Ana"));
}

TEST(PhoneState, StopOfNothingDoesNothing)
{
    Load(patient);
    Library().logEnabled = true;
    StopIosWatcher();
    EXPECT_FALSE(LogExists());
    EXPECT_THAT(Trace(), IsEmpty());
}

TEST(PhoneState, SecondStopDoesNothing)
{
    StartWatching(patient);
    StopIosWatcher();
    SimulatorClearTrace();
    StopIosWatcher();
    EXPECT_THAT(Trace(), IsEmpty());
    EXPECT_THAT(Log(), SizeIs(1));
}

TEST(PhoneState, NextStartRevokesTheRegistrationForRemovedOfAWatcherThatLives)
{
    StartWatching(patient);
    auto const first = Library().IosWatcher;
    StopIosWatcher();
    ASSERT_TRUE(WaitIdle());
    SimulatorClearTrace();
    EXPECT_TRUE(SubVorlink().StartIosWatcher(Phones::Callback));
    EXPECT_THAT(WithoutTokens(Trace({"DeviceWatcher."})),
                ElementsAre("DeviceWatcher.add_Added(#2)", "DeviceWatcher.add_Updated(#2)",
                            "DeviceWatcher.add_Removed(#2)", "DeviceWatcher.remove_Removed(#1)",
                            "DeviceWatcher.add_EnumerationCompleted(#2)", "DeviceWatcher.add_Stopped(#2)",
                            "DeviceWatcher.Start(#2)"));
}

TEST(PhoneState, EveryStartStoresItsCallbackAlsoOneThatStops)
{
    StartWatching(patient);
    EXPECT_EQ(Library().iosDeviceCallback, Phones::Callback);
    EXPECT_FALSE(SubVorlink().StartIosWatcher(OtherPhones::Callback));
    EXPECT_EQ(Library().iosDeviceCallback, OtherPhones::Callback);
    SubVorlink().Uninitialize();
    EXPECT_EQ(Library().iosDeviceCallback, OtherPhones::Callback);
}

TEST(PhoneState, FailedStartLeavesTheWatcherWithItsRegistrations)
{
    Load(patient);
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Start", platformCode));
    EXPECT_EQ(CodeOfStart(), platformCode);
    EXPECT_TRUE(Library().IosWatcher);
    EXPECT_EQ(Registrations(), "AURES");
    // One that the platform lets stop is stopped by the next call.
    Library().IosWatcher.Start();
    EXPECT_FALSE(SubVorlink().StartIosWatcher(Phones::Callback));
    EXPECT_FALSE(Library().IosWatcher);
}

TEST(PhoneState, FailedRegistrationLeavesWhatCameBeforeIt)
{
    Load(patient);
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.add_Removed", platformCode));
    EXPECT_EQ(CodeOfStart(), platformCode);
    EXPECT_TRUE(Library().IosWatcher);
    EXPECT_EQ(Registrations(), "AU---");
}

TEST(PhoneState, FailedStopLeavesTheWatcherWithoutItsRegistrations)
{
    StartWatching(patient);
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Stop", platformCode));
    EXPECT_THROW(StopIosWatcher(), winrt::hresult_error);
    EXPECT_TRUE(Library().IosWatcher);
    EXPECT_EQ(Registrations(), "--R--");
    EXPECT_FALSE(LogExists());
}

TEST(PhoneState, FailedCreationAndFailedStopHaveStoredTheCallback)
{
    Load(patient);
    ASSERT_TRUE(SimulateFailure(createWatcher, platformCode));
    EXPECT_EQ(CodeOfStart(), platformCode);
    EXPECT_EQ(Library().iosDeviceCallback, Phones::Callback);
    Library().iosDeviceCallback = nullptr;
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Start", platformCode));
    EXPECT_EQ(CodeOfStart(), platformCode);
    Library().iosDeviceCallback = nullptr;
    EXPECT_NE(CodeOfStart(), 0); // it was never started, so it does not stop
    EXPECT_EQ(Library().iosDeviceCallback, Phones::Callback);
}
