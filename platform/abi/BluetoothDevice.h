// Windows.Devices.Bluetooth.BluetoothDevice at the binary level. Pointers to types that nobody here touches stay
// untyped; their slots count.
#pragma once

#include "platform/abi/BluetoothValues.h"
#include "platform/abi/Enumeration.h"

namespace platform
{
    struct IBluetoothDevice;

    using BluetoothDeviceHandler = TypedEventHandler<IBluetoothDevice*, ::IInspectable*>;

    struct IBluetoothDeviceStatics : ::IInspectable
    {
        static constexpr GUID iid{0x0991DF51, 0x57DB, 0x4725, {0xBB, 0xD7, 0x84, 0xF6, 0x43, 0x27, 0xEC, 0x2C}};
        virtual HRESULT STDMETHODCALLTYPE FromIdAsync(HSTRING id, IAsyncOperation<IBluetoothDevice*>** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE FromHostNameAsync(void* hostName,
                                                            IAsyncOperation<IBluetoothDevice*>** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE FromBluetoothAddressAsync(UINT64 address,
                                                                    IAsyncOperation<IBluetoothDevice*>** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDeviceSelector(HSTRING* selector) = 0;
    };

    struct IBluetoothDeviceStatics2 : ::IInspectable
    {
        static constexpr GUID iid{0xC29E8E2F, 0x4E14, 0x4477, {0xAA, 0x1B, 0xB8, 0xB4, 0x7E, 0x5B, 0x7E, 0xCE}};
        virtual HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromPairingState(boolean paired, HSTRING* selector) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromConnectionStatus(BluetoothConnectionStatus status,
                                                                                HSTRING* selector) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromDeviceName(HSTRING name, HSTRING* selector) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromBluetoothAddress(UINT64 address, HSTRING* selector) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromClassOfDevice(IBluetoothClassOfDevice* classOfDevice,
                                                                             HSTRING* selector) = 0;
    };

    struct IBluetoothDevice : ::IInspectable
    {
        static constexpr GUID iid{0x2335B156, 0x90D2, 0x4A04, {0xAE, 0xF5, 0x0E, 0x20, 0xB9, 0xE6, 0xB7, 0x07}};
        virtual HRESULT STDMETHODCALLTYPE get_DeviceId(HSTRING* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_HostName(void** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Name(HSTRING* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_ClassOfDevice(IBluetoothClassOfDevice** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_SdpRecords(void** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_RfcommServices(void** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_ConnectionStatus(BluetoothConnectionStatus* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_BluetoothAddress(UINT64* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE add_NameChanged(BluetoothDeviceHandler* handler,
                                                          EventRegistrationToken* token) = 0;
        virtual HRESULT STDMETHODCALLTYPE remove_NameChanged(EventRegistrationToken token) = 0;
        virtual HRESULT STDMETHODCALLTYPE add_SdpRecordsChanged(BluetoothDeviceHandler* handler,
                                                                EventRegistrationToken* token) = 0;
        virtual HRESULT STDMETHODCALLTYPE remove_SdpRecordsChanged(EventRegistrationToken token) = 0;
        virtual HRESULT STDMETHODCALLTYPE add_ConnectionStatusChanged(BluetoothDeviceHandler* handler,
                                                                      EventRegistrationToken* token) = 0;
        virtual HRESULT STDMETHODCALLTYPE remove_ConnectionStatusChanged(EventRegistrationToken token) = 0;
    };

    struct IBluetoothDevice2 : ::IInspectable
    {
        static constexpr GUID iid{0x0133F954, 0xB156, 0x4DD0, {0xB1, 0xF5, 0xC1, 0x1B, 0xC3, 0x1A, 0x51, 0x63}};
        virtual HRESULT STDMETHODCALLTYPE get_DeviceInformation(IDeviceInformation** value) = 0;
    };

    struct IBluetoothDevice3 : ::IInspectable
    {
        static constexpr GUID iid{0x57FFF78B, 0x651A, 0x4454, {0xB9, 0x0F, 0xEB, 0x21, 0xEF, 0x0B, 0x0D, 0x71}};
        virtual HRESULT STDMETHODCALLTYPE get_DeviceAccessInformation(void** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE RequestAccessAsync(IAsyncOperation<DeviceAccessStatus>** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetRfcommServicesAsync(void** result) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetRfcommServicesWithCacheModeAsync(INT32 cacheMode, void** result) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetRfcommServicesForIdAsync(void* id, void** result) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetRfcommServicesForIdWithCacheModeAsync(void* id, INT32 cacheMode,
                                                                                   void** result) = 0;
    };

    struct IBluetoothDevice4 : ::IInspectable
    {
        static constexpr GUID iid{0x817C34AD, 0x0E9C, 0x42B2, {0xA8, 0xDC, 0x3E, 0x80, 0x94, 0x94, 0x0D, 0x12}};
        virtual HRESULT STDMETHODCALLTYPE get_BluetoothDeviceId(IBluetoothDeviceId** value) = 0;
    };

    struct IBluetoothDevice5 : ::IInspectable
    {
        static constexpr GUID iid{0xB5E0B385, 0x5E85, 0x4559, {0xA1, 0x0D, 0x1C, 0x72, 0x81, 0x37, 0x9F, 0x96}};
        virtual HRESULT STDMETHODCALLTYPE get_WasSecureConnectionUsedForPairing(boolean* value) = 0;
    };

    template <>
    inline constexpr GUID iid_of<IAsyncOperation<IBluetoothDevice*>>{
        0xB58D8D19, 0x44BD, 0x5AC0, {0xA0, 0xD6, 0x1B, 0x50, 0x80, 0x0F, 0x31, 0x81}};
    template <>
    inline constexpr GUID iid_of<AsyncOperationCompletedHandler<IBluetoothDevice*>>{
        0xB2E8CDD1, 0x66AA, 0x5892, {0x85, 0xA3, 0x8F, 0x0B, 0x16, 0x5E, 0x43, 0xFC}};
    template <>
    inline constexpr GUID iid_of<BluetoothDeviceHandler>{
        0xDB56CE1C, 0x5E9F, 0x5138, {0x92, 0x27, 0xB1, 0xA6, 0x6D, 0x60, 0xBC, 0x1B}};
} // namespace platform
