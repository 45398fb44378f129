// Windows.Devices.Bluetooth and Windows.Devices.Radios at the binary level: what asking for the PC's adapter needs.
// Pointers to types that nobody here touches stay untyped; their slots count.
#pragma once

#include "platform/abi/Foundation.h"

namespace platform
{
    struct IBluetoothAdapter;
    struct IRadio;

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

    enum class RadioState : INT32
    {
        Unknown = 0,
        On = 1,
        Off = 2,
        Disabled = 3,
    };

    struct IRadio : ::IInspectable
    {
        static constexpr GUID iid{0x252118DF, 0xB33E, 0x416A, {0x87, 0x5F, 0x1C, 0xF3, 0x8A, 0xE2, 0xD8, 0x3E}};
        virtual HRESULT STDMETHODCALLTYPE SetStateAsync(RadioState value, void** operation) = 0;
        virtual HRESULT STDMETHODCALLTYPE add_StateChanged(void* handler, EventRegistrationToken* token) = 0;
        virtual HRESULT STDMETHODCALLTYPE remove_StateChanged(EventRegistrationToken token) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_State(RadioState* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Name(HSTRING* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Kind(INT32* value) = 0;
    };

    template <>
    inline constexpr GUID iid_of<IAsyncOperation<IBluetoothAdapter*>>{
        0x46FCE70C, 0x6C07, 0x5A3A, {0xB7, 0x75, 0x26, 0xF9, 0x94, 0x02, 0x55, 0x3F}};
    template <>
    inline constexpr GUID iid_of<IAsyncOperation<IRadio*>>{
        0xEAC62C40, 0x8DBC, 0x5854, {0x8B, 0xA0, 0xB7, 0xB9, 0x94, 0x0E, 0x73, 0x89}};
} // namespace platform
