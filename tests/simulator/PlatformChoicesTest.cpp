// What the platform's documentation leaves open: each choice as it is by default, and the other way.
#include "tests/simulator/CeremonyClient.h"
#include "tests/simulator/Recorder.h"
#include "tests/support/Patience.h"

#include <future>

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace
{
    using Status = DevicePairingResultStatus;

    constexpr auto prompt = "enumeration-completes-ms = 0\n";

    std::string With(std::string const& choice)
    {
        return std::string(prompt) + "[platform]\n" + choice + "\n";
    }

    void AwaitEnd(Com<PairingOperation> const& operation)
    {
        std::promise<void> ended;
        operation->put_Completed(On<PairingCompletedHandler>([&](PairingOperation*, AsyncStatus) {
                                     ended.set_value();
                                     return S_OK;
                                 }).Get());
        ASSERT_EQ(ended.get_future().wait_for(patience), std::future_status::ready);
    }

    class LateEvents : public SimulatorTest
    {
    protected:
        // A watcher with handlers of Added and Updated alone, once it has completed its enumeration.
        void Listen()
        {
            watcher = MakeWatcher();
            EventRegistrationToken token{};
            watcher->add_Added(On<AddedHandler>([this](auto*, auto*) { return ++added, S_OK; }).Get(), &token);
            watcher->add_Updated(On<UpdateHandler>([this](auto*, auto*) { return ++updated, S_OK; }).Get(), &token);
            ASSERT_EQ(watcher->Start(), S_OK);
            ASSERT_TRUE(WaitIdle());
        }

        void ComeAndChange()
        {
            ASSERT_EQ(SimulateDeviceAppears(lamp), 1);
            ASSERT_EQ(SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "'New'"), 1);
            ASSERT_TRUE(WaitIdle());
        }

        Com<IDeviceWatcher> watcher;
        std::atomic<int> added = 0;
        std::atomic<int> updated = 0;
    };

    class Range : public SimulatorTest
    {
    };

    class Choices : public SimulatorTest
    {
    };
} // namespace

TEST_F(LateEvents, AreForThoseWhoHearOfAllThree)
{
    Listen();
    EXPECT_EQ(added, 2);
    ComeAndChange();
    EXPECT_EQ(added, 2);
    EXPECT_EQ(updated, 0);
    EXPECT_THAT(TraceWith("! DeviceWatcher.Updated"), IsEmpty());

    EventRegistrationToken token{};
    watcher->add_Removed(On<UpdateHandler>([](auto*, auto*) { return S_OK; }).Get(), &token);
    ASSERT_EQ(SimulateDeviceChanges(speaker, "System.ItemNameDisplay", "'Newer'"), 1);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(updated, 1) << "from when the last of the handlers is there";
}

TEST_F(LateEvents, DuringTheEnumerationAreForAnyone)
{
    Load(Room({}, {}, "enumeration-completes-ms = 'never'"));
    Listen();
    ComeAndChange();
    EXPECT_EQ(added, 3);
    EXPECT_EQ(updated, 1);
}

TEST_F(LateEvents, MayBeForAnyone)
{
    Load(Room({}, {}, With("late-events-to-all = true")));
    Listen();
    ComeAndChange();
    EXPECT_EQ(added, 3);
    EXPECT_EQ(updated, 1);
}

TEST_F(Range, IsNeededToPair)
{
    LoadPairing("duration-ms = 0");
    Pairer pairer(speaker);
    ASSERT_EQ(SimulateDeviceLeaves(speaker), 1);
    EXPECT_EQ(pairer.Pair(), Number(Status::Failed));
    EXPECT_EQ(pairer.requests, 0) << "there is nobody to ask";
    ASSERT_EQ(SimulateDeviceAppears(speaker), 1);
    EXPECT_EQ(pairer.Pair(), Number(Status::Paired));
}

TEST_F(Range, IsWhatTheWatcherSawLast)
{
    Load(Room("appears-ms = 1\nleaves-ms = 40\n", {}, "enumeration-completes-ms = 'never'"));
    auto const watcher = MakeWatcher();
    Com<IDeviceInformation> device;
    EventRegistrationToken token{};
    watcher->add_Added(On<AddedHandler>([&](auto*, IDeviceInformation* got) {
                           String id;
                           got->get_Id(id.Put());
                           if (id.Utf8() == speaker)
                           {
                               device = Com<IDeviceInformation>(got);
                           }
                           return S_OK;
                       }).Get(),
                       &token);
    std::atomic<bool> gone = false;
    watcher->add_Removed(On<UpdateHandler>([&](auto*, auto*) { return gone = true, S_OK; }).Get(), &token);
    watcher->Start();
    ASSERT_EQ(SimulatorWaitForTrace("! DeviceWatcher.Removed(", 1, 10000), 1);
    ASSERT_TRUE(WaitIdle());
    ASSERT_TRUE(gone);
    Com<PairingOperation> operation;
    ASSERT_EQ(PairingOf(device)->PairAsync(operation.Put()), S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Failed));
}

