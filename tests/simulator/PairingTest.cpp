// The pairing ceremony, branch by branch.
#include "tests/simulator/CeremonyClient.h"

#include <windows.h>

#include <thread>

using namespace client;

namespace
{
    using Status = DevicePairingResultStatus;

    constexpr int Number(Status status)
    {
        return static_cast<int>(status);
    }

    std::string Ceremony(std::string const& keys)
    {
        return "[device.pairing]\n" + keys + "\n";
    }

    class PairingTest : public SimulatorTest
    {
    protected:
        // The speaker's pairing; everything quick unless it says otherwise.
        static void PlayPairing(std::string const& keys)
        {
            Play(Room(Ceremony(keys)));
        }
    };

    class PairingStatus : public PairingTest, public testing::WithParamInterface<int>
    {
    };
} // namespace

TEST_P(PairingStatus, IsWhatTheScenarioSays)
{
    PlayPairing("duration-ms = \"never\"");
    Pairer pairer(speaker);
    auto const operation = pairer.Begin();
    ASSERT_EQ(SimulatePairingCompletes(speaker, GetParam()), 1) << SimulatorLastError();
    EXPECT_EQ(Pairer::Outcome(operation), GetParam());
    EXPECT_EQ(pairer.requests, 1);
    EXPECT_EQ(IsPaired(FindDevice(speaker)), GetParam() == 0);
    auto const text = TraceLines("DevicePairingResult.get_Status(");
    ASSERT_EQ(text.size(), 1u);
    EXPECT_EQ(text[0].find("-> " + std::to_string(GetParam())) != std::string::npos, GetParam() > 19);
}

INSTANTIATE_TEST_SUITE_P(Every, PairingStatus, testing::Range(0, 21)); // 20 is one that the platform does not define

TEST_F(PairingTest, ScenarioStatusComesAfterItsDuration)
{
    PlayPairing("status = \"ConnectionRejected\"\nduration-ms = 30");
    Pairer pairer(speaker);
    auto const before = GetTickCount64();
    auto const operation = pairer.Begin();
    std::atomic<bool> completed{false};
    operation->put_Completed(On<PairingCompletedHandler>([&](PairingOperation*, AsyncStatus) {
                                 completed = true;
                                 return S_OK;
                             }).Get());
    while (!completed)
    {
        ASSERT_EQ(SimulatorWaitIdle(patience), 1);
        std::this_thread::yield();
        ASSERT_LT(GetTickCount64() - before, patience);
    }
    EXPECT_GE(GetTickCount64() - before, 15u); // a tick is about 15 ms long
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::ConnectionRejected));
}

TEST_F(PairingTest, WithoutDurationIsOverWhenTheCallReturns)
{
    PlayPairing("duration-ms = 0");
    Pairer pairer(speaker);
    auto const operation = pairer.Begin();
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Completed);
    EXPECT_EQ(pairer.requests, 1);
    EXPECT_NE(pairer.thread, GetCurrentThreadId());
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Paired));
}

TEST_F(PairingTest, WithoutDurationReturnsAllTheSameWhileTheProgramIsAwaited)
{
    PlayPairing("duration-ms = 0");
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

TEST_F(PairingTest, WithoutDurationReturnsAllTheSameWhileEventsAreHeld)
{
    PlayPairing("duration-ms = 0");
    Pairer pairer(speaker);
    SimulatorHoldEvents();
    auto const operation = pairer.Begin();
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Started);
    SimulatorReleaseEvents();
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Paired));
}

TEST_F(PairingTest, RequestCarriesOneKindAndItsPin)
{
    struct Case
    {
        char const* name;
        DevicePairingKinds kind;
        bool showsPin;
    };
    for (auto const& [name, kind, showsPin] : {Case{"ConfirmOnly", DevicePairingKinds::ConfirmOnly, false},
                                               Case{"DisplayPin", DevicePairingKinds::DisplayPin, true},
                                               Case{"ProvidePin", DevicePairingKinds::ProvidePin, false},
                                               Case{"ConfirmPinMatch", DevicePairingKinds::ConfirmPinMatch, true}})
    {
        PlayPairing("duration-ms = 0\npin = \"4711\"\nkind = \"" + std::string(name) + "\"");
        Pairer pairer(speaker, [&, expected = kind, pinShown = showsPin](IDevicePairingRequestedEventArgs* request) {
            DevicePairingKinds got{};
            EXPECT_EQ(request->get_PairingKind(&got), S_OK);
            EXPECT_EQ(got, expected);
            String pin;
            EXPECT_EQ(request->get_Pin(pin.Put()), S_OK);
            EXPECT_EQ(pin.Utf8(), pinShown ? "4711" : "");
            Com<IDeviceInformation> device;
            EXPECT_EQ(request->get_DeviceInformation(device.Put()), S_OK);
            EXPECT_EQ(IdOf(device.Get()), speaker);
            EXPECT_EQ(NameOf(device), "Kitchen Speaker");
            EXPECT_EQ(ClassNameOf(request), "Windows.Devices.Enumeration.DevicePairingRequestedEventArgs");
            EXPECT_EQ(expected == DevicePairingKinds::ProvidePin ? request->AcceptWithPin(String("4711").Get())
                                                                 : request->Accept(),
                      S_OK);
        });
        EXPECT_EQ(pairer.Pair(), Number(Status::Paired)) << name;
        EXPECT_EQ(pairer.requests, 1);
        EXPECT_TRUE(IsPaired(FindDevice(speaker)));
    }
}

