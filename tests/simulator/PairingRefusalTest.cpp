// Pairings that end before the device is asked.
#include "tests/simulator/CeremonyClient.h"

using namespace test;

namespace
{
    using Status = DevicePairingResultStatus;

    using PairingRefusal = SimulatorTest;
} // namespace

TEST_F(PairingRefusal, OfAKindThatIsNotOfferedRaisesNothing)
{
    LoadPairing("kind = 'ConfirmPinMatch'");
    Pairer pairer(speaker);
    EXPECT_EQ(pairer.Pair(DevicePairingKinds::ConfirmOnly), Number(Status::RequiredHandlerNotRegistered));
    EXPECT_EQ(pairer.Pair(DevicePairingKinds::None), Number(Status::RequiredHandlerNotRegistered));
    EXPECT_EQ(pairer.requests, 0);
}

TEST_F(PairingRefusal, WithoutAHandler)
{
    auto const custom = CustomOf(FindDevice(speaker));
    Com<PairingOperation> operation;
    ASSERT_EQ(custom->PairAsync(anyKind, operation.Put()), S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::RequiredHandlerNotRegistered));
}

TEST_F(PairingRefusal, OfMoreProtectionThanTheDeviceReaches)
{
    LoadPairing("duration-ms = 0\nmax-protection = 'Encryption'");
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

TEST_F(PairingRefusal, OfWhatIsPairedAlready)
{
    Pairer pairer(mouse);
    EXPECT_EQ(pairer.Pair(), Number(Status::AlreadyPaired));
    EXPECT_EQ(pairer.requests, 0);
}

TEST_F(PairingRefusal, OfWhatCannotPair)
{
    Load(Room("can-pair = false\n"));
    Pairer pairer(speaker);
    EXPECT_EQ(pairer.Pair(), Number(Status::NotReadyToPair));
    EXPECT_EQ(pairer.requests, 0);
}

TEST_F(PairingRefusal, OfASecondAtATime)
{
    LoadPairing("duration-ms = 'never'");
    Pairer pairer(speaker);
    auto const first = pairer.Begin();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(Pairer(speaker).Pair(), Number(Status::OperationAlreadyInProgress));
    EXPECT_EQ(UnpairOutcome(BeginUnpair(pairer.device)),
              static_cast<int>(DeviceUnpairingResultStatus::OperationAlreadyInProgress));
    EXPECT_EQ(StatusOf(first), AsyncStatus::Started);
    ASSERT_EQ(SimulatePairingCompletes(speaker, Number(Status::Failed)), 1);
    EXPECT_EQ(Pairer::Outcome(first), Number(Status::Failed));
    EXPECT_EQ(SimulatePairingCompletes(speaker, 0), 0); // none is pending
}

TEST_F(PairingRefusal, OfADeviceOfAnotherRoom)
{
    Pairer pairer(speaker);
    Load("enumeration-completes-ms = 0");
    EXPECT_EQ(pairer.Pair(), Number(Status::Failed));
}

TEST_F(PairingRefusal, OfNullResults)
{
    auto const device = FindDevice(speaker);
    EXPECT_EQ(PairingOf(device)->PairAsync(nullptr), E_POINTER);
    EXPECT_EQ(CustomOf(device)->PairAsync(anyKind, nullptr), E_POINTER);
    EXPECT_EQ(PairingOf(device).As<IDeviceInformationPairing2>()->UnpairAsync(nullptr), E_POINTER);
    EXPECT_EQ(PairingOf(device)->get_IsPaired(nullptr), E_POINTER);
    EXPECT_EQ(PairingOf(device)->get_CanPair(nullptr), E_POINTER);
}
