// What a device says of itself, as objects: BluetoothDeviceId, BluetoothClassOfDevice, BluetoothLEAppearance.
#pragma once

#include "platform/abi/BluetoothValues.h"
#include "simulator/bluetooth/Factory.h"

namespace simulator
{
    Ref<platform::IBluetoothDeviceId> MakeDeviceId(std::string id);
    Ref<platform::IBluetoothClassOfDevice> MakeClassOfDevice(std::uint32_t raw);
    Ref<platform::IBluetoothLEAppearance> MakeAppearance(std::uint16_t raw);

    class DeviceIdFactory final : public Factory<platform::IBluetoothDeviceIdStatics>
    {
    public:
        HRESULT STDMETHODCALLTYPE ActivateInstance(::IInspectable** instance) override;
        HRESULT STDMETHODCALLTYPE FromId(HSTRING id, platform::IBluetoothDeviceId** value) override;
    };

    class ClassOfDeviceFactory final : public Factory<platform::IBluetoothClassOfDeviceStatics>
    {
    public:
        HRESULT STDMETHODCALLTYPE ActivateInstance(::IInspectable** instance) override;
        HRESULT STDMETHODCALLTYPE FromRawValue(UINT32 rawValue, platform::IBluetoothClassOfDevice** value) override;
        HRESULT STDMETHODCALLTYPE FromParts(platform::BluetoothMajorClass majorClass, INT32 minorClass,
                                            UINT32 capabilities, platform::IBluetoothClassOfDevice** value) override;
    };

    class AppearanceFactory final : public Factory<>
    {
    public:
        HRESULT STDMETHODCALLTYPE ActivateInstance(::IInspectable** instance) override;
    };
} // namespace simulator