TEST_F(PairingTest, WrongPinFailsAuthentication)
{
    PlayPairing("kind = \"ProvidePin\"\npin = \"4711\"");
    EXPECT_EQ(Pairer(speaker, [](auto* request) { request->AcceptWithPin(String("1234").Get()); }).Pair(),
              Number(Status::AuthenticationFailure));
    EXPECT_EQ(Pairer(speaker, Pairer::Accept).Pair(), Number(Status::AuthenticationFailure));
    EXPECT_FALSE(IsPaired(FindDevice(speaker)));
}

TEST_F(PairingTest, SilentHandlerRejects)
{
    Pairer pairer(speaker, [](auto*) {});
    EXPECT_EQ(pairer.Pair(), Number(Status::RejectedByHandler));
    EXPECT_EQ(pairer.requests, 1);
}

TEST_F(PairingTest, LateAcceptanceWithoutDeferralChangesNothing)
{
    Com<IDevicePairingRequestedEventArgs> kept;
    Pairer pairer(speaker, [&](auto* request) { kept = Com<IDevicePairingRequestedEventArgs>(request); });
    auto const operation = pairer.Begin();
    WaitIdle();
    EXPECT_EQ(kept->Accept(), S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::RejectedByHandler));
    Com<IDeferral> deferral;
    EXPECT_EQ(kept->GetDeferral(deferral.Put()), illegalMethodCall);
}

TEST_F(PairingTest, DeferralKeepsTheAnswerOpen)
{
    Play(Room(Ceremony("duration-ms = 1")));
    Com<IDeferral> deferral;
    Com<IDevicePairingRequestedEventArgs> kept;
    Pairer pairer(speaker, [&](auto* request) {
        kept = Com<IDevicePairingRequestedEventArgs>(request);
        request->GetDeferral(deferral.Put());
    });
    auto const operation = pairer.Begin();
    WaitIdle();
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Started);
    EXPECT_EQ(ClassNameOf(deferral.Get()), "Windows.Foundation.Deferral");
    EXPECT_EQ(kept->Accept(), S_OK);
    WaitIdle();
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Started); // only completing the deferral moves on
    EXPECT_EQ(deferral->Complete(), S_OK);
    ASSERT_EQ(SimulatorWaitIdle(patience), 1);
    while (StatusOf(operation) == AsyncStatus::Started)
    {
        std::this_thread::yield(); // its last millisecond
    }
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Paired));
}

TEST_F(PairingTest, DeferralCompletedWithoutAcceptanceRejects)
{
    Com<IDeferral> deferral;
    Pairer pairer(speaker, [&](auto* request) { request->GetDeferral(deferral.Put()); });
    auto const operation = pairer.Begin();
    WaitIdle();
    EXPECT_EQ(deferral->Complete(), S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::RejectedByHandler));
}

TEST_F(PairingTest, DeferralCompletesOnceAndClosesAnyNumberOfTimes)
{
    Com<IDeferral> deferral;
    Pairer pairer(speaker, [&](auto* request) { request->GetDeferral(deferral.Put()); });
    pairer.Begin();
    WaitIdle();
    EXPECT_EQ(deferral->Complete(), S_OK);
    EXPECT_EQ(deferral->Complete(), illegalMethodCall);
    EXPECT_EQ(deferral.As<IClosable>()->Close(), S_OK);
    EXPECT_EQ(deferral.As<IClosable>()->Close(), S_OK);
}

TEST_F(PairingTest, ClosingADeferralCompletesIt)
{
    Com<IDeferral> deferral;
    Pairer pairer(speaker, [&](auto* request) { request->GetDeferral(deferral.Put()); });
    auto const operation = pairer.Begin();
    WaitIdle();
    EXPECT_EQ(deferral.As<IClosable>()->Close(), S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::RejectedByHandler));
}