TEST_F(Range, LostInTheMiddleFailsThePairing)
{
    LoadPairing("duration-ms = 0");
    Pairer pairer(speaker, [](auto* request) {
        ASSERT_EQ(SimulateDeviceLeaves(speaker), 1);
        request->Accept();
    });
    EXPECT_EQ(pairer.Pair(), Number(Status::Failed));
    EXPECT_EQ(pairer.requests, 1);
    EXPECT_FALSE(IsPaired(pairer.device));
}

TEST_F(Range, HasAStatusOfItsOwn)
{
    Load(Room({}, {}, With("out-of-range-status = 'ConnectionRejected'")));
    Pairer pairer(speaker);
    ASSERT_EQ(SimulateDeviceLeaves(speaker), 1);
    EXPECT_EQ(pairer.Pair(), Number(Status::ConnectionRejected));
}

TEST_F(Range, IsNotNeededToUnpair)
{
    Load(Room({}, "[device.unpairing]\nduration-ms = 0\n"));
    auto const device = FindDevice(mouse);
    ASSERT_EQ(SimulateDeviceLeaves(mouse), 1);
    EXPECT_EQ(UnpairOutcome(BeginUnpair(device)), static_cast<int>(DeviceUnpairingResultStatus::Unpaired));
}

TEST_F(Choices, WrongPinHasAStatus)
{
    Load(Room("[device.pairing]\nkind = 'ProvidePin'\npin = '1234'\n", {},
              With("wrong-pin-status = 'InvalidCeremonyData'")));
    Pairer pairer(speaker, [](auto* request) { request->AcceptWithPin(String("4321").Get()); });
    EXPECT_EQ(pairer.Pair(), Number(Status::InvalidCeremonyData));
}

TEST_F(Choices, WhatIsPairedCanPairByDefault)
{
    boolean can = false;
    EXPECT_EQ(PairingOf(FindDevice(mouse))->get_CanPair(&can), S_OK);
    EXPECT_TRUE(can);
}

TEST_F(Choices, WhatIsPairedMayBeUnableToPairUntilItIsNot)
{
    Load(Room("[device.pairing]\nduration-ms = 0\n[device.unpairing]\nduration-ms = 0\n", {},
              With("paired-can-pair = false")));
    auto const canPair = [](char const* id) {
        boolean can = false;
        EXPECT_EQ(PairingOf(FindDevice(id))->get_CanPair(&can), S_OK);
        return can != 0;
    };
    EXPECT_FALSE(canPair(mouse));
    EXPECT_TRUE(canPair(speaker));
    EXPECT_EQ(Pairer(speaker).Pair(), Number(Status::Paired));
    EXPECT_FALSE(canPair(speaker));
    EXPECT_EQ(UnpairOutcome(BeginUnpair(FindDevice(speaker))), 0);
    EXPECT_TRUE(canPair(speaker));
}

TEST_F(Choices, AnAnswerMayHaveToComeInTime)
{
    LoadPairing("answer-within-ms = 20");
    Com<IDeferral> deferral;
    Pairer pairer(speaker, [&](auto* request) { request->GetDeferral(deferral.Put()); });
    auto const operation = pairer.Begin();
    AwaitEnd(operation);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::AuthenticationTimeout));
    EXPECT_EQ(deferral->Complete(), S_OK);
}

TEST_F(Choices, AnAbortIsToldByDefault)
{
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    recorder.Heard();
    SimulateWatchersAbort();
    EXPECT_THAT(recorder.Heard(), ElementsAre("Stopped in status 5"));
}

TEST_F(Choices, AnAbortMayBeSilent)
{
    Load(Room({}, {}, With("stopped-after-abort = false")));
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    recorder.Heard();
    SimulateWatchersAbort();
    EXPECT_THAT(recorder.Heard(), IsEmpty());
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Aborted);
    EXPECT_EQ(watcher->Start(), S_OK);
    recorder.Heard();
    EXPECT_EQ(watcher->Stop(), S_OK);
    EXPECT_THAT(recorder.Heard(), ElementsAre(stopped)) << "a stop is told all the same";
}

TEST_F(Choices, AnOperationMayBeAbandoned)
{
    Load(Room("[device.pairing]\nduration-ms = 'never'\n", {}, With("early-close = 'Abandoned'")));
    Pairer pairer(speaker);
    auto const operation = pairer.Begin();
    ASSERT_TRUE(WaitIdle());
    std::atomic<int> calls = 0;
    operation->put_Completed(
        On<PairingCompletedHandler>([&](PairingOperation*, AsyncStatus) { return ++calls, S_OK; }).Get());
    auto const info = operation.As<IAsyncInfo>();
    EXPECT_EQ(info->Close(), S_OK);
    AsyncStatus status{};
    EXPECT_EQ(info->get_Status(&status), illegalMethodCall);
    ASSERT_EQ(SimulatePairingCompletes(speaker, 0), 1);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(IsPaired(FindDevice(speaker))) << "what was under way went on";
}

