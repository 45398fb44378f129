// The verbs themselves: what they refuse, and starting over.
#include "tests/simulator/CeremonyClient.h"
#include "tests/simulator/Recorder.h"

#include <thread>

using namespace client;
using testing::HasSubstr;

namespace
{
    constexpr auto nobody = "Bluetooth#Bluetooth00:1a:7d:da:71:13-00:00:00:00:00:00";

    class Verbs : public SimulatorTest
    {
    };
} // namespace

TEST_F(Verbs, RefuseEndpointsThatDoNotExist)
{
    EXPECT_EQ(SimulateDeviceAppears(nobody), 0);
    EXPECT_THAT(SimulatorLastError(), HasSubstr(nobody));
    EXPECT_EQ(SimulateDeviceLeaves(nobody), 0);
    EXPECT_EQ(SimulateDeviceRepeats(nobody), 0);
    EXPECT_EQ(SimulateDeviceChanges(nobody, "System.ItemNameDisplay", "\"x\""), 0);
    EXPECT_EQ(SimulatePairingCompletes(nobody, 0), 0);
    EXPECT_EQ(SimulatePairingFails(nobody, E_FAIL), 0);
    EXPECT_EQ(SimulateUnpairingCompletes(nobody, 0), 0);
    EXPECT_EQ(SimulateUnpairingFails(nobody, E_FAIL), 0);
    EXPECT_EQ(SimulateDeviceAppears(nullptr), 0);
}

TEST_F(Verbs, RefuseArrivalsOfThoseInRangeAndDeparturesOfOthers)
{
    EXPECT_EQ(SimulateDeviceAppears(speaker), 0);
    EXPECT_THAT(SimulatorLastError(), HasSubstr("in range"));
    EXPECT_EQ(SimulateDeviceLeaves(lamp), 0);
    EXPECT_EQ(SimulateDeviceRepeats(lamp), 0);
    EXPECT_THAT(SimulatorLastError(), HasSubstr("not in range"));
    EXPECT_EQ(SimulateDeviceAppears(lamp), 1);
    EXPECT_STREQ(SimulatorLastError(), "");
    EXPECT_EQ(SimulateDeviceAppears(lamp), 0);
    EXPECT_EQ(SimulateDeviceLeaves(speaker), 1);
    EXPECT_EQ(SimulateDeviceLeaves(speaker), 0);
}

TEST_F(Verbs, RefuseValuesAndPropertiesThatAreWrong)
{
    EXPECT_EQ(SimulateDeviceChanges(speaker, "System.NoSuch", "1"), 0);
    EXPECT_EQ(SimulateDeviceChanges(speaker, "System.Devices.Aep.IsPaired", "12"), 0);
    EXPECT_EQ(SimulateDeviceChanges(speaker, "System.Devices.Aep.IsPaired", "]"), 0);
    EXPECT_EQ(SimulateDeviceChanges(speaker, nullptr, "1"), 0);
    EXPECT_EQ(SimulateDeviceChanges(speaker, "System.Devices.Aep.IsPaired", nullptr), 0);
    EXPECT_FALSE(IsPaired(FindDevice(speaker)));
}

TEST_F(Verbs, KeepTheirErrorsPerThread)
{
    SimulateDeviceAppears(nobody);
    std::thread([] { EXPECT_STREQ(SimulatorLastError(), ""); }).join();
    EXPECT_STRNE(SimulatorLastError(), "");
}

TEST_F(Verbs, ChangeNothingOnAFaultyScenario)
{
    auto const watcher = MakeWatcher();
    EXPECT_EQ(SimulateScenario("[[device]]\naddress = 7\n"), 0);
    EXPECT_THAT(SimulatorLastError(), HasSubstr(":2: "));
    EXPECT_EQ(SimulateScenario(nullptr), 0);
    EXPECT_EQ(watcher->Start(), S_OK); // it was not cut off
    EXPECT_EQ(NameOf(FindDevice(speaker)), "Kitchen Speaker");
}

TEST_F(Verbs, CountObjects)
{
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
    auto watcher = MakeWatcher();
    EXPECT_EQ(SimulatorLiveObjects(), 1u);
    watcher.Reset();
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
}

TEST_F(Verbs, WaitForNothingWhenNothingIsUnderWay)
{
    EXPECT_EQ(SimulatorWaitIdle(0), 1);
}

TEST_F(Verbs, WaitOnlyForTimersThatAreDue)
{
    Play(Room("appears-ms = 3600000\n"));
    auto const watcher = MakeWatcher();
    watcher->Start();
    EXPECT_EQ(SimulatorWaitIdle(patience), 1);
}

