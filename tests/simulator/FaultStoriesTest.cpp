// Faults by name, each as a plain client of the platform meets it.
#include "tests/simulator/BluetoothClient.h"
#include "tests/simulator/CeremonyClient.h"
#include "tests/simulator/Recorder.h"
#include "tests/support/Patience.h"

#include <future>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    using Status = DevicePairingResultStatus;

    constexpr auto secondSpeaker = "Bluetooth#Bluetooth00:1a:7d:da:71:13-a4:c1:38:5e:22:10";
    constexpr auto atOnce = "[device.pairing]\nduration-ms = 0\n[device.unpairing]\nduration-ms = 0\n";
    constexpr auto connectedOnly = "System.Devices.Aep.IsConnected:=System.StructuredQueryType.Boolean#True";

    class FaultStory : public SimulatorTest
    {
    protected:
        static void LoadWhole(std::string const& fault, std::string const& top)
        {
            Load(Room({}, {}, "fault = '" + fault + "'\n" + top));
        }

        // The speaker has the fault.
        static void LoadSpeaker(std::string const& fault, std::string const& keys = {})
        {
            Load(Room("fault = '" + fault + "'\n" + keys));
        }

        static bool WaitForEvent(std::string const& event, std::uint32_t count = 1)
        {
            return WaitForCall("! DeviceWatcher." + event, count);
        }
    };

    std::future<void> EndOf(Com<PairingOperation> const& operation)
    {
        auto const ended = std::make_shared<std::promise<void>>();
        operation->put_Completed(On<PairingCompletedHandler>([ended](PairingOperation*, AsyncStatus) {
                                     ended->set_value();
                                     return S_OK;
                                 }).Get());
        return ended->get_future();
    }
} // namespace

TEST_F(FaultStory, SilentAfterEnumeration)
{
    LoadWhole("silent-after-enumeration", "enumeration-completes-ms = 0");
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedSpeaker, addedMouse, completed));
    ASSERT_EQ(SimulateDeviceAppears(lamp), 1);
    ASSERT_EQ(SimulateDeviceLeaves(speaker), 1);
    EXPECT_THAT(recorder.Heard(), IsEmpty());
}

TEST_F(FaultStory, EndlessEnumeration)
{
    LoadWhole("endless-enumeration", "");
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    EXPECT_EQ(SimulatorWaitForTrace("! DeviceWatcher.EnumerationCompleted(", 1, 600), 0);
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedSpeaker, addedMouse));
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Started);
    SimulateEnumerationCompletes();
    EXPECT_THAT(recorder.Heard(), ElementsAre(completed));
}

TEST_F(FaultStory, LateEvent)
{
    LoadWhole("late-event", "enumeration-completes-ms = 'never'");
    auto const watcher = MakeWatcher();
    std::atomic<bool> removed = false;
    std::atomic<int> late = 0;
    EventRegistrationToken token{};
    watcher->add_Added(On<AddedHandler>([&](auto*, auto*) { return late += removed ? 1 : 0, S_OK; }).Get(), &token);
    watcher->Start();
    ASSERT_TRUE(WaitForEvent("Added(#1, ", 2)) << "side by side";
    watcher->remove_Added(token);
    removed = true;
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(late, 2);
}

TEST_F(FaultStory, RadioOffWhileAWatcherRuns)
{
    LoadWhole("radio-off", "enumeration-completes-ms = 'never'");
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    ASSERT_TRUE(WaitForEvent("Stopped(#1)"));
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedSpeaker, addedMouse, "Stopped in status 5"));
    EXPECT_EQ(Read(RadioOf(DefaultAdapter()), &platform::IRadio::get_State), RadioState::Off);
}

TEST_F(FaultStory, RadioOffWhileADevicePairs)
{
    LoadSpeaker("radio-off", atOnce);
    Pairer pairer(speaker);
    EXPECT_EQ(pairer.Pair(), Number(Status::Failed));
    EXPECT_EQ(pairer.requests, 1);
    EXPECT_EQ(Read(RadioOf(DefaultAdapter()), &platform::IRadio::get_State), RadioState::Off);
    EXPECT_EQ(pairer.Pair(), Number(Status::Failed));
    EXPECT_EQ(pairer.requests, 1) << "refused at once";
}

TEST_F(FaultStory, NoAdapter)
{
    LoadWhole("no-adapter", "enumeration-completes-ms = 0");
    EXPECT_THAT(HeardBy(MakeWatcher()), ElementsAre(completed));
    EXPECT_EQ(SimulateRadioState(1), 0);
}

TEST_F(FaultStory, LateName)
{
    LoadSpeaker("late-name");
    EXPECT_EQ(NameOf(FindDevice(speaker)), "");
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    SimulatorClearTrace();
    watcher->Start();
    ASSERT_TRUE(WaitForEvent("Updated("));
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedSpeaker, addedMouse, completed,
                                              std::string("Updated ") + speaker + " System.ItemNameDisplay"));
}

TEST_F(FaultStory, SeenTwice)
{
    LoadSpeaker("seen-twice");
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    ASSERT_TRUE(WaitForEvent(std::string("Added(#1, ") + speaker, 2));
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedSpeaker, addedMouse, completed, addedSpeaker));
}

