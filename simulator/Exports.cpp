// The two entries by which the operating system finds the simulated classes.
#include "simulator/bluetooth/BluetoothAdapter.h"
#include "simulator/bluetooth/BluetoothDevice.h"
#include "simulator/bluetooth/BluetoothLEDevice.h"
#include "simulator/bluetooth/BluetoothValues.h"
#include "simulator/bluetooth/RadioStatics.h"
#include "simulator/objects/DeviceStatics.h"
#include "simulator/objects/PairingStatics.h"
#include "simulator/trace/Call.h"

#include <windows.h>
#include <objbase.h>

#include <algorithm>
#include <string_view>

extern "C" HRESULT WINAPI DllGetActivationFactory(HSTRING name, ::IActivationFactory** factory);

namespace
{
    using namespace simulator;

    // Threads of the simulator may be in its code at any time: once used, the module stays.
    void StayLoaded()
    {
        HMODULE module = nullptr;
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                           reinterpret_cast<LPCWSTR>(&DllGetActivationFactory), &module);
    }

    // Windows refuses to activate on a thread that has no apartment; Wine itself would let it through.
    bool IsInApartment()
    {
        APTTYPE type{};
        APTTYPEQUALIFIER qualifier{};
        return SUCCEEDED(CoGetApartmentType(&type, &qualifier));
    }

    struct Class
    {
        std::string_view name;
        Method method;                   // as the trace tells of an activation
        ::IActivationFactory* (*make)(); // null for a class that is left out whole
    };

    template <typename Made>
    ::IActivationFactory* MakeFactory()
    {
        return Make<Made>().Detach();
    }

    constexpr Class classes[] = {
        {"Windows.Devices.Bluetooth.BluetoothAdapter", "BluetoothAdapter.GetActivationFactory",
         MakeFactory<AdapterFactory>},
        {"Windows.Devices.Bluetooth.BluetoothClassOfDevice", "BluetoothClassOfDevice.GetActivationFactory",
         MakeFactory<ClassOfDeviceFactory>},
        {"Windows.Devices.Bluetooth.BluetoothDevice", "BluetoothDevice.GetActivationFactory",
         MakeFactory<BluetoothDeviceFactory>},
        {"Windows.Devices.Bluetooth.BluetoothDeviceId", "BluetoothDeviceId.GetActivationFactory",
         MakeFactory<DeviceIdFactory>},
        {"Windows.Devices.Bluetooth.BluetoothLEDevice", "BluetoothLEDevice.GetActivationFactory",
         MakeFactory<BluetoothLEDeviceFactory>},
        {"Windows.Devices.Bluetooth.BluetoothLEAppearance", "BluetoothLEAppearance.GetActivationFactory",
         MakeFactory<AppearanceFactory>},
        {"Windows.Devices.Enumeration.DeviceInformation", "DeviceInformation.GetActivationFactory",
         MakeFactory<DeviceInformationFactory>},
        {"Windows.Devices.Enumeration.DeviceInformationPairing", "DeviceInformationPairing.GetActivationFactory",
         MakeFactory<PairingFactory>},
        {"Windows.Devices.Radios.Radio", "Radio.GetActivationFactory", MakeFactory<RadioFactory>},
        {"Windows.Devices.Bluetooth.Advertisement.BluetoothLEAdvertisementPublisher",
         LeftOutMethod("BluetoothLEAdvertisementPublisher.GetActivationFactory"), nullptr},
        {"Windows.Devices.Bluetooth.Advertisement.BluetoothLEAdvertisementWatcher",
         LeftOutMethod("BluetoothLEAdvertisementWatcher.GetActivationFactory"), nullptr},
        {"Windows.Devices.Bluetooth.GenericAttributeProfile.GattCharacteristic",
         LeftOutMethod("GattCharacteristic.GetActivationFactory"), nullptr},
        {"Windows.Devices.Bluetooth.GenericAttributeProfile.GattDeviceService",
         LeftOutMethod("GattDeviceService.GetActivationFactory"), nullptr},
        {"Windows.Devices.Bluetooth.GenericAttributeProfile.GattServiceProvider",
         LeftOutMethod("GattServiceProvider.GetActivationFactory"), nullptr},
        {"Windows.Devices.Bluetooth.GenericAttributeProfile.GattSession",
         LeftOutMethod("GattSession.GetActivationFactory"), nullptr},
        {"Windows.Devices.Bluetooth.Rfcomm.RfcommDeviceService",
         LeftOutMethod("RfcommDeviceService.GetActivationFactory"), nullptr},
        {"Windows.Devices.Bluetooth.Rfcomm.RfcommServiceId", LeftOutMethod("RfcommServiceId.GetActivationFactory"),
         nullptr},
        {"Windows.Devices.Bluetooth.Rfcomm.RfcommServiceProvider",
         LeftOutMethod("RfcommServiceProvider.GetActivationFactory"), nullptr},
        {"Windows.Devices.Enumeration.DeviceAccessInformation",
         LeftOutMethod("DeviceAccessInformation.GetActivationFactory"), nullptr},
        {"Windows.Devices.Enumeration.DevicePicker", LeftOutMethod("DevicePicker.GetActivationFactory"), nullptr},
    };
} // namespace

extern "C" HRESULT WINAPI DllGetActivationFactory(HSTRING name, ::IActivationFactory** factory)
{
    if (!factory)
    {
        return E_INVALIDARG;
    }
    *factory = nullptr;
    StayLoaded();
    auto const* const known = std::ranges::find(classes, FromHstring(name), &Class::name);
    if (known == std::end(classes))
    {
        return classNotAvailable;
    }
    return Call(known->method, {}, [&](std::string&) {
        if (!IsInApartment())
        {
            return comNotInitialized;
        }
        if (!known->make)
        {
            return E_NOTIMPL;
        }
        *factory = known->make();
        return S_OK;
    });
}

extern "C" HRESULT WINAPI DllCanUnloadNow()
{
    return simulator::LiveObjects() == 0 ? S_OK : S_FALSE;
}