TEST_F(PairingTest, EveryDeferralMustComplete)
{
    PlayPairing("duration-ms = \"never\"");
    Com<IDeferral> one;
    Com<IDeferral> two;
    Pairer pairer(speaker, [&](auto* request) {
        request->GetDeferral(one.Put());
        request->GetDeferral(two.Put());
        request->Accept();
    });
    auto const operation = pairer.Begin();
    WaitIdle();
    one->Complete();
    WaitIdle();
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Started);
    two->Complete();
    WaitIdle();
    ASSERT_EQ(SimulatePairingCompletes(speaker, 0), 1);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Paired));
}

TEST_F(PairingTest, DeviceMayGiveUpWhileTheProgramThinks)
{
    Com<IDeferral> deferral;
    Pairer pairer(speaker, [&](auto* request) { request->GetDeferral(deferral.Put()); });
    auto const operation = pairer.Begin();
    WaitIdle();
    ASSERT_EQ(SimulatePairingCompletes(speaker, Number(Status::AuthenticationTimeout)), 1);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::AuthenticationTimeout));
    EXPECT_EQ(deferral->Complete(), S_OK);
    WaitIdle();
}

TEST_F(PairingTest, KindThatIsNotOfferedRaisesNothing)
{
    PlayPairing("kind = \"ConfirmPinMatch\"");
    Pairer pairer(speaker);
    EXPECT_EQ(pairer.Pair(DevicePairingKinds::ConfirmOnly), Number(Status::RequiredHandlerNotRegistered));
    EXPECT_EQ(pairer.Pair(DevicePairingKinds::None), Number(Status::RequiredHandlerNotRegistered));
    EXPECT_EQ(pairer.requests, 0);
}

TEST_F(PairingTest, NeedsAHandler)
{
    auto const custom = CustomOf(FindDevice(speaker));
    Com<PairingOperation> operation;
    ASSERT_EQ(custom->PairAsync(anyKind, operation.Put()), S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::RequiredHandlerNotRegistered));
}

TEST_F(PairingTest, FindsHandlersThroughAnotherLookAtTheSameDevice)
{
    Pairer pairer(speaker);
    Com<PairingOperation> operation;
    pairer.custom.Reset();
    ASSERT_EQ(CustomOf(pairer.device)->PairAsync(anyKind, operation.Put()), S_OK);
    WaitIdle();
    EXPECT_EQ(pairer.requests, 1);
}

TEST_F(PairingTest, RefusesMoreProtectionThanTheDeviceReaches)
{
    PlayPairing("duration-ms = 0\nmax-protection = \"Encryption\"");
    Pairer pairer(speaker);
    EXPECT_EQ(pairer.Pair(anyKind, DevicePairingProtectionLevel::EncryptionAndAuthentication),
              Number(Status::ProtectionLevelCouldNotBeMet));
    EXPECT_EQ(pairer.requests, 0);
    auto const operation = pairer.Begin(anyKind, DevicePairingProtectionLevel::None);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Paired));
    Com<IDevicePairingResult> result;
    operation->GetResults(result.Put());
    DevicePairingProtectionLevel used{};
    EXPECT_EQ(result->get_ProtectionLevelUsed(&used), S_OK);
    EXPECT_EQ(used, DevicePairingProtectionLevel::Encryption); // the highest it has
    EXPECT_EQ(ClassNameOf(result.Get()), "Windows.Devices.Enumeration.DevicePairingResult");
}

TEST_F(PairingTest, RefusesWhatIsPairedAlready)
{
    Pairer pairer(mouse);
    EXPECT_EQ(pairer.Pair(), Number(Status::AlreadyPaired));
    EXPECT_EQ(pairer.requests, 0);
}

TEST_F(PairingTest, RefusesWhatCannotPair)
{
    Play(Room("can-pair = false\n"));
    Pairer pairer(speaker);
    EXPECT_EQ(pairer.Pair(), Number(Status::NotReadyToPair));
    EXPECT_EQ(pairer.requests, 0);
}

TEST_F(PairingTest, OneAtATime)
{
    PlayPairing("duration-ms = \"never\"");
    Pairer pairer(speaker);
    auto const first = pairer.Begin();
    WaitIdle();
    EXPECT_EQ(Pairer(speaker).Pair(), Number(Status::OperationAlreadyInProgress));
    EXPECT_EQ(UnpairOutcome(BeginUnpair(pairer.device)),
              static_cast<int>(DeviceUnpairingResultStatus::OperationAlreadyInProgress));
    EXPECT_EQ(StatusOf(first), AsyncStatus::Started);
    ASSERT_EQ(SimulatePairingCompletes(speaker, Number(Status::Failed)), 1);
    EXPECT_EQ(Pairer::Outcome(first), Number(Status::Failed));
    EXPECT_EQ(SimulatePairingCompletes(speaker, 0), 0); // none is pending
}

