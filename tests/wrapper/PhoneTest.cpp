// The phone watcher: names in UTF-8 to the context of the latest start, until it is forgotten.
#include "tests/wrapper/CHost.h"

#include <gmock/gmock.h>

using namespace test;

namespace
{
    PhoneInbox phones;
    PhoneInbox otherPhones;

    std::int32_t Start(vorlink_t* vorlink, PhoneInbox& inbox)
    {
        std::int32_t started = -1;
        EXPECT_EQ(vorlink_start_phone_watcher(vorlink, OnPhone, &inbox, &started), VORLINK_OK) << vorlink_last_error();
        return started;
    }

    std::string const later = Device("Later", secondAddress, "appears-ms = 'never'");

    void MakeLaterAppear()
    {
        ASSERT_TRUE(SimulateDeviceAppears(ClassicId(secondAddress).c_str())) << SimulatorLastError();
        ASSERT_TRUE(WaitIdle());
    }

    struct Blocked
    {
        std::promise<void> entered;
        std::promise<void> mayLeave;
    };

    void VORLINK_C_CALL Block(void* context, char const*)
    {
        auto& blocked = *static_cast<Blocked*>(context);
        blocked.entered.set_value();
        blocked.mayLeave.get_future().wait();
    }
} // namespace

TEST(Phones, AreToldInUtf8)
{
    Load(patient + Device("Zo\u00EB's \U0001F4F1", firstAddress));
    EXPECT_EQ(Start(Open(), phones), 1);
    ASSERT_TRUE(phones.WaitFor(1));
    EXPECT_EQ(phones.At(0), "Zo\u00EB's \U0001F4F1");
    EXPECT_NE(phones.ThreadOf(0), GetCurrentThreadId());
}

TEST(Phones, ASecondStartStopsTheWatcher)
{
    Load(patient + Device("First", firstAddress) + later);
    auto* const vorlink = Open();
    EXPECT_EQ(Start(vorlink, phones), 1);
    ASSERT_TRUE(phones.WaitFor(1));
    EXPECT_EQ(Start(vorlink, otherPhones), 0);
    MakeLaterAppear();
    EXPECT_EQ(phones.Count(), 1u);
    EXPECT_EQ(otherPhones.Count(), 0u);
}

TEST(Phones, ForgottenOnesAreNotTold)
{
    Load(patient + Device("First", firstAddress) + later);
    auto* const vorlink = Open();
    Start(vorlink, phones);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(vorlink_forget(Open(), VORLINK_PHONE_WATCHER), VORLINK_OK) << "another handle's, so nothing";
    EXPECT_EQ(vorlink_forget(vorlink, VORLINK_PHONE_WATCHER), VORLINK_OK);
    MakeLaterAppear();
    EXPECT_EQ(phones.Count(), 1u);
}

TEST(Phones, AnotherHandlesForgettingChangesNothing)
{
    Load(patient + later);
    Start(Open(), phones);
    auto* const other = Open();
    EXPECT_EQ(vorlink_forget(other, VORLINK_PHONE_WATCHER), VORLINK_OK);
    EXPECT_EQ(vorlink_close(other), VORLINK_OK);
    MakeLaterAppear();
    EXPECT_EQ(phones.Count(), 1u);
}

TEST(Phones, AreNotToldAfterTheHandleIsClosed)
{
    Load(patient + later);
    auto* const vorlink = Open();
    Start(vorlink, phones);
    EXPECT_EQ(vorlink_close(vorlink), VORLINK_OK);
    MakeLaterAppear();
    EXPECT_EQ(phones.Count(), 0u);
}

TEST(Phones, ForgettingSaysWhileACallbackRuns)
{
    Load(patient + Device("First", firstAddress));
    auto* const vorlink = Open();
    Blocked blocked;
    std::int32_t started = 0;
    ASSERT_EQ(vorlink_start_phone_watcher(vorlink, Block, &blocked, &started), VORLINK_OK);
    ASSERT_TRUE(IsReady(blocked.entered.get_future(), patience));
    EXPECT_EQ(vorlink_forget(vorlink, VORLINK_PHONE_WATCHER), VORLINK_STILL_RUNNING);
    EXPECT_EQ(vorlink_forget(vorlink, VORLINK_PAIRING), VORLINK_OK) << "of the other kind none runs";
    EXPECT_EQ(vorlink_forget(vorlink, VORLINK_PHONE_WATCHER), VORLINK_STILL_RUNNING) << "still";
    blocked.mayLeave.set_value();
    EXPECT_TRUE(WaitUntil([&] { return vorlink_forget(vorlink, VORLINK_PHONE_WATCHER) == VORLINK_OK; }));
}
