// Registering handlers, and what becomes of those that are removed or fail.
#include "tests/simulator/Recorder.h"

using namespace test;

namespace
{
    class Handlers : public SimulatorTest
    {
    protected:
        Com<IDeviceWatcher> watcher;
        std::atomic<int> calls = 0;

        void SetUp() override
        {
            SimulatorTest::SetUp();
            watcher = MakeWatcher();
        }

        Com<AddedHandler> Counting(HRESULT answer = S_OK)
        {
            return On<AddedHandler>([this, answer](IDeviceWatcher*, IDeviceInformation*) {
                ++calls;
                return answer;
            });
        }

        EventRegistrationToken Add(Com<AddedHandler> const& handler)
        {
            EventRegistrationToken token{};
            EXPECT_EQ(watcher->add_Added(handler.Get(), &token), S_OK);
            return token;
        }
    };
} // namespace

TEST_F(Handlers, HaveTokensThatDifferAndAreNeverZero)
{
    auto const first = Add(Counting());
    auto const second = Add(Counting());
    EXPECT_NE(first.value, 0);
    EXPECT_NE(second.value, 0);
    EXPECT_NE(first.value, second.value);
}

TEST_F(Handlers, MustNotBeNull)
{
    EventRegistrationToken token{};
    EXPECT_EQ(watcher->add_Added(nullptr, &token), E_INVALIDARG);
    EXPECT_EQ(watcher->add_Updated(nullptr, &token), E_INVALIDARG);
    EXPECT_EQ(watcher->add_Removed(nullptr, &token), E_INVALIDARG);
    EXPECT_EQ(watcher->add_EnumerationCompleted(nullptr, &token), E_INVALIDARG);
    EXPECT_EQ(watcher->add_Stopped(nullptr, &token), E_INVALIDARG);
    EXPECT_EQ(watcher->add_Added(Counting().Get(), nullptr), E_POINTER);
}

TEST_F(Handlers, UnknownTokensAreNoFailure)
{
    EXPECT_EQ(watcher->remove_Added({12345}), S_OK);
    EXPECT_EQ(watcher->remove_Updated({0}), S_OK);
    EXPECT_EQ(watcher->remove_Removed({-1}), S_OK);
    EXPECT_EQ(watcher->remove_EnumerationCompleted({1}), S_OK);
    EXPECT_EQ(watcher->remove_Stopped({1}), S_OK);
}

TEST_F(Handlers, AreNotCalledOnceRemoved)
{
    watcher->remove_Added(Add(Counting()));
    watcher->Start();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(calls, 0);
}

TEST_F(Handlers, MayBeCalledLateWhenRemovedInFlight)
{
    Load(Room({}, {}, "enumeration-completes-ms = 'never'"));
    watcher = MakeWatcher();
    SimulatorHoldEvents();
    auto const token = Add(Counting());
    watcher->Start();
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Added(#1")); // the first device is in flight
    EXPECT_EQ(SimulatorWaitIdle(0), 0);
    EXPECT_EQ(watcher->remove_Added(token), S_OK);
    EXPECT_EQ(calls, 0);
    SimulatorReleaseEvents();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(calls, 1); // the late one; the second device found no handler
}

TEST_F(Handlers, RegisteredInFlightMissTheEvent)
{
    Load(Room({}, {}, "enumeration-completes-ms = 'never'"));
    watcher = MakeWatcher();
    SimulatorHoldEvents();
    Add(On<AddedHandler>([](IDeviceWatcher*, IDeviceInformation*) { return S_OK; }));
    watcher->Start();
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Added(#1"));
    Add(Counting());
    SimulatorReleaseEvents();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(calls, 1); // the second device alone
}

TEST_F(Handlers, OtherFailuresAreIgnoredAndTheNextOnesRun)
{
    Add(Counting(E_FAIL));
    Add(Counting());
    watcher->Start();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(calls, 4);
    EXPECT_EQ(TraceWith("-> 0x80004005").size(), 2u);
}

TEST_F(Handlers, ThatAreDisconnectedAreRemoved)
{
    Add(Counting(disconnected));
    watcher->Start();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(calls, 1);
}

TEST_F(Handlers, AreLetGoOfWhenRemoved)
{
    auto handler = Counting();
    auto const token = Add(handler);
    watcher->remove_Added(token);
    handler->AddRef();
    EXPECT_EQ(handler->Release(), 1u);
}

TEST_F(Handlers, MayRemoveThemselves)
{
    EventRegistrationToken token{};
    watcher->add_Added(On<AddedHandler>([&](IDeviceWatcher* sender, IDeviceInformation*) {
                           ++calls;
                           return sender->remove_Added(token);
                       }).Get(),
                       &token);
    watcher->Start();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(calls, 1);
}
