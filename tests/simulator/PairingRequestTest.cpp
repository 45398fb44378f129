// The request that a device makes of a program, and the answers.
#include "tests/simulator/CeremonyClient.h"

using namespace test;

namespace
{
    using Status = DevicePairingResultStatus;

    using PairingRequest = SimulatorTest;
} // namespace

TEST_F(PairingRequest, CarriesOneKindAndItsPin)
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
        LoadPairing("duration-ms = 0\npin = '4711'\nkind = '" + std::string(name) + "'");
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

TEST_F(PairingRequest, AnsweredByAWrongPinFailsAuthentication)
{
    LoadPairing("kind = 'ProvidePin'\npin = '4711'");
    EXPECT_EQ(Pairer(speaker, [](auto* request) { request->AcceptWithPin(String("1234").Get()); }).Pair(),
              Number(Status::AuthenticationFailure));
    EXPECT_EQ(Pairer(speaker, Pairer::Accept).Pair(), Number(Status::AuthenticationFailure));
    EXPECT_FALSE(IsPaired(FindDevice(speaker)));
}

TEST_F(PairingRequest, LeftUnansweredIsRejected)
{
    Pairer pairer(speaker, [](auto*) {});
    EXPECT_EQ(pairer.Pair(), Number(Status::RejectedByHandler));
    EXPECT_EQ(pairer.requests, 1);
}

TEST_F(PairingRequest, FindsHandlersThroughAnotherLookAtTheSameDevice)
{
    Pairer pairer(speaker);
    Com<PairingOperation> operation;
    pairer.custom.Reset();
    ASSERT_EQ(CustomOf(pairer.device)->PairAsync(anyKind, operation.Put()), S_OK);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(pairer.requests, 1);
}

TEST_F(PairingRequest, SettingsAreTakenAndPasswordsAreNot)
{
    LoadPairing("duration-ms = 0");
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

TEST_F(PairingRequest, IsTheSystemsToAnswerWithoutCustomPairing)
{
    Com<PairingOperation> operation;
    auto const pairing = PairingOf(FindDevice(speaker));
    LoadPairing("duration-ms = 0");
    ASSERT_EQ(pairing->PairAsync(operation.Put()), S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::Paired));
    LoadPairing("duration-ms = 0\nkind = 'ProvidePin'");
    ASSERT_EQ(pairing->PairWithProtectionLevelAsync(DevicePairingProtectionLevel::None, operation.Put()), S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::RequiredHandlerNotRegistered));
    ASSERT_EQ(pairing.As<IDeviceInformationPairing2>()->PairWithProtectionLevelAndSettingsAsync(
                  DevicePairingProtectionLevel::None, nullptr, operation.Put()),
              S_OK);
    EXPECT_EQ(Pairer::Outcome(operation), Number(Status::RequiredHandlerNotRegistered));
}