TEST_F(Verbs, ResetCutsWatchersOff)
{
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    recorder.Heard();
    SimulatorReset();
    EXPECT_EQ(Trace(), "");
    Play(Room());
    SimulateDeviceAppears(lamp);
    SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"x\"");
    EXPECT_THAT(recorder.Heard(), testing::IsEmpty());
    EXPECT_EQ(watcher->Start(), disconnected);
    EXPECT_EQ(watcher->Stop(), S_OK);
    EXPECT_THAT(recorder.Heard(), testing::IsEmpty());
}

TEST_F(Verbs, ResetCutsOffTheUnstartedToo)
{
    auto const watcher = MakeWatcher();
    SimulatorReset();
    EXPECT_EQ(watcher->Start(), disconnected);
}

TEST_F(Verbs, ResetNumbersWatchersAnew)
{
    MakeWatcher();
    MakeWatcher();
    EXPECT_EQ(TraceLines("-> #2").size(), 1u);
    Play(Room());
    MakeWatcher();
    EXPECT_EQ(TraceLines("-> #1").size(), 1u);
}

TEST_F(Verbs, ResetCancelsOperations)
{
    Play(Room("[device.pairing]\nduration-ms = \"never\"\n"));
    Pairer pairer(speaker);
    auto const operation = pairer.Begin();
    std::atomic<AsyncStatus> ended{AsyncStatus::Started};
    operation->put_Completed(On<PairingCompletedHandler>([&](auto*, AsyncStatus status) {
                                 ended = status;
                                 return S_OK;
                             }).Get());
    WaitIdle();
    SimulatorReset();
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Canceled);
    WaitIdle();
    EXPECT_EQ(ended, AsyncStatus::Canceled);
    Play(Room());
    EXPECT_FALSE(IsPaired(FindDevice(speaker)));
}

TEST_F(Verbs, ResetForgetsFailuresAndHolds)
{
    SimulateFailure("DeviceInformation.CreateWatcher", E_FAIL);
    SimulatorHoldEvents();
    Play(Room());
    Com<IDeviceWatcher> watcher;
    EXPECT_EQ(Statics()->CreateWatcher(watcher.Put()), S_OK);
    EXPECT_TRUE(FindDevice(speaker)); // which needs events
}

TEST_F(Verbs, ResetDropsEventsInFlight)
{
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    SimulatorHoldEvents();
    watcher->Start();
    ASSERT_EQ(SimulatorWaitForTrace("! DeviceWatcher.Added(#1", 1, patience), 1);
    SimulatorReset();
    EXPECT_THAT(recorder.Heard(), testing::IsEmpty());
}

TEST_F(Verbs, ResetDoesNotWaitForHandlers)
{
    auto const watcher = MakeWatcher();
    std::atomic<bool> go{false};
    std::atomic<bool> entered{false};
    EventRegistrationToken token{};
    watcher->add_Added(On<AddedHandler>([&](auto*, auto*) {
                           entered = true;
                           while (!go)
                           {
                               std::this_thread::yield();
                           }
                           return S_OK;
                       }).Get(),
                       &token);
    watcher->Start();
    while (!entered)
    {
        std::this_thread::yield();
    }
    SimulatorReset(); // the handler is still running
    go = true;
    WaitIdle();
}

TEST_F(Verbs, ResetMayHappenWhileEverythingMoves)
{
    std::atomic<bool> done{false};
    std::thread mover([&] {
        while (!done)
        {
            SimulateDeviceAppears(lamp);
            SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"a\"");
            SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "\"b\"");
            SimulateDeviceLeaves(lamp);
        }
    });
    for (int round = 0; round < 40; ++round)
    {
        auto const watcher = MakeWatcher();
        Recorder recorder(watcher);
        watcher->Start();
        Play(Room("[device.pairing]\nduration-ms = 1\n"));
        Com<IDeviceInformation> device;
        auto const other = MakeWatcher();
        Recorder second(other);
        other->Start();
        SimulatorReset();
        Play(Room());
        SimulatorWaitIdle(patience);
    }
    done = true;
    mover.join();
    SimulatorReset();
    WaitIdle();
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
}

TEST_F(Verbs, LaterFailureLetsThatManyCallsThrough)
{
    auto const create = [] {
        Com<IDeviceWatcher> watcher;
        return Statics()->CreateWatcher(watcher.Put());
    };
    ASSERT_EQ(SimulateLaterFailure("DeviceInformation.CreateWatcher", 2, E_FAIL), 1);
    ASSERT_EQ(SimulateLaterFailure("DeviceInformation.CreateWatcher", 1, E_ACCESSDENIED), 1);
    std::vector<HRESULT> codes;
    for (int call = 0; call < 6; ++call)
    {
        codes.push_back(create());
    }
    EXPECT_THAT(codes, testing::ElementsAre(S_OK, S_OK, E_FAIL, S_OK, E_ACCESSDENIED, S_OK));
}
