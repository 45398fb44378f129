// BluetoothDevice: a device that a program holds, over Classic. Services are not simulated.
#pragma once

#include "platform/abi/BluetoothDevice.h"
#include "simulator/bluetooth/DeviceCore.h"

namespace simulator
{
    template <>
    inline constexpr auto operationClassName<platform::IBluetoothDevice*> =
        "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Bluetooth.BluetoothDevice>";

    class BluetoothDevice final
        : public Object<platform::IBluetoothDevice, platform::IBluetoothDevice2, platform::IBluetoothDevice3,
                        platform::IBluetoothDevice4, platform::IBluetoothDevice5, platform::IClosable>
    {
    public:
        explicit BluetoothDevice(Endpoint endpoint);

        HRESULT STDMETHODCALLTYPE get_DeviceId(HSTRING* value) override;
        HRESULT STDMETHODCALLTYPE get_HostName(void** value) override;
        HRESULT STDMETHODCALLTYPE get_Name(HSTRING* value) override;
        HRESULT STDMETHODCALLTYPE get_ClassOfDevice(platform::IBluetoothClassOfDevice** value) override;
        HRESULT STDMETHODCALLTYPE get_SdpRecords(void** value) override;
        HRESULT STDMETHODCALLTYPE get_RfcommServices(void** value) override;
        HRESULT STDMETHODCALLTYPE get_ConnectionStatus(platform::BluetoothConnectionStatus* value) override;
        HRESULT STDMETHODCALLTYPE get_BluetoothAddress(UINT64* value) override;
        HRESULT STDMETHODCALLTYPE add_NameChanged(platform::BluetoothDeviceHandler* handler,
                                                  EventRegistrationToken* token) override;
        HRESULT STDMETHODCALLTYPE remove_NameChanged(EventRegistrationToken token) override;
        HRESULT STDMETHODCALLTYPE add_SdpRecordsChanged(platform::BluetoothDeviceHandler* handler,
                                                        EventRegistrationToken* token) override;
        HRESULT STDMETHODCALLTYPE remove_SdpRecordsChanged(EventRegistrationToken token) override;
        HRESULT STDMETHODCALLTYPE add_ConnectionStatusChanged(platform::BluetoothDeviceHandler* handler,
                                                              EventRegistrationToken* token) override;
        HRESULT STDMETHODCALLTYPE remove_ConnectionStatusChanged(EventRegistrationToken token) override;
        HRESULT STDMETHODCALLTYPE get_DeviceInformation(platform::IDeviceInformation** value) override;
        HRESULT STDMETHODCALLTYPE get_DeviceAccessInformation(void** value) override;
        HRESULT STDMETHODCALLTYPE
        RequestAccessAsync(platform::IAsyncOperation<platform::DeviceAccessStatus>** operation) override;
        HRESULT STDMETHODCALLTYPE GetRfcommServicesAsync(void** result) override;
        HRESULT STDMETHODCALLTYPE GetRfcommServicesWithCacheModeAsync(INT32 cacheMode, void** result) override;
        HRESULT STDMETHODCALLTYPE GetRfcommServicesForIdAsync(void* id, void** result) override;
        HRESULT STDMETHODCALLTYPE GetRfcommServicesForIdWithCacheModeAsync(void* id, INT32 cacheMode,
                                                                           void** result) override;
        HRESULT STDMETHODCALLTYPE get_BluetoothDeviceId(platform::IBluetoothDeviceId** value) override;
        HRESULT STDMETHODCALLTYPE get_WasSecureConnectionUsedForPairing(boolean* value) override;
        HRESULT STDMETHODCALLTYPE Close() override;

    private:
        char const* ClassName() const noexcept override;

        DeviceCore<platform::IBluetoothDevice> m_core;
    };

    class BluetoothDeviceFactory final
        : public Factory<platform::IBluetoothDeviceStatics, platform::IBluetoothDeviceStatics2>
    {
        using Operation = platform::IAsyncOperation<platform::IBluetoothDevice*>;

    public:
        HRESULT STDMETHODCALLTYPE ActivateInstance(::IInspectable** instance) override;
        HRESULT STDMETHODCALLTYPE FromIdAsync(HSTRING id, Operation** operation) override;
        HRESULT STDMETHODCALLTYPE FromHostNameAsync(void* hostName, Operation** operation) override;
        HRESULT STDMETHODCALLTYPE FromBluetoothAddressAsync(UINT64 address, Operation** operation) override;
        HRESULT STDMETHODCALLTYPE GetDeviceSelector(HSTRING* selector) override;
        HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromPairingState(boolean paired, HSTRING* selector) override;
        HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromConnectionStatus(platform::BluetoothConnectionStatus status,
                                                                        HSTRING* selector) override;
        HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromDeviceName(HSTRING name, HSTRING* selector) override;
        HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromBluetoothAddress(UINT64 address, HSTRING* selector) override;
        HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromClassOfDevice(platform::IBluetoothClassOfDevice* classOfDevice,
                                                                     HSTRING* selector) override;
    };
} // namespace simulator
