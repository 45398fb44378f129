#include "simulator/trace/Texts.h"

#include <cstdio>
#include <initializer_list>
#include <type_traits>

namespace simulator
{
    namespace
    {
        using namespace platform;

        template <typename Enum>
        struct Name
        {
            Enum value;
            char const* text;
        };

        constexpr Name<AsyncStatus> asyncStatuses[] = {
            {AsyncStatus::Started, "Started"},
            {AsyncStatus::Completed, "Completed"},
            {AsyncStatus::Canceled, "Canceled"},
            {AsyncStatus::Error, "Error"},
        };

        constexpr Name<DeviceInformationKind> informationKinds[] = {
            {DeviceInformationKind::Unknown, "Unknown"},
            {DeviceInformationKind::DeviceInterface, "DeviceInterface"},
            {DeviceInformationKind::DeviceContainer, "DeviceContainer"},
            {DeviceInformationKind::Device, "Device"},
            {DeviceInformationKind::DeviceInterfaceClass, "DeviceInterfaceClass"},
            {DeviceInformationKind::AssociationEndpoint, "AssociationEndpoint"},
            {DeviceInformationKind::AssociationEndpointContainer, "AssociationEndpointContainer"},
            {DeviceInformationKind::AssociationEndpointService, "AssociationEndpointService"},
            {DeviceInformationKind::DevicePanel, "DevicePanel"},
            {DeviceInformationKind::AssociationEndpointProtocol, "AssociationEndpointProtocol"},
        };

        constexpr Name<DevicePairingKinds> pairingKinds[] = {
            {DevicePairingKinds::ConfirmOnly, "ConfirmOnly"},
            {DevicePairingKinds::DisplayPin, "DisplayPin"},
            {DevicePairingKinds::ProvidePin, "ProvidePin"},
            {DevicePairingKinds::ConfirmPinMatch, "ConfirmPinMatch"},
            {DevicePairingKinds::ProvidePasswordCredential, "ProvidePasswordCredential"},
            {DevicePairingKinds::ProvideAddress, "ProvideAddress"},
        };

        constexpr Name<DevicePairingProtectionLevel> protectionLevels[] = {
            {DevicePairingProtectionLevel::Default, "Default"},
            {DevicePairingProtectionLevel::None, "None"},
            {DevicePairingProtectionLevel::Encryption, "Encryption"},
            {DevicePairingProtectionLevel::EncryptionAndAuthentication, "EncryptionAndAuthentication"},
        };

        constexpr Name<DevicePairingResultStatus> pairingStatuses[] = {
            {DevicePairingResultStatus::Paired, "Paired"},
            {DevicePairingResultStatus::NotReadyToPair, "NotReadyToPair"},
            {DevicePairingResultStatus::NotPaired, "NotPaired"},
            {DevicePairingResultStatus::AlreadyPaired, "AlreadyPaired"},
            {DevicePairingResultStatus::ConnectionRejected, "ConnectionRejected"},
            {DevicePairingResultStatus::TooManyConnections, "TooManyConnections"},
            {DevicePairingResultStatus::HardwareFailure, "HardwareFailure"},
            {DevicePairingResultStatus::AuthenticationTimeout, "AuthenticationTimeout"},
            {DevicePairingResultStatus::AuthenticationNotAllowed, "AuthenticationNotAllowed"},
            {DevicePairingResultStatus::AuthenticationFailure, "AuthenticationFailure"},
            {DevicePairingResultStatus::NoSupportedProfiles, "NoSupportedProfiles"},
            {DevicePairingResultStatus::ProtectionLevelCouldNotBeMet, "ProtectionLevelCouldNotBeMet"},
            {DevicePairingResultStatus::AccessDenied, "AccessDenied"},
            {DevicePairingResultStatus::InvalidCeremonyData, "InvalidCeremonyData"},
            {DevicePairingResultStatus::PairingCanceled, "PairingCanceled"},
            {DevicePairingResultStatus::OperationAlreadyInProgress, "OperationAlreadyInProgress"},
            {DevicePairingResultStatus::RequiredHandlerNotRegistered, "RequiredHandlerNotRegistered"},
            {DevicePairingResultStatus::RejectedByHandler, "RejectedByHandler"},
            {DevicePairingResultStatus::RemoteDeviceHasAssociation, "RemoteDeviceHasAssociation"},
            {DevicePairingResultStatus::Failed, "Failed"},
        };

        constexpr Name<DeviceUnpairingResultStatus> unpairingStatuses[] = {
            {DeviceUnpairingResultStatus::Unpaired, "Unpaired"},
            {DeviceUnpairingResultStatus::AlreadyUnpaired, "AlreadyUnpaired"},
            {DeviceUnpairingResultStatus::OperationAlreadyInProgress, "OperationAlreadyInProgress"},
            {DeviceUnpairingResultStatus::AccessDenied, "AccessDenied"},
            {DeviceUnpairingResultStatus::Failed, "Failed"},
        };

        constexpr Name<DeviceWatcherStatus> watcherStatuses[] = {
            {DeviceWatcherStatus::Created, "Created"},
            {DeviceWatcherStatus::Started, "Started"},
            {DeviceWatcherStatus::EnumerationCompleted, "EnumerationCompleted"},
            {DeviceWatcherStatus::Stopping, "Stopping"},
            {DeviceWatcherStatus::Stopped, "Stopped"},
            {DeviceWatcherStatus::Aborted, "Aborted"},
        };

