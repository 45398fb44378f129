// BluetoothLEDevice: a device that a program holds, over LE. Services are not simulated.
#pragma once

#include "platform/abi/BluetoothLEDevice.h"
#include "simulator/bluetooth/DeviceCore.h"

namespace simulator
{
    template <>
    inline constexpr auto operationClassName<platform::IBluetoothLEDevice*> =
        "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Bluetooth.BluetoothLEDevice>";

    class BluetoothLEDevice final
        : public Object<platform::IBluetoothLEDevice, platform::IBluetoothLEDevice2, platform::IBluetoothLEDevice3,
                        platform::IBluetoothLEDevice4, platform::IBluetoothLEDevice5, platform::IClosable>
    {
    public:
        explicit BluetoothLEDevice(Endpoint endpoint);

        HRESULT STDMETHODCALLTYPE get_DeviceId(HSTRING* value) override;
        HRESULT STDMETHODCALLTYPE get_Name(HSTRING* value) override;
        HRESULT STDMETHODCALLTYPE get_GattServices(void** value) override;
        HRESULT STDMETHODCALLTYPE get_ConnectionStatus(platform::BluetoothConnectionStatus* value) override;
        HRESULT STDMETHODCALLTYPE get_BluetoothAddress(UINT64* value) override;
        HRESULT STDMETHODCALLTYPE GetGattService(GUID id, void** result) override;
        HRESULT STDMETHODCALLTYPE add_NameChanged(platform::BluetoothLEDeviceHandler* handler,
                                                  EventRegistrationToken* token) override;
        HRESULT STDMETHODCALLTYPE remove_NameChanged(EventRegistrationToken token) override;
        HRESULT STDMETHODCALLTYPE add_GattServicesChanged(platform::BluetoothLEDeviceHandler* handler,
                                                          EventRegistrationToken* token) override;
        HRESULT STDMETHODCALLTYPE remove_GattServicesChanged(EventRegistrationToken token) override;
        HRESULT STDMETHODCALLTYPE add_ConnectionStatusChanged(platform::BluetoothLEDeviceHandler* handler,
                                                              EventRegistrationToken* token) override;
        HRESULT STDMETHODCALLTYPE remove_ConnectionStatusChanged(EventRegistrationToken token) override;
        HRESULT STDMETHODCALLTYPE get_DeviceInformation(platform::IDeviceInformation** value) override;
        HRESULT STDMETHODCALLTYPE get_Appearance(platform::IBluetoothLEAppearance** value) override;
        HRESULT STDMETHODCALLTYPE get_BluetoothAddressType(platform::BluetoothAddressType* value) override;
        HRESULT STDMETHODCALLTYPE get_DeviceAccessInformation(void** value) override;
        HRESULT STDMETHODCALLTYPE
        RequestAccessAsync(platform::IAsyncOperation<platform::DeviceAccessStatus>** operation) override;
        HRESULT STDMETHODCALLTYPE GetGattServicesAsync(void** result) override;
        HRESULT STDMETHODCALLTYPE GetGattServicesWithCacheModeAsync(INT32 cacheMode, void** result) override;
        HRESULT STDMETHODCALLTYPE GetGattServicesForUuidAsync(GUID id, void** result) override;
        HRESULT STDMETHODCALLTYPE GetGattServicesForUuidWithCacheModeAsync(GUID id, INT32 cacheMode,
                                                                           void** result) override;
        HRESULT STDMETHODCALLTYPE get_BluetoothDeviceId(platform::IBluetoothDeviceId** value) override;
        HRESULT STDMETHODCALLTYPE get_WasSecureConnectionUsedForPairing(boolean* value) override;
        HRESULT STDMETHODCALLTYPE Close() override;

    private:
        char const* ClassName() const noexcept override;

        DeviceCore<platform::IBluetoothLEDevice> m_core;
    };

    class BluetoothLEDeviceFactory final
        : public Factory<platform::IBluetoothLEDeviceStatics, platform::IBluetoothLEDeviceStatics2>
    {
        using Operation = platform::IAsyncOperation<platform::IBluetoothLEDevice*>;

    public:
        HRESULT STDMETHODCALLTYPE ActivateInstance(::IInspectable** instance) override;
        HRESULT STDMETHODCALLTYPE FromIdAsync(HSTRING id, Operation** operation) override;
        HRESULT STDMETHODCALLTYPE FromBluetoothAddressAsync(UINT64 address, Operation** operation) override;
        HRESULT STDMETHODCALLTYPE GetDeviceSelector(HSTRING* selector) override;
        HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromPairingState(boolean paired, HSTRING* selector) override;
        HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromConnectionStatus(platform::BluetoothConnectionStatus status,
                                                                        HSTRING* selector) override;
        HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromDeviceName(HSTRING name, HSTRING* selector) override;
        HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromBluetoothAddress(UINT64 address, HSTRING* selector) override;
        HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromBluetoothAddressWithBluetoothAddressType(
            UINT64 address, platform::BluetoothAddressType type, HSTRING* selector) override;
        HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromAppearance(platform::IBluetoothLEAppearance* appearance,
                                                                  HSTRING* selector) override;
        HRESULT STDMETHODCALLTYPE FromBluetoothAddressWithBluetoothAddressTypeAsync(UINT64 address,
                                                                                    platform::BluetoothAddressType type,
                                                                                    Operation** operation) override;
    };
} // namespace simulator
