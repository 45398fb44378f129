// Windows.Devices.Bluetooth.BluetoothLEDevice at the binary level. Pointers to types that nobody here touches stay
// untyped; their slots count.
#pragma once

#include "platform/abi/BluetoothValues.h"
#include "platform/abi/Enumeration.h"

namespace platform
{
    struct IBluetoothLEDevice;

    using BluetoothLEDeviceHandler = TypedEventHandler<IBluetoothLEDevice*, ::IInspectable*>;

    struct IBluetoothLEDeviceStatics : ::IInspectable
    {
        static constexpr GUID iid{0xC8CF1A19, 0xF0B6, 0x4BF0, {0x86, 0x89, 0x41, 0x30, 0x3D, 0xE2, 0xD9, 0xF4}};
        virtual HRESULT STDMETHODCALLTYPE FromIdAsync(HSTRING id, IAsyncOperation<IBluetoothLEDevice*>** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE
        FromBluetoothAddressAsync(UINT64 address, IAsyncOperation<IBluetoothLEDevice*>** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDeviceSelector(HSTRING* selector) = 0;
    };

    struct IBluetoothLEDeviceStatics2 : ::IInspectable
    {
        static constexpr GUID iid{0x5F12C06B, 0x3BAC, 0x43E8, {0xAD, 0x16, 0x56, 0x32, 0x71, 0xBD, 0x41, 0xC2}};
        virtual HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromPairingState(boolean paired, HSTRING* selector) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromConnectionStatus(BluetoothConnectionStatus status,
                                                                                HSTRING* selector) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromDeviceName(HSTRING name, HSTRING* selector) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromBluetoothAddress(UINT64 address, HSTRING* selector) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromBluetoothAddressWithBluetoothAddressType(
            UINT64 address, BluetoothAddressType type, HSTRING* selector) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDeviceSelectorFromAppearance(IBluetoothLEAppearance* appearance,
                                                                          HSTRING* selector) = 0;
        virtual HRESULT STDMETHODCALLTYPE FromBluetoothAddressWithBluetoothAddressTypeAsync(
            UINT64 address, BluetoothAddressType type, IAsyncOperation<IBluetoothLEDevice*>** operation) = 0;
    };

    struct IBluetoothLEDevice : ::IInspectable
    {
        static constexpr GUID iid{0xB5EE2F7B, 0x4AD8, 0x4642, {0xAC, 0x48, 0x80, 0xA0, 0xB5, 0x00, 0xE8, 0x87}};
        virtual HRESULT STDMETHODCALLTYPE get_DeviceId(HSTRING* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Name(HSTRING* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_GattServices(void** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_ConnectionStatus(BluetoothConnectionStatus* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_BluetoothAddress(UINT64* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetGattService(GUID id, void** result) = 0;
        virtual HRESULT STDMETHODCALLTYPE add_NameChanged(BluetoothLEDeviceHandler* handler,
                                                          EventRegistrationToken* token) = 0;
        virtual HRESULT STDMETHODCALLTYPE remove_NameChanged(EventRegistrationToken token) = 0;
        virtual HRESULT STDMETHODCALLTYPE add_GattServicesChanged(BluetoothLEDeviceHandler* handler,
                                                                  EventRegistrationToken* token) = 0;
        virtual HRESULT STDMETHODCALLTYPE remove_GattServicesChanged(EventRegistrationToken token) = 0;
        virtual HRESULT STDMETHODCALLTYPE add_ConnectionStatusChanged(BluetoothLEDeviceHandler* handler,
                                                                      EventRegistrationToken* token) = 0;
        virtual HRESULT STDMETHODCALLTYPE remove_ConnectionStatusChanged(EventRegistrationToken token) = 0;
    };

    struct IBluetoothLEDevice2 : ::IInspectable
    {
        static constexpr GUID iid{0x26F062B3, 0x7AEE, 0x4D31, {0xBA, 0xBA, 0xB1, 0xB9, 0x77, 0x5F, 0x59, 0x16}};
        virtual HRESULT STDMETHODCALLTYPE get_DeviceInformation(IDeviceInformation** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Appearance(IBluetoothLEAppearance** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_BluetoothAddressType(BluetoothAddressType* value) = 0;
    };

    struct IBluetoothLEDevice3 : ::IInspectable
    {
        static constexpr GUID iid{0xAEE9E493, 0x44AC, 0x40DC, {0xAF, 0x33, 0xB2, 0xC1, 0x3C, 0x01, 0xCA, 0x46}};
        virtual HRESULT STDMETHODCALLTYPE get_DeviceAccessInformation(void** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE RequestAccessAsync(IAsyncOperation<DeviceAccessStatus>** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetGattServicesAsync(void** result) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetGattServicesWithCacheModeAsync(INT32 cacheMode, void** result) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetGattServicesForUuidAsync(GUID id, void** result) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetGattServicesForUuidWithCacheModeAsync(GUID id, INT32 cacheMode,
                                                                                   void** result) = 0;
    };

    struct IBluetoothLEDevice4 : ::IInspectable
    {
        static constexpr GUID iid{0x2B605031, 0x2248, 0x4B2F, {0xAC, 0xF0, 0x7C, 0xEE, 0x36, 0xFC, 0x58, 0x70}};
        virtual HRESULT STDMETHODCALLTYPE get_BluetoothDeviceId(IBluetoothDeviceId** value) = 0;
    };

    struct IBluetoothLEDevice5 : ::IInspectable
    {
        static constexpr GUID iid{0x9D6A1260, 0x5287, 0x458E, {0x95, 0xBA, 0x17, 0xC8, 0xB7, 0xBB, 0x32, 0x6E}};
        virtual HRESULT STDMETHODCALLTYPE get_WasSecureConnectionUsedForPairing(boolean* value) = 0;
    };

    template <>
    inline constexpr GUID iid_of<IAsyncOperation<IBluetoothLEDevice*>>{
        0x375F9D67, 0x74A2, 0x5F91, {0xA1, 0x1D, 0x16, 0x90, 0x93, 0x71, 0x8D, 0x41}};
    template <>
    inline constexpr GUID iid_of<AsyncOperationCompletedHandler<IBluetoothLEDevice*>>{
        0x9156B79F, 0xC54A, 0x5277, {0x8F, 0x8B, 0xD2, 0xCC, 0x43, 0xC7, 0xE0, 0x04}};
    template <>
    inline constexpr GUID iid_of<BluetoothLEDeviceHandler>{
        0xA90661E2, 0x372E, 0x5D1E, {0xBB, 0xBB, 0xB8, 0xA2, 0xCE, 0x0E, 0x7C, 0x4D}};
} // namespace platform
