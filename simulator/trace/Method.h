// The names of the platform's methods, as the trace prints them and SimulateFailure takes them.
#pragma once

#include <algorithm>
#include <iterator>
#include <span>
#include <string_view>

namespace simulator
{
    inline constexpr std::string_view methodNames[] = {
        "AsyncOperation.Cancel",
        "AsyncOperation.Close",
        "AsyncOperation.GetResults",
        "AsyncOperation.get_Completed",
        "AsyncOperation.get_ErrorCode",
        "AsyncOperation.get_Id",
        "AsyncOperation.get_Status",
        "AsyncOperation.put_Completed",
        "BluetoothAdapter.ActivateInstance",
        "BluetoothAdapter.FromIdAsync",
        "BluetoothAdapter.GetActivationFactory",
        "BluetoothAdapter.GetDefaultAsync",
        "BluetoothAdapter.GetDeviceSelector",
        "BluetoothAdapter.GetRadioAsync",
        "BluetoothAdapter.get_AreClassicSecureConnectionsSupported",
        "BluetoothAdapter.get_AreLowEnergySecureConnectionsSupported",
        "BluetoothAdapter.get_BluetoothAddress",
        "BluetoothAdapter.get_DeviceId",
        "BluetoothAdapter.get_IsAdvertisementOffloadSupported",
        "BluetoothAdapter.get_IsCentralRoleSupported",
        "BluetoothAdapter.get_IsClassicSupported",
        "BluetoothAdapter.get_IsExtendedAdvertisingSupported",
        "BluetoothAdapter.get_IsLowEnergySupported",
        "BluetoothAdapter.get_IsPeripheralRoleSupported",
        "BluetoothAdapter.get_MaxAdvertisementDataLength",
        "BluetoothClassOfDevice.ActivateInstance",
        "BluetoothClassOfDevice.FromParts",
        "BluetoothClassOfDevice.FromRawValue",
        "BluetoothClassOfDevice.GetActivationFactory",
        "BluetoothClassOfDevice.get_MajorClass",
        "BluetoothClassOfDevice.get_MinorClass",
        "BluetoothClassOfDevice.get_RawValue",
        "BluetoothClassOfDevice.get_ServiceCapabilities",
        "BluetoothDevice.ActivateInstance",
        "BluetoothDevice.Close",
        "BluetoothDevice.FromBluetoothAddressAsync",
        "BluetoothDevice.FromHostNameAsync",
        "BluetoothDevice.FromIdAsync",
        "BluetoothDevice.GetActivationFactory",
        "BluetoothDevice.GetDeviceSelector",
        "BluetoothDevice.GetDeviceSelectorFromBluetoothAddress",
        "BluetoothDevice.GetDeviceSelectorFromClassOfDevice",
        "BluetoothDevice.GetDeviceSelectorFromConnectionStatus",
        "BluetoothDevice.GetDeviceSelectorFromDeviceName",
        "BluetoothDevice.GetDeviceSelectorFromPairingState",
        "BluetoothDevice.GetRfcommServicesAsync",
        "BluetoothDevice.GetRfcommServicesForIdAsync",
        "BluetoothDevice.GetRfcommServicesForIdWithCacheModeAsync",
        "BluetoothDevice.GetRfcommServicesWithCacheModeAsync",
        "BluetoothDevice.RequestAccessAsync",
        "BluetoothDevice.add_ConnectionStatusChanged",
        "BluetoothDevice.add_NameChanged",
        "BluetoothDevice.add_SdpRecordsChanged",
        "BluetoothDevice.get_BluetoothAddress",
        "BluetoothDevice.get_BluetoothDeviceId",
        "BluetoothDevice.get_ClassOfDevice",
        "BluetoothDevice.get_ConnectionStatus",
        "BluetoothDevice.get_DeviceAccessInformation",
        "BluetoothDevice.get_DeviceId",
        "BluetoothDevice.get_DeviceInformation",
        "BluetoothDevice.get_HostName",
        "BluetoothDevice.get_Name",
        "BluetoothDevice.get_RfcommServices",
        "BluetoothDevice.get_SdpRecords",
        "BluetoothDevice.get_WasSecureConnectionUsedForPairing",
        "BluetoothDevice.remove_ConnectionStatusChanged",
        "BluetoothDevice.remove_NameChanged",
        "BluetoothDevice.remove_SdpRecordsChanged",
        "BluetoothDeviceId.ActivateInstance",
        "BluetoothDeviceId.FromId",
        "BluetoothDeviceId.GetActivationFactory",
        "BluetoothDeviceId.get_Id",
        "BluetoothDeviceId.get_IsClassicDevice",
        "BluetoothDeviceId.get_IsLowEnergyDevice",
        "BluetoothLEAdvertisementPublisher.GetActivationFactory",
        "BluetoothLEAdvertisementWatcher.GetActivationFactory",
        "BluetoothLEAppearance.ActivateInstance",
        "BluetoothLEAppearance.GetActivationFactory",
        "BluetoothLEAppearance.get_Category",
        "BluetoothLEAppearance.get_RawValue",
        "BluetoothLEAppearance.get_SubCategory",
        "BluetoothLEDevice.ActivateInstance",
        "BluetoothLEDevice.Close",
        "BluetoothLEDevice.FromBluetoothAddressAsync",
        "BluetoothLEDevice.FromBluetoothAddressWithBluetoothAddressTypeAsync",
        "BluetoothLEDevice.FromIdAsync",
        "BluetoothLEDevice.GetActivationFactory",
        "BluetoothLEDevice.GetDeviceSelector",
        "BluetoothLEDevice.GetDeviceSelectorFromAppearance",
        "BluetoothLEDevice.GetDeviceSelectorFromBluetoothAddress",
        "BluetoothLEDevice.GetDeviceSelectorFromBluetoothAddressWithBluetoothAddressType",
        "BluetoothLEDevice.GetDeviceSelectorFromConnectionStatus",
        "BluetoothLEDevice.GetDeviceSelectorFromDeviceName",
        "BluetoothLEDevice.GetDeviceSelectorFromPairingState",
        "BluetoothLEDevice.GetGattService",
        "BluetoothLEDevice.GetGattServicesAsync",
        "BluetoothLEDevice.GetGattServicesForUuidAsync",
        "BluetoothLEDevice.GetGattServicesForUuidWithCacheModeAsync",
        "BluetoothLEDevice.GetGattServicesWithCacheModeAsync",
        "BluetoothLEDevice.RequestAccessAsync",
        "BluetoothLEDevice.add_ConnectionStatusChanged",
        "BluetoothLEDevice.add_GattServicesChanged",
        "BluetoothLEDevice.add_NameChanged",
        "BluetoothLEDevice.get_Appearance",
        "BluetoothLEDevice.get_BluetoothAddress",
        "BluetoothLEDevice.get_BluetoothAddressType",
        "BluetoothLEDevice.get_BluetoothDeviceId",
        "BluetoothLEDevice.get_ConnectionStatus",
        "BluetoothLEDevice.get_DeviceAccessInformation",
        "BluetoothLEDevice.get_DeviceId",
        "BluetoothLEDevice.get_DeviceInformation",
        "BluetoothLEDevice.get_GattServices",
        "BluetoothLEDevice.get_Name",
        "BluetoothLEDevice.get_WasSecureConnectionUsedForPairing",
        "BluetoothLEDevice.remove_ConnectionStatusChanged",
        "BluetoothLEDevice.remove_GattServicesChanged",
        "BluetoothLEDevice.remove_NameChanged",
        "Deferral.Close",
        "Deferral.Complete",
        "DeviceAccessInformation.GetActivationFactory",
        "DeviceInformation.ActivateInstance",
        "DeviceInformation.CreateFromIdAsync",
        "DeviceInformation.CreateFromIdAsyncAdditionalProperties",
        "DeviceInformation.CreateFromIdAsyncWithKindAndAdditionalProperties",
        "DeviceInformation.CreateWatcher",
        "DeviceInformation.CreateWatcherAqsFilter",
        "DeviceInformation.CreateWatcherAqsFilterAndAdditionalProperties",
        "DeviceInformation.CreateWatcherDeviceClass",
        "DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties",
        "DeviceInformation.FindAllAsync",
        "DeviceInformation.FindAllAsyncAqsFilter",
        "DeviceInformation.FindAllAsyncAqsFilterAndAdditionalProperties",
        "DeviceInformation.FindAllAsyncDeviceClass",
        "DeviceInformation.FindAllAsyncWithKindAqsFilterAndAdditionalProperties",
        "DeviceInformation.GetActivationFactory",
        "DeviceInformation.GetAqsFilterFromDeviceClass",
        "DeviceInformation.GetGlyphThumbnailAsync",
        "DeviceInformation.GetThumbnailAsync",
        "DeviceInformation.Update",
        "DeviceInformation.get_EnclosureLocation",
        "DeviceInformation.get_Id",
        "DeviceInformation.get_IsDefault",
        "DeviceInformation.get_IsEnabled",
        "DeviceInformation.get_Kind",
        "DeviceInformation.get_Name",
        "DeviceInformation.get_Pairing",
        "DeviceInformation.get_Properties",
        "DeviceInformationCustomPairing.PairAsync",
        "DeviceInformationCustomPairing.PairWithProtectionLevelAndSettingsAsync",
        "DeviceInformationCustomPairing.PairWithProtectionLevelAsync",
        "DeviceInformationCustomPairing.add_PairingRequested",
        "DeviceInformationCustomPairing.remove_PairingRequested",
        "DeviceInformationPairing.ActivateInstance",
        "DeviceInformationPairing.GetActivationFactory",
        "DeviceInformationPairing.PairAsync",
        "DeviceInformationPairing.PairWithProtectionLevelAndSettingsAsync",
        "DeviceInformationPairing.PairWithProtectionLevelAsync",
        "DeviceInformationPairing.TryRegisterForAllInboundPairingRequests",
        "DeviceInformationPairing.TryRegisterForAllInboundPairingRequestsWithProtectionLevel",
        "DeviceInformationPairing.UnpairAsync",
        "DeviceInformationPairing.get_CanPair",
        "DeviceInformationPairing.get_Custom",
        "DeviceInformationPairing.get_IsPaired",
        "DeviceInformationPairing.get_ProtectionLevel",
        "DeviceInformationUpdate.get_Id",
        "DeviceInformationUpdate.get_Kind",
        "DeviceInformationUpdate.get_Properties",
        "DevicePairingRequestedEventArgs.Accept",
        "DevicePairingRequestedEventArgs.AcceptWithPasswordCredential",
        "DevicePairingRequestedEventArgs.AcceptWithPin",
        "DevicePairingRequestedEventArgs.GetDeferral",
        "DevicePairingRequestedEventArgs.get_DeviceInformation",
        "DevicePairingRequestedEventArgs.get_PairingKind",
        "DevicePairingRequestedEventArgs.get_Pin",
        "DevicePairingResult.get_ProtectionLevelUsed",
        "DevicePairingResult.get_Status",
        "DevicePicker.GetActivationFactory",
        "DeviceUnpairingResult.get_Status",
        "DeviceWatcher.GetBackgroundTrigger",
        "DeviceWatcher.Start",
        "DeviceWatcher.Stop",
        "DeviceWatcher.add_Added",
        "DeviceWatcher.add_EnumerationCompleted",
        "DeviceWatcher.add_Removed",
        "DeviceWatcher.add_Stopped",
        "DeviceWatcher.add_Updated",
        "DeviceWatcher.get_Status",
        "DeviceWatcher.remove_Added",
        "DeviceWatcher.remove_EnumerationCompleted",
        "DeviceWatcher.remove_Removed",
        "DeviceWatcher.remove_Stopped",
        "DeviceWatcher.remove_Updated",
        "GattCharacteristic.GetActivationFactory",
        "GattDeviceService.GetActivationFactory",
        "GattServiceProvider.GetActivationFactory",
        "GattSession.GetActivationFactory",
        "Radio.ActivateInstance",
        "Radio.FromIdAsync",
        "Radio.GetActivationFactory",
        "Radio.GetDeviceSelector",
        "Radio.GetRadiosAsync",
        "Radio.RequestAccessAsync",
        "Radio.SetStateAsync",
        "Radio.add_StateChanged",
        "Radio.get_Kind",
        "Radio.get_Name",
        "Radio.get_State",
        "Radio.remove_StateChanged",
        "RfcommDeviceService.GetActivationFactory",
        "RfcommServiceId.GetActivationFactory",
        "RfcommServiceProvider.GetActivationFactory",
    };