TEST_F(FaultStory, TwoProtocols)
{
    LoadSpeaker("two-protocols", atOnce);
    auto const le = LeId("a4:c1:38:5e:22:0f");
    EXPECT_THAT(HeardBy(MakeWatcher()), ElementsAre(addedSpeaker, "Added " + le, addedMouse, completed));
    EXPECT_EQ(NameOf(FindDevice(le)), "Kitchen Speaker");
    EXPECT_EQ(Pairer(speaker).Pair(), Number(Status::Paired));
    EXPECT_FALSE(IsPaired(FindDevice(le)));
}

TEST_F(FaultStory, SharedName)
{
    LoadSpeaker("shared-name");
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    ASSERT_TRUE(WaitForEvent(std::string("Added(#1, ") + secondSpeaker));
    EXPECT_THAT(recorder.Heard(),
                ElementsAre(addedSpeaker, addedMouse, completed, std::string("Added ") + secondSpeaker));
    EXPECT_EQ(NameOf(LookUp(secondSpeaker)), "Kitchen Speaker");
}

TEST_F(FaultStory, LongerName)
{
    LoadSpeaker("longer-name");
    EXPECT_THAT(HeardBy(MakeWatcher()),
                ElementsAre(std::string("Added ") + secondSpeaker, addedSpeaker, addedMouse, completed));
    EXPECT_EQ(NameOf(FindDevice(secondSpeaker)), "Kitchen Speaker 2");
}

TEST_F(FaultStory, AlreadyPaired)
{
    LoadSpeaker("already-paired", atOnce);
    EXPECT_THAT(IdsOf(FindAll(connectedOnly)), ElementsAre(speaker));
    Pairer pairer(speaker);
    EXPECT_TRUE(IsPaired(pairer.device));
    EXPECT_EQ(pairer.Pair(), Number(Status::AlreadyPaired));
    EXPECT_EQ(pairer.requests, 0);
}

TEST_F(FaultStory, LostBond)
{
    LoadSpeaker("lost-bond", atOnce);
    EXPECT_THAT(IdsOf(FindAll(connectedOnly)), IsEmpty());
    Pairer pairer(speaker);
    EXPECT_TRUE(IsPaired(pairer.device));
    EXPECT_EQ(pairer.Pair(), Number(Status::AlreadyPaired));
    EXPECT_EQ(UnpairOutcome(BeginUnpair(pairer.device)), static_cast<int>(DeviceUnpairingResultStatus::Unpaired));
    EXPECT_EQ(pairer.Pair(), Number(Status::Paired));
}

TEST_F(FaultStory, SlowPairing)
{
    LoadSpeaker("slow-pairing");
    Pairer const pairer(speaker);
    auto const operation = pairer.Begin();
    auto const ended = EndOf(operation);
    EXPECT_FALSE(IsReady(ended, moment));
    EXPECT_EQ(pairer.requests, 1);
    ASSERT_EQ(SimulatePairingCompletes(speaker, Number(Status::Paired)), 1);
    EXPECT_TRUE(IsReady(ended, patience));
}

TEST_F(FaultStory, Impatient)
{
    LoadSpeaker("impatient");
    std::promise<void> late;
    auto const until = late.get_future().share();
    Pairer const pairer(speaker, [until](auto* request) {
        until.wait();
        request->Accept();
    });
    auto const operation = pairer.Begin();
    EXPECT_TRUE(IsReady(EndOf(operation), patience));
    late.set_value();
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::AuthenticationTimeout));
    EXPECT_FALSE(IsPaired(FindDevice(speaker)));
}

TEST_F(FaultStory, SystemPrompt)
{
    LoadSpeaker("system-prompt", atOnce);
    Pairer const pairer(speaker);
    EXPECT_EQ(pairer.Pair(), Number(Status::OperationAlreadyInProgress));
    EXPECT_EQ(pairer.requests, 0);
}

TEST_F(FaultStory, OperationError)
{
    LoadSpeaker("operation-error", atOnce);
    Pairer const pairer(speaker);
    auto const operation = pairer.Begin();
    ASSERT_TRUE(IsReady(EndOf(operation), patience));
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Error);
    Com<IDevicePairingResult> result;
    EXPECT_EQ(operation->GetResults(result.Put()), E_FAIL);
}

TEST_F(FaultStory, UnpairingRefused)
{
    LoadSpeaker("unpairing-refused", atOnce);
    EXPECT_EQ(UnpairOutcome(BeginUnpair(FindDevice(speaker))),
              static_cast<int>(DeviceUnpairingResultStatus::AccessDenied));
    EXPECT_TRUE(IsPaired(FindDevice(speaker)));
}

TEST_F(FaultStory, StalePairing)
{
    LoadSpeaker("stale-pairing", atOnce);
    Pairer const pairer(speaker);
    EXPECT_EQ(UnpairOutcome(BeginUnpair(pairer.device)), static_cast<int>(DeviceUnpairingResultStatus::Unpaired));
    EXPECT_EQ(pairer.Pair(), Number(Status::AlreadyPaired));
    EXPECT_TRUE(IsPaired(FindDevice(speaker)));
}
