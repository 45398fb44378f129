// What a Bluetooth device says of itself, at the binary level: its identifier, its class, its appearance.
#pragma once

#include "platform/abi/Foundation.h"

namespace platform
{
    enum class BluetoothConnectionStatus : INT32
    {
        Disconnected = 0,
        Connected = 1,
    };

    enum class BluetoothAddressType : INT32
    {
        Public = 0,
        Random = 1,
        Unspecified = 2,
    };

    enum class BluetoothMajorClass : INT32
    {
        Miscellaneous = 0,
        Computer = 1,
        Phone = 2,
        NetworkAccessPoint = 3,
        AudioVideo = 4,
        Peripheral = 5,
        Imaging = 6,
        Wearable = 7,
        Toy = 8,
        Health = 9,
    };

    struct IBluetoothDeviceId : ::IInspectable
    {
        static constexpr GUID iid{0xC17949AF, 0x57C1, 0x4642, {0xBC, 0xCE, 0xE6, 0xC0, 0x6B, 0x20, 0xAE, 0x76}};
        virtual HRESULT STDMETHODCALLTYPE get_Id(HSTRING* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_IsClassicDevice(boolean* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_IsLowEnergyDevice(boolean* value) = 0;
    };

    struct IBluetoothDeviceIdStatics : ::IInspectable
    {
        static constexpr GUID iid{0xA7884E67, 0x3EFB, 0x4F31, {0xBB, 0xC2, 0x81, 0x0E, 0x09, 0x97, 0x74, 0x04}};
        virtual HRESULT STDMETHODCALLTYPE FromId(HSTRING id, IBluetoothDeviceId** value) = 0;
    };

    struct IBluetoothClassOfDevice : ::IInspectable
    {
        static constexpr GUID iid{0xD640227E, 0xD7D7, 0x4661, {0x94, 0x54, 0x65, 0x03, 0x9C, 0xA1, 0x7A, 0x2B}};
        virtual HRESULT STDMETHODCALLTYPE get_RawValue(UINT32* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_MajorClass(BluetoothMajorClass* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_MinorClass(INT32* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_ServiceCapabilities(UINT32* value) = 0;
    };

    struct IBluetoothClassOfDeviceStatics : ::IInspectable
    {
        static constexpr GUID iid{0xE46135BD, 0x0FA2, 0x416C, {0x91, 0xB4, 0xC1, 0xE4, 0x8C, 0xA0, 0x61, 0xC1}};
        virtual HRESULT STDMETHODCALLTYPE FromRawValue(UINT32 rawValue, IBluetoothClassOfDevice** value) = 0;
        virtual HRESULT STDMETHODCALLTYPE FromParts(BluetoothMajorClass majorClass, INT32 minorClass,
                                                    UINT32 capabilities, IBluetoothClassOfDevice** value) = 0;
    };

    struct IBluetoothLEAppearance : ::IInspectable
    {
        static constexpr GUID iid{0x5D2079F2, 0x66A8, 0x4258, {0x98, 0x5E, 0x02, 0xB4, 0xD9, 0x50, 0x9F, 0x18}};
        virtual HRESULT STDMETHODCALLTYPE get_RawValue(UINT16* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_Category(UINT16* value) = 0;
        virtual HRESULT STDMETHODCALLTYPE get_SubCategory(UINT16* value) = 0;
    };

    // Of Windows.Devices.Enumeration: only Bluetooth devices ask for it here.
    enum class DeviceAccessStatus : INT32
    {
        Unspecified = 0,
        Allowed = 1,
        DeniedByUser = 2,
        DeniedBySystem = 3,
    };

    template <>
    inline constexpr GUID iid_of<IAsyncOperation<DeviceAccessStatus>>{
        0xC00BC2F2, 0xA7F8, 0x5F3F, {0x80, 0xD1, 0x28, 0x08, 0xEF, 0x6B, 0xCA, 0x10}};
    template <>
    inline constexpr GUID iid_of<AsyncOperationCompletedHandler<DeviceAccessStatus>>{
        0xEE154D83, 0x805B, 0x53E8, {0x84, 0x69, 0x90, 0x71, 0x50, 0x36, 0xD0, 0x13}};
} // namespace platform