    // Of these, what this simulator leaves out: E_NOTIMPL, whatever the arguments.
    inline constexpr std::string_view leftOutMethods[] = {
        "BluetoothAdapter.ActivateInstance",
        "BluetoothClassOfDevice.ActivateInstance",
        "BluetoothDevice.ActivateInstance",
        "BluetoothDevice.FromHostNameAsync",
        "BluetoothDevice.GetRfcommServicesAsync",
        "BluetoothDevice.GetRfcommServicesForIdAsync",
        "BluetoothDevice.GetRfcommServicesForIdWithCacheModeAsync",
        "BluetoothDevice.GetRfcommServicesWithCacheModeAsync",
        "BluetoothDevice.get_DeviceAccessInformation",
        "BluetoothDevice.get_HostName",
        "BluetoothDevice.get_RfcommServices",
        "BluetoothDevice.get_SdpRecords",
        "BluetoothDeviceId.ActivateInstance",
        "BluetoothLEAdvertisementPublisher.GetActivationFactory",
        "BluetoothLEAdvertisementWatcher.GetActivationFactory",
        "BluetoothLEAppearance.ActivateInstance",
        "BluetoothLEDevice.ActivateInstance",
        "BluetoothLEDevice.GetGattService",
        "BluetoothLEDevice.GetGattServicesAsync",
        "BluetoothLEDevice.GetGattServicesForUuidAsync",
        "BluetoothLEDevice.GetGattServicesForUuidWithCacheModeAsync",
        "BluetoothLEDevice.GetGattServicesWithCacheModeAsync",
        "BluetoothLEDevice.get_DeviceAccessInformation",
        "BluetoothLEDevice.get_GattServices",
        "DeviceAccessInformation.GetActivationFactory",
        "DeviceInformation.ActivateInstance",
        "DeviceInformationPairing.ActivateInstance",
        "DevicePairingRequestedEventArgs.AcceptWithPasswordCredential",
        "DevicePicker.GetActivationFactory",
        "DeviceWatcher.GetBackgroundTrigger",
        "GattCharacteristic.GetActivationFactory",
        "GattDeviceService.GetActivationFactory",
        "GattServiceProvider.GetActivationFactory",
        "GattSession.GetActivationFactory",
        "Radio.ActivateInstance",
        "RfcommDeviceService.GetActivationFactory",
        "RfcommServiceId.GetActivationFactory",
        "RfcommServiceProvider.GetActivationFactory",
    };

    constexpr bool IsMethod(std::string_view name) noexcept
    {
        return std::ranges::find(methodNames, name) != std::end(methodNames);
    }

    constexpr bool IsLeftOut(std::string_view name) noexcept
    {
        return std::ranges::find(leftOutMethods, name) != std::end(leftOutMethods);
    }

    // A method of the table that is not left out: a name that is not in it does not compile.
    class Method
    {
    public:
        consteval Method(char const* name)
            : m_name(name)
        {
            if (!IsMethod(m_name) || IsLeftOut(m_name))
            {
                throw "not in the table of methods, or left out";
            }
        }

        constexpr std::string_view Name() const noexcept
        {
            return m_name;
        }

    private:
        friend class LeftOutMethod;

        constexpr explicit Method(std::string_view name)
            : m_name(name)
        {
        }

        std::string_view m_name;
    };

    class LeftOutMethod
    {
    public:
        consteval LeftOutMethod(char const* name)
            : m_method(std::string_view(name))
        {
            if (!IsMethod(name) || !IsLeftOut(name))
            {
                throw "not in the table of methods that are left out";
            }
        }

        constexpr operator Method() const noexcept
        {
            return m_method;
        }

    private:
        Method m_method;
    };
} // namespace simulator