TEST_F(PairingTest, EndpointIsFreeAgainWhenTheCompletionIsHeard)
{
    PlayPairing("status = \"Failed\"\nduration-ms = \"never\"");
    Pairer pairer(speaker);
    Com<PairingOperation> second;
    auto const first = pairer.Begin();
    first->put_Completed(On<PairingCompletedHandler>([&](PairingOperation*, AsyncStatus) {
                             second = pairer.Begin();
                             return S_OK;
                         }).Get());
    ASSERT_EQ(SimulatePairingCompletes(speaker, Number(Status::Failed)), 1);
    WaitIdle();
    EXPECT_EQ(pairer.requests, 2);
    EXPECT_EQ(StatusOf(second), AsyncStatus::Started);
}

TEST_F(PairingTest, MayFailAsAnOperation)
{
    PlayPairing("duration-ms = \"never\"");
    Pairer pairer(speaker);
    auto const operation = pairer.Begin();
    ASSERT_EQ(SimulatePairingFails(speaker, E_ACCESSDENIED), 1);
    WaitIdle();
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Error);
    Com<IDevicePairingResult> result;
    EXPECT_EQ(operation->GetResults(result.Put()), E_ACCESSDENIED);
    EXPECT_FALSE(IsPaired(FindDevice(speaker)));
}

TEST_F(PairingTest, TellsWatchers)
{
    PlayPairing("duration-ms = 0");
    auto const all = MakeWatcher();
    auto const unpaired = MakeWatcher("System.Devices.Aep.IsPaired:=System.StructuredQueryType.Boolean#False");
    EventRegistrationToken token{};
    auto const nothing = On<UpdateHandler>([](auto*, auto*) { return S_OK; });
    all->add_Updated(nothing.Get(), &token);
    unpaired->add_Removed(nothing.Get(), &token);
    all->Start();
    unpaired->Start();
    EXPECT_EQ(Pairer(speaker).Pair(), Number(Status::Paired));
    WaitIdle();
    EXPECT_EQ(
        TraceLines("! DeviceWatcher.Updated(#1, " + std::string(speaker) + ", [System.Devices.Aep.IsPaired])").size(),
        1u);
    EXPECT_EQ(TraceLines("! DeviceWatcher.Removed(#2, " + std::string(speaker) + ")").size(), 1u);
}

TEST_F(PairingTest, SystemAsksTheUserItselfWithoutCustomPairing)
{
    Com<PairingOperation> operation;
    auto const pairing = PairingOf(FindDevice(speaker));
    PlayPairing("duration-ms = 0");
    ASSERT_EQ(pairing->PairAsync(operation.Put()), S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Paired));
    PlayPairing("duration-ms = 0\nkind = \"ProvidePin\"");
    ASSERT_EQ(pairing->PairWithProtectionLevelAsync(DevicePairingProtectionLevel::None, operation.Put()), S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::RequiredHandlerNotRegistered));
    ASSERT_EQ(pairing.As<IDeviceInformationPairing2>()->PairWithProtectionLevelAndSettingsAsync(
                  DevicePairingProtectionLevel::None, nullptr, operation.Put()),
              S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::RequiredHandlerNotRegistered));
}

TEST_F(PairingTest, FailsForADeviceOfAnotherRoom)
{
    Pairer pairer(speaker);
    Play("enumeration-completes-ms = 0");
    EXPECT_EQ(pairer.Pair(), Number(Status::Failed));
}

TEST_F(PairingTest, SettingsAreTakenAndPasswordsAreNot)
{
    PlayPairing("duration-ms = 0");
    Pairer pairer(speaker, [](IDevicePairingRequestedEventArgs* request) {
        Com<IDevicePairingRequestedEventArgs> const shared(request);
        EXPECT_EQ(shared.As<IDevicePairingRequestedEventArgs2>()->AcceptWithPasswordCredential(nullptr), E_NOTIMPL);
        EXPECT_EQ(request->Accept(), S_OK);
    });
    Com<PairingOperation> operation;
    ASSERT_EQ(pairer.custom->PairWithProtectionLevelAndSettingsAsync(anyKind, DevicePairingProtectionLevel::Default,
                                                                     nullptr, operation.Put()),
              S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Paired));
}

TEST_F(PairingTest, RefusesNullResults)
{
    auto const device = FindDevice(speaker);
    EXPECT_EQ(PairingOf(device)->PairAsync(nullptr), E_POINTER);
    EXPECT_EQ(CustomOf(device)->PairAsync(anyKind, nullptr), E_POINTER);
    EXPECT_EQ(PairingOf(device).As<IDeviceInformationPairing2>()->UnpairAsync(nullptr), E_POINTER);
    EXPECT_EQ(PairingOf(device)->get_IsPaired(nullptr), E_POINTER);
    EXPECT_EQ(PairingOf(device)->get_CanPair(nullptr), E_POINTER);
}

TEST_F(PairingTest, LeavesNothingBehind)
{
    PlayPairing("duration-ms = 0");
    Pairer(speaker).Pair();
    WaitIdle();
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
}
