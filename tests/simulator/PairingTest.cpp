// A pairing's outcomes: when they come, and who hears of them.
#include "tests/simulator/CeremonyClient.h"

#include <windows.h>

#include <thread>

using namespace test;

namespace
{
    using Status = DevicePairingResultStatus;

    using Pairing = SimulatorTest;

    class PairingStatus : public SimulatorTest, public testing::WithParamInterface<int>
    {
    };
} // namespace

TEST_P(PairingStatus, IsWhatTheScenarioSays)
{
    LoadPairing("duration-ms = 'never'");
    Pairer pairer(speaker);
    auto const operation = pairer.Begin();
    ASSERT_EQ(SimulatePairingCompletes(speaker, GetParam()), 1) << SimulatorLastError();
    EXPECT_EQ(Pairer::Outcome(operation), GetParam());
    EXPECT_EQ(pairer.requests, 1);
    EXPECT_EQ(IsPaired(FindDevice(speaker)), GetParam() == 0);
    auto const text = TraceWith("DevicePairingResult.get_Status(");
    ASSERT_EQ(text.size(), 1u);
    EXPECT_EQ(text[0].find("-> " + std::to_string(GetParam())) != std::string::npos, GetParam() > 19);
}

INSTANTIATE_TEST_SUITE_P(Every, PairingStatus, testing::Range(0, 21)); // 20 is one that the platform does not define

TEST_F(Pairing, ScenarioStatusComesAfterItsDuration)
{
    LoadPairing("status = 'ConnectionRejected'\nduration-ms = 30");
    Pairer pairer(speaker);
    auto const before = GetTickCount64();
    auto const operation = pairer.Begin();
    std::atomic<bool> completed = false;
    operation->put_Completed(On<PairingCompletedHandler>([&](PairingOperation*, AsyncStatus) {
                                 completed = true;
                                 return S_OK;
                             }).Get());
    while (!completed)
    {
        ASSERT_TRUE(WaitIdle());
        std::this_thread::yield();
        ASSERT_LT(GetTickCount64() - before, patienceInMs);
    }
    EXPECT_GE(GetTickCount64() - before, 15u); // a tick is about 15 ms long
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::ConnectionRejected));
}

TEST_F(Pairing, WithoutDurationIsOverWhenTheCallReturns)
{
    LoadPairing("duration-ms = 0");
    Pairer pairer(speaker);
    auto const operation = pairer.Begin();
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Completed);
    EXPECT_EQ(pairer.requests, 1);
    EXPECT_NE(pairer.thread, GetCurrentThreadId());
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Paired));
}

TEST_F(Pairing, WithoutDurationReturnsAllTheSameWhileTheProgramIsAwaited)
{
    LoadPairing("duration-ms = 0");
    Com<IDeferral> deferral;
    Com<IDevicePairingRequestedEventArgs> kept;
    Pairer pairer(speaker, [&](IDevicePairingRequestedEventArgs* request) {
        kept = Com<IDevicePairingRequestedEventArgs>(request);
        EXPECT_EQ(request->GetDeferral(deferral.Put()), S_OK);
    });
    auto const operation = pairer.Begin();
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Started);
    EXPECT_EQ(kept->Accept(), S_OK);
    EXPECT_EQ(deferral->Complete(), S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Paired));
}

TEST_F(Pairing, WithoutDurationReturnsAllTheSameWhileEventsAreHeld)
{
    LoadPairing("duration-ms = 0");
    Pairer pairer(speaker);
    SimulatorHoldEvents();
    auto const operation = pairer.Begin();
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Started);
    SimulatorReleaseEvents();
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Paired));
}

TEST_F(Pairing, EndpointIsFreeAgainWhenTheCompletionIsHeard)
{
    LoadPairing("status = 'Failed'\nduration-ms = 'never'");
    Pairer pairer(speaker);
    Com<PairingOperation> second;
    auto const first = pairer.Begin();
    first->put_Completed(On<PairingCompletedHandler>([&](PairingOperation*, AsyncStatus) {
                             second = pairer.Begin();
                             return S_OK;
                         }).Get());
    ASSERT_EQ(SimulatePairingCompletes(speaker, Number(Status::Failed)), 1);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(pairer.requests, 2);
    EXPECT_EQ(StatusOf(second), AsyncStatus::Started);
}

TEST_F(Pairing, MayFailAsAnOperation)
{
    LoadPairing("duration-ms = 'never'");
    Pairer pairer(speaker);
    auto const operation = pairer.Begin();
    ASSERT_EQ(SimulatePairingFails(speaker, E_ACCESSDENIED), 1);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Error);
    Com<IDevicePairingResult> result;
    EXPECT_EQ(operation->GetResults(result.Put()), E_ACCESSDENIED);
    EXPECT_FALSE(IsPaired(FindDevice(speaker)));
}

TEST_F(Pairing, TellsWatchers)
{
    LoadPairing("duration-ms = 0");
    auto const all = MakeWatcher();
    auto const unpaired = MakeWatcher("System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#False");
    HearAll(all);
    HearAll(unpaired);
    all->Start();
    unpaired->Start();
    EXPECT_EQ(Pairer(speaker).Pair(), Number(Status::Paired));
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(
        TraceWith("! DeviceWatcher.Updated(#1, " + std::string(speaker) + ", [System.Devices.Aep.IsPaired])").size(),
        1u);
    EXPECT_EQ(TraceWith("! DeviceWatcher.Removed(#2, " + std::string(speaker) + ")").size(), 1u);
}

TEST_F(Pairing, LeavesNothingBehind)
{
    LoadPairing("duration-ms = 0");
    Pairer(speaker).Pair();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
}
