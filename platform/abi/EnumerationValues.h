// The values that Windows.Devices.Enumeration enumerates. Nothing here needs Windows.
#pragma once

#include <cstdint>

namespace platform
{
    enum class DeviceInformationKind : std::int32_t
    {
        Unknown = 0,
        DeviceInterface = 1,
        DeviceContainer = 2,
        Device = 3,
        DeviceInterfaceClass = 4,
        AssociationEndpoint = 5,
        AssociationEndpointContainer = 6,
        AssociationEndpointService = 7,
        DevicePanel = 8,
        AssociationEndpointProtocol = 9,
    };

    enum class DeviceWatcherStatus : std::int32_t
    {
        Created = 0,
        Started = 1,
        EnumerationCompleted = 2,
        Stopping = 3,
        Stopped = 4,
        Aborted = 5,
    };

    enum class DevicePairingKinds : std::uint32_t
    {
        None = 0,
        ConfirmOnly = 1,
        DisplayPin = 2,
        ProvidePin = 4,
        ConfirmPinMatch = 8,
        ProvidePasswordCredential = 16,
        ProvideAddress = 32,
    };

    enum class DevicePairingProtectionLevel : std::int32_t
    {
        Default = 0,
        None = 1,
        Encryption = 2,
        EncryptionAndAuthentication = 3,
    };

    enum class DevicePairingResultStatus : std::int32_t
    {
        Paired = 0,
        NotReadyToPair = 1,
        NotPaired = 2,
        AlreadyPaired = 3,
        ConnectionRejected = 4,
        TooManyConnections = 5,
        HardwareFailure = 6,
        AuthenticationTimeout = 7,
        AuthenticationNotAllowed = 8,
        AuthenticationFailure = 9,
        NoSupportedProfiles = 10,
        ProtectionLevelCouldNotBeMet = 11,
        AccessDenied = 12,
        InvalidCeremonyData = 13,
        PairingCanceled = 14,
        OperationAlreadyInProgress = 15,
        RequiredHandlerNotRegistered = 16,
        RejectedByHandler = 17,
        RemoteDeviceHasAssociation = 18,
        Failed = 19,
    };

    enum class DeviceUnpairingResultStatus : std::int32_t
    {
        Unpaired = 0,
        AlreadyUnpaired = 1,
        OperationAlreadyInProgress = 2,
        AccessDenied = 3,
        Failed = 4,
    };
} // namespace platform
