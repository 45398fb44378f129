// Windows.Devices.Bluetooth and Windows.Devices.Radios at the binary level; here the PC's adapter.
#pragma once

#include "platform/abi/BluetoothDevice.h"
#include "platform/abi/BluetoothLEDevice.h"
#include "platform/abi/BluetoothValues.h"
#include "platform/abi/Radios.h"

namespace platform
{
    struct IBluetoothAdapter;

    struct IBluetoothAdapterStatics : ::IInspectable
    {
        static constexpr GUID iid{0x8B02FB6A, 0xAC4C, 0x4741, {0x86, 0x61, 0x8E, 0xAB, 0x7D, 0x17, 0xEA, 0x9F}};
        virtual HRESULT STDMETHODCALLTYPE GetDeviceSelector(HSTRING* selector) = 0;
        virtual HRESULT STDMETHODCALLTYPE FromIdAsync(HSTRING id, IAsyncOperation<IBluetoothAdapter*>** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetDefaultAsync(IAsyncOperation<IBluetoothAdapter*>** operation) = 0;
    };

    struct IBluetoothAdapter : ::IInspectable
    {
        static constexpr GUID iid{0x7974F04C, 0x5F7A, 0x4A34, {0x92, 0x25, 0xA8, 0x55, 0xF8, 0x4B, 0x1A, 0x8B}};
        virtual HRESULT STDMETHODCALLTYPE get_DeviceId(HSTRING* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_BluetoothAddress(UINT64* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_IsClassicSupported(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_IsLowEnergySupported(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_IsPeripheralRoleSupported(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_IsCentralRoleSupported(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_IsAdvertisementOffloadSupported(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE GetRadioAsync(IAsyncOperation<IRadio*>** operation) = 0;
    };

    struct IBluetoothAdapter2 : ::IInspectable
    {
        static constexpr GUID iid{0xAC94CECC, 0x24D5, 0x41B3, {0x91, 0x6D, 0x10, 0x97, 0xC5, 0x0B, 0x10, 0x2B}};
        virtual HRESULT STDMETHODCALLTYPE get_AreClassicSecureConnectionsSupported(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_AreLowEnergySecureConnectionsSupported(boolean* value) = 0;
    };

    struct IBluetoothAdapter3 : ::IInspectable
    {
        static constexpr GUID iid{0x8F8624E0, 0xCBA9, 0x5211, {0x9F, 0x89, 0x3A, 0xAC, 0x62, 0xB4, 0xC6, 0xB8}};
        virtual HRESULT STDMETHODCALLTYPE get_IsExtendedAdvertisingSupported(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_MaxAdvertisementDataLength(UINT32* value) = 0;
    };

    template <>
    inline constexpr GUID iid_of<IAsyncOperation<IBluetoothAdapter*>>{
        0x46FCE70C, 0x6C07, 0x5A3A, {0xB7, 0x75, 0x26, 0xF9, 0x94, 0x02, 0x55, 0x3F}};
    template <>
    inline constexpr GUID iid_of<AsyncOperationCompletedHandler<IBluetoothAdapter*>>{
        0x10A10A88, 0x90E0, 0x511A, {0x9A, 0x08, 0xD7, 0x5F, 0xEB, 0x52, 0xA1, 0x9F}};
} // namespace platform
