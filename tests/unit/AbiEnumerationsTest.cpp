// The values of the platform's enumerations, and the sizes of what crosses its boundary.
#include "platform/abi/Bluetooth.h"
#include "platform/abi/Enumeration.h"

#include <gmock/gmock.h>

#include <type_traits>
#include <vector>

using namespace platform;
using testing::ElementsAre;

namespace
{
    template <typename Enumeration>
    std::vector<long long> Values(std::initializer_list<Enumeration> enumerators)
    {
        std::vector<long long> values;
        for (auto const enumerator : enumerators)
        {
            values.push_back(static_cast<long long>(enumerator));
        }
        return values;
    }

    template <typename Enumeration>
    class AbiEnumerationSize : public testing::Test
    {
    };

    using Enumerations = testing::Types<platform::AsyncStatus, PropertyType, DeviceInformationKind, DeviceWatcherStatus,
                                        DevicePairingKinds, DevicePairingProtectionLevel, DevicePairingResultStatus,
                                        DeviceUnpairingResultStatus, RadioState, RadioKind, RadioAccessStatus,
                                        BluetoothConnectionStatus, BluetoothAddressType, BluetoothMajorClass>;
    TYPED_TEST_SUITE(AbiEnumerationSize, Enumerations);
} // namespace

TEST(AbiEnumerations, AsyncStatus)
{
    using enum platform::AsyncStatus;
    EXPECT_THAT(Values({Started, Completed, Canceled, Error}), ElementsAre(0, 1, 2, 3));
}

TEST(AbiEnumerations, DeviceInformationKind)
{
    using enum DeviceInformationKind;
    EXPECT_THAT(
        Values({Unknown, DeviceInterface, DeviceContainer, Device, DeviceInterfaceClass, AssociationEndpoint,
                AssociationEndpointContainer, AssociationEndpointService, DevicePanel, AssociationEndpointProtocol}),
        ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9));
}

TEST(AbiEnumerations, CollectionChange)
{
    using enum platform::CollectionChange;
    EXPECT_THAT(Values({Reset, ItemInserted, ItemRemoved, ItemChanged}), ElementsAre(0, 1, 2, 3));
}

TEST(AbiEnumerations, DeviceWatcherStatus)
{
    using enum DeviceWatcherStatus;
    EXPECT_THAT(Values({Created, Started, EnumerationCompleted, Stopping, Stopped, Aborted}),
                ElementsAre(0, 1, 2, 3, 4, 5));
}

TEST(AbiEnumerations, DevicePairingKinds)
{
    using enum DevicePairingKinds;
    EXPECT_THAT(
        Values({None, ConfirmOnly, DisplayPin, ProvidePin, ConfirmPinMatch, ProvidePasswordCredential, ProvideAddress}),
        ElementsAre(0, 1, 2, 4, 8, 16, 32));
}

TEST(AbiEnumerations, DevicePairingProtectionLevel)
{
    using enum DevicePairingProtectionLevel;
    EXPECT_THAT(Values({Default, None, Encryption, EncryptionAndAuthentication}), ElementsAre(0, 1, 2, 3));
}

TEST(AbiEnumerations, DevicePairingResultStatus)
{
    using enum DevicePairingResultStatus;
    EXPECT_THAT(Values({Paired,
                        NotReadyToPair,
                        NotPaired,
                        AlreadyPaired,
                        ConnectionRejected,
                        TooManyConnections,
                        HardwareFailure,
                        AuthenticationTimeout,
                        AuthenticationNotAllowed,
                        AuthenticationFailure,
                        NoSupportedProfiles,
                        ProtectionLevelCouldNotBeMet,
                        AccessDenied,
                        InvalidCeremonyData,
                        PairingCanceled,
                        OperationAlreadyInProgress,
                        RequiredHandlerNotRegistered,
                        RejectedByHandler,
                        RemoteDeviceHasAssociation,
                        Failed}),
                ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19));
}

TEST(AbiEnumerations, DeviceUnpairingResultStatus)
{
    using enum DeviceUnpairingResultStatus;
    EXPECT_THAT(Values({Unpaired, AlreadyUnpaired, OperationAlreadyInProgress, AccessDenied, Failed}),
                ElementsAre(0, 1, 2, 3, 4));
}

TEST(AbiEnumerations, PropertyType)
{
    using P = PropertyType;
    EXPECT_THAT(
        Values({P::Empty, P::UInt8, P::Int16, P::UInt16, P::Int32, P::UInt32, P::Int64, P::UInt64, P::Single, P::Double,
                P::Char16, P::Boolean, P::String, P::Inspectable, P::DateTime, P::TimeSpan, P::Guid}),
        ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16));
    EXPECT_THAT(Values({P::UInt8Array, P::StringArray, P::GuidArray}), ElementsAre(1025, 1036, 1040));
}

TEST(AbiEnumerations, RadioState)
{
    using R = RadioState;
    EXPECT_THAT(Values({R::Unknown, R::On, R::Off, R::Disabled}), ElementsAre(0, 1, 2, 3));
}

TEST(AbiEnumerations, RadioKind)
{
    using R = RadioKind;
    EXPECT_THAT(Values({R::Other, R::WiFi, R::MobileBroadband, R::Bluetooth, R::FM}), ElementsAre(0, 1, 2, 3, 4));
}

TEST(AbiEnumerations, RadioAccessStatus)
{
    using R = RadioAccessStatus;
    EXPECT_THAT(Values({R::Unspecified, R::Allowed, R::DeniedByUser, R::DeniedBySystem}), ElementsAre(0, 1, 2, 3));
}

TEST(AbiEnumerations, BluetoothConnectionStatus)
{
    using B = BluetoothConnectionStatus;
    EXPECT_THAT(Values({B::Disconnected, B::Connected}), ElementsAre(0, 1));
}

TEST(AbiEnumerations, BluetoothAddressType)
{
    using B = BluetoothAddressType;
    EXPECT_THAT(Values({B::Public, B::Random, B::Unspecified}), ElementsAre(0, 1, 2));
}

TEST(AbiEnumerations, BluetoothMajorClass)
{
    using B = BluetoothMajorClass;
    EXPECT_THAT(Values({B::Miscellaneous, B::Computer, B::Phone, B::NetworkAccessPoint, B::AudioVideo, B::Peripheral,
                        B::Imaging, B::Wearable, B::Toy, B::Health}),
                ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9));
}

TYPED_TEST(AbiEnumerationSize, Is32Bits)
{
    constexpr bool isFlagSet = std::is_same_v<TypeParam, DevicePairingKinds>;
    EXPECT_EQ(sizeof(TypeParam), 4u);
    EXPECT_EQ(std::is_unsigned_v<std::underlying_type_t<TypeParam>>, isFlagSet);
}

TEST(AbiSizes, OfWhatCrossesTheBoundary)
{
    EXPECT_EQ(sizeof(boolean), 1u);
    EXPECT_EQ(sizeof(EventRegistrationToken), 8u);
    EXPECT_EQ(sizeof(HSTRING), sizeof(void*));
    EXPECT_EQ(sizeof(HRESULT), 4u);
    EXPECT_EQ(sizeof(GUID), 16u);
}