TEST_F(Choices, AHandlerThatTakesTooLongIsNotWaitedFor)
{
    LoadPairing("answer-within-ms = 20");
    std::promise<void> late;
    auto const until = late.get_future().share();
    auto pairer = std::make_unique<Pairer>(speaker, [until](auto* request) {
        until.wait();
        request->Accept();
    });
    auto const operation = pairer->Begin();
    AwaitEnd(operation);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::AuthenticationTimeout));
    late.set_value();
    ASSERT_EQ(SimulatorWaitForTrace("DevicePairingRequestedEventArgs.Accept(", 1, 10000), 1);
    EXPECT_FALSE(IsPaired(FindDevice(speaker))) << "it is too late";
}

TEST_F(Choices, AnOperationMayEndInError)
{
    LoadPairing("duration-ms = 0\nerror = 0x80004005");
    Pairer pairer(speaker);
    auto const operation = pairer.Begin();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Error);
    Com<IDevicePairingResult> result;
    EXPECT_EQ(operation->GetResults(result.Put()), E_FAIL);
    EXPECT_FALSE(IsPaired(FindDevice(speaker)));
}

TEST_F(Choices, TheSystemsOwnPromptKeepsProgramsOut)
{
    Load(Room("[device.pairing]\nsystem-prompt = true\n", "[device.pairing]\nsystem-prompt = true\n"));
    Pairer pairer(speaker);
    EXPECT_EQ(pairer.Pair(), Number(Status::OperationAlreadyInProgress));
    EXPECT_EQ(pairer.requests, 0);
    EXPECT_EQ(UnpairOutcome(BeginUnpair(FindDevice(mouse))),
              static_cast<int>(DeviceUnpairingResultStatus::OperationAlreadyInProgress));
}

TEST_F(Choices, WhatIsUnpairedMayBeStale)
{
    Load(Room({}, "[device.unpairing]\nduration-ms = 0\nstale-ms = 60\n"));
    auto const watcher = MakeWatcher(pairedOnly);
    Recorder recorder(watcher);
    watcher->Start();
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedMouse, completed));
    EXPECT_EQ(UnpairOutcome(BeginUnpair(FindDevice(mouse))), 0);
    EXPECT_TRUE(IsPaired(FindDevice(mouse)));
    ASSERT_EQ(SimulatorWaitForTrace("! DeviceWatcher.Removed(#1, ", 1, 10000), 1);
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Removed ") + mouse));
    EXPECT_FALSE(IsPaired(FindDevice(mouse)));
}

TEST_F(Choices, NothingMayComeAfterTheEnumeration)
{
    Load(Room({}, {}, With("silent-after-enumeration = true")));
    auto const watcher = MakeWatcher();
    Recorder recorder(watcher);
    watcher->Start();
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedSpeaker, addedMouse, completed));
    ASSERT_EQ(SimulateDeviceAppears(lamp), 1);
    ASSERT_EQ(SimulateDeviceLeaves(speaker), 1);
    EXPECT_THAT(recorder.Heard(), IsEmpty());
}

TEST_F(Choices, AnEventMayReachAHandlerThatIsRemoved)
{
    Load(Room({}, {}, With("event-delay-ms = 60")));
    auto const watcher = MakeWatcher();
    std::atomic<int> calls = 0;
    EventRegistrationToken token{};
    watcher->add_Added(On<AddedHandler>([&](auto*, auto*) { return ++calls, S_OK; }).Get(), &token);
    watcher->Start();
    ASSERT_EQ(SimulatorWaitForTrace("! DeviceWatcher.Added(#1, ", 1, 10000), 1);
    watcher->remove_Added(token);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(calls, 1) << "the first was on its way, the second not yet";
}

TEST_F(Choices, WhatIsPairedMayBeListedWhereverItIs)
{
    Load(Room({}, "appears-ms = 'never'\n[device.unpairing]\nduration-ms = 0\n", With("paired-out-of-range = true")));
    auto const watcher = MakeWatcher(pairedOnly, {"System.Devices.Aep.IsPresent"});
    Recorder recorder(watcher);
    watcher->Start();
    EXPECT_THAT(recorder.Heard(), ElementsAre(addedMouse, completed));
    auto const present = std::string("Updated ") + mouse + " System.Devices.Aep.IsPresent";
    ASSERT_EQ(SimulateDeviceAppears(mouse), 1);
    EXPECT_THAT(recorder.Heard(), ElementsAre(present));
    ASSERT_EQ(SimulateDeviceLeaves(mouse), 1);
    EXPECT_THAT(recorder.Heard(), ElementsAre(present));
    EXPECT_EQ(UnpairOutcome(BeginUnpair(FindDevice(mouse))), 0);
    EXPECT_THAT(recorder.Heard(), ElementsAre(std::string("Removed ") + mouse));
}
