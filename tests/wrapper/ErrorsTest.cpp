// A platform that fails: a code, a sentence, and a process that goes on.
#include "tests/library/FailFast.h"
#include "tests/support/Codes.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/StandIns.h"
#include "tests/support/Trace.h"
#include "tests/wrapper/CHost.h"

#include <gmock/gmock.h>

#include <filesystem>

using namespace test;
using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{
    constexpr auto classNotRegistered = Code(0x80040154);
    constexpr auto noInterface = Code(0x80004002);
    constexpr auto outOfMemory = Code(0x8007000E);

    PairInbox pairs;
    PhoneInbox phones;
    UnpairInbox unpairs;

    std::int32_t Pair(vorlink_t* vorlink)
    {
        return vorlink_pair(vorlink, "Tag", OnPaired, &pairs);
    }

    std::int32_t Watch(vorlink_t* vorlink)
    {
        std::int32_t started = 0;
        auto const code = vorlink_start_phone_watcher(vorlink, OnPhone, &phones, &started);
        EXPECT_EQ(started, code == VORLINK_OK ? 1 : 0);
        return code;
    }

    using FailingMethod = testing::TestWithParam<char const*>;
    using MissingClass = testing::TestWithParam<std::int32_t>;
} // namespace

TEST_P(FailingMethod, IsACodeAndLeavesNothing)
{
    Load(prompt + Device("Tag", tagAddress, pairsAtOnce));
    auto* const vorlink = Open();
    ASSERT_TRUE(SimulateFailure(GetParam(), platformCode)) << SimulatorLastError();
    EXPECT_EQ(Pair(vorlink), VORLINK_PLATFORM_FAILURE);
    EXPECT_EQ(vorlink_last_hresult(), platformCode);
    EXPECT_THAT(vorlink_last_error(), StartsWith("The platform failed: 0x80070490"));
    EXPECT_EQ(pairs.Count(), 0u);
    // The watcher of the failed search runs on, and the end of its enumeration can end the next search.
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(Pair(vorlink), VORLINK_OK) << vorlink_last_error();
    EXPECT_EQ(vorlink_last_hresult(), 0);
    ASSERT_TRUE(pairs.WaitFor(1));
    EXPECT_EQ(pairs.At(0).paired, 1);
}

INSTANTIATE_TEST_SUITE_P(Pair, FailingMethod,
                         testing::Values(createWatcher, "DeviceWatcher.add_Added", "DeviceWatcher.Start",
                                         "DeviceInformation.get_Name", "DeviceInformation.get_Id"),
                         MethodName);

TEST(Errors, ThePhoneWatchersFailureIsACode)
{
    Load(patient + Device("Tag", tagAddress));
    auto* const vorlink = Open();
    ASSERT_TRUE(SimulateFailure(createWatcher, platformCode)) << SimulatorLastError();
    EXPECT_EQ(Watch(vorlink), VORLINK_PLATFORM_FAILURE);
    EXPECT_EQ(vorlink_last_hresult(), platformCode);
    EXPECT_EQ(Watch(vorlink), VORLINK_OK);
    EXPECT_TRUE(phones.WaitFor(1));
}

TEST(Errors, APhonesFailureIsACodeAndLeavesNothing)
{
    Load(patient + Device("Tag", tagAddress, pairsAtOnce));
    auto* const vorlink = Open();
    ASSERT_EQ(Watch(vorlink), VORLINK_OK);
    ASSERT_TRUE(WaitIdle());
    ASSERT_TRUE(SimulateFailure("DeviceInformation.get_Name", platformCode)) << SimulatorLastError();
    EXPECT_EQ(vorlink_pair_phone(vorlink, "Tag", OnPaired, &pairs), VORLINK_PLATFORM_FAILURE);
    EXPECT_EQ(vorlink_last_hresult(), platformCode);
    EXPECT_EQ(pairs.Count(), 0u);
    EXPECT_EQ(vorlink_pair_phone(vorlink, "Tag", OnPaired, &pairs), VORLINK_OK) << vorlink_last_error();
    EXPECT_TRUE(pairs.WaitFor(1));
}

TEST(Errors, MemoryHasACodeOfItsOwn)
{
    Load(prompt);
    auto* const vorlink = Open();
    ASSERT_TRUE(SimulateFailure(createWatcher, outOfMemory)) << SimulatorLastError();
    EXPECT_EQ(Pair(vorlink), VORLINK_OUT_OF_MEMORY);
    EXPECT_STREQ(vorlink_last_error(), "There is not enough memory.");
    EXPECT_EQ(vorlink_last_hresult(), 0);
    EXPECT_EQ(Pair(vorlink), VORLINK_OK);
}

TEST(Errors, AThreadThatDoesNotStartHasACodeOfItsOwn)
{
    Load(patient);
    auto* const vorlink = Open();
    ReplaceImport(LibraryModule(), "CreateThread", RefuseThread);
    EXPECT_EQ(Watch(vorlink), VORLINK_NO_THREAD);
    EXPECT_STREQ(vorlink_last_error(), "The system gave the library no thread.");
}

TEST_P(MissingClass, IsToldToAPerson)
{
    Load(prompt);
    auto* const vorlink = Open();
    ASSERT_TRUE(SimulateFailure("DeviceInformation.GetActivationFactory", GetParam())) << SimulatorLastError();
    EXPECT_EQ(Pair(vorlink), VORLINK_PLATFORM_FAILURE);
    EXPECT_EQ(vorlink_last_hresult(), GetParam());
    EXPECT_THAT(vorlink_last_error(), AllOf(HasSubstr("cannot be activated"), HasSubstr("manifest")));
}

INSTANTIATE_TEST_SUITE_P(Each, MissingClass, testing::Values(classNotRegistered, noInterface));

TEST(Errors, AFailedStopLeavesTheCallbackInPlace)
{
    Load(patient + Device("Tag", tagAddress, "appears-ms = 'never'"));
    auto* const vorlink = Open();
    ASSERT_EQ(Watch(vorlink), VORLINK_OK);
    SimulatorHoldEvents();
    ASSERT_TRUE(SimulateDeviceAppears(tagId.c_str())) << SimulatorLastError();
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Added("));
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Stop", platformCode)) << SimulatorLastError();
    EXPECT_EQ(Watch(vorlink), VORLINK_PLATFORM_FAILURE);
    SimulatorReleaseEvents();
    EXPECT_TRUE(phones.WaitFor(1));
}

TEST(Errors, APlatformThatFailsWhileUnpairingEndsTheProcess)
{
    ExpectFailFast(platformCode, [] {
        Load(prompt);
        auto* const vorlink = Open();
        SimulateFailure(createWatcher, platformCode);
        vorlink_unpair(vorlink, "Tag", OnUnpaired, &unpairs);
    });
}