        constexpr Name<BluetoothAddressType> addressTypes[] = {
            {BluetoothAddressType::Public, "Public"},
            {BluetoothAddressType::Random, "Random"},
            {BluetoothAddressType::Unspecified, "Unspecified"},
        };

        constexpr Name<BluetoothConnectionStatus> connectionStatuses[] = {
            {BluetoothConnectionStatus::Disconnected, "Disconnected"},
            {BluetoothConnectionStatus::Connected, "Connected"},
        };

        constexpr Name<BluetoothMajorClass> majorClasses[] = {
            {BluetoothMajorClass::Miscellaneous, "Miscellaneous"},
            {BluetoothMajorClass::Computer, "Computer"},
            {BluetoothMajorClass::Phone, "Phone"},
            {BluetoothMajorClass::NetworkAccessPoint, "NetworkAccessPoint"},
            {BluetoothMajorClass::AudioVideo, "AudioVideo"},
            {BluetoothMajorClass::Peripheral, "Peripheral"},
            {BluetoothMajorClass::Imaging, "Imaging"},
            {BluetoothMajorClass::Wearable, "Wearable"},
            {BluetoothMajorClass::Toy, "Toy"},
            {BluetoothMajorClass::Health, "Health"},
        };

        constexpr Name<RadioAccessStatus> radioAccessStatuses[] = {
            {RadioAccessStatus::Unspecified, "Unspecified"},
            {RadioAccessStatus::Allowed, "Allowed"},
            {RadioAccessStatus::DeniedByUser, "DeniedByUser"},
            {RadioAccessStatus::DeniedBySystem, "DeniedBySystem"},
        };

        constexpr Name<RadioKind> radioKinds[] = {
            {RadioKind::Other, "Other"},
            {RadioKind::WiFi, "WiFi"},
            {RadioKind::MobileBroadband, "MobileBroadband"},
            {RadioKind::Bluetooth, "Bluetooth"},
            {RadioKind::FM, "FM"},
        };

        constexpr Name<RadioState> radioStates[] = {
            {RadioState::Unknown, "Unknown"},
            {RadioState::On, "On"},
            {RadioState::Off, "Off"},
            {RadioState::Disabled, "Disabled"},
        };

        template <typename Enum, std::size_t size>
        std::string NameOf(Enum value, Name<Enum> const (&names)[size])
        {
            for (auto const& name : names)
            {
                if (name.value == value)
                {
                    return name.text;
                }
            }
            return std::to_string(static_cast<std::underlying_type_t<Enum>>(value));
        }

        std::string List(std::vector<std::string> const& texts, std::string_view quote)
        {
            std::string list = "[";
            for (auto const& text : texts)
            {
                list.append(list.size() > 1 ? ", " : "").append(quote).append(text).append(quote);
            }
            return list.append("]");
        }
    } // namespace

    std::string Text(AsyncStatus value)
    {
        return NameOf(value, asyncStatuses);
    }

    std::string Text(DeviceInformationKind value)
    {
        return NameOf(value, informationKinds);
    }

    std::string Text(DevicePairingKinds value)
    {
        auto rest = static_cast<UINT32>(value);
        std::string text;
        for (auto const& kind : pairingKinds)
        {
            auto const bit = static_cast<UINT32>(kind.value);
            if (rest & bit)
            {
                text.append(text.empty() ? "" : "|").append(kind.text);
                rest &= ~bit;
            }
        }
        if (rest)
        {
            text.append(text.empty() ? "" : "|").append(std::to_string(rest));
        }
        return text.empty() ? "None" : text;
    }

    std::string Text(DevicePairingProtectionLevel value)
    {
        return NameOf(value, protectionLevels);
    }

    std::string Text(DevicePairingResultStatus value)
    {
        return NameOf(value, pairingStatuses);
    }

    std::string Text(DeviceUnpairingResultStatus value)
    {
        return NameOf(value, unpairingStatuses);
    }

    std::string Text(DeviceWatcherStatus value)
    {
        return NameOf(value, watcherStatuses);
    }

    std::string Text(BluetoothAddressType value)
    {
        return NameOf(value, addressTypes);
    }

    std::string Text(BluetoothConnectionStatus value)
    {
        return NameOf(value, connectionStatuses);
    }

    std::string Text(BluetoothMajorClass value)
    {
        return NameOf(value, majorClasses);
    }

    std::string Text(RadioAccessStatus value)
    {
        return NameOf(value, radioAccessStatuses);
    }

    std::string Text(RadioKind value)
    {
        return NameOf(value, radioKinds);
    }

    std::string Text(RadioState value)
    {
        return NameOf(value, radioStates);
    }

    std::string Text(boolean value)
    {
        return value ? "true" : "false";
    }

    std::string Text(UINT32 value)
    {
        return std::to_string(value);
    }

    std::string Text(UINT16 value)
    {
        return std::to_string(value);
    }

    std::string Text(UINT64 value)
    {
        return std::to_string(value);
    }

    std::string Text(INT32 value)
    {
        return std::to_string(value);
    }

    std::string CodeText(HRESULT value)
    {
        char text[16];
        std::snprintf(text, sizeof text, "0x%08X", static_cast<unsigned>(value));
        return text;
    }

    std::string Quoted(std::string_view text)
    {
        return std::string(1, '"').append(text).append(1, '"');
    }

    std::string QuotedList(std::vector<std::string> const& texts)
    {
        return List(texts, "\"");
    }

    std::string PlainList(std::vector<std::string> const& texts)
    {
        return List(texts, "");
    }
} // namespace simulator
