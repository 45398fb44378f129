// How a program comes by a BluetoothDevice: its statics.
#include "simulator/bluetooth/BluetoothDevice.h"
#include "simulator/bluetooth/Selectors.h"

namespace simulator
{
    using platform::BluetoothConnectionStatus;
    using platform::IBluetoothDevice;

    namespace
    {
        Ref<IBluetoothDevice> MakeDevice(std::optional<Endpoint> endpoint)
        {
            return endpoint ? Ref<IBluetoothDevice>::Adopt(Make<BluetoothDevice>(*std::move(endpoint)).Detach())
                            : Ref<IBluetoothDevice>();
        }
    } // namespace

    HRESULT BluetoothDeviceFactory::ActivateInstance(::IInspectable** instance)
    {
        return Outside("BluetoothDevice.ActivateInstance", {}, instance);
    }

    HRESULT BluetoothDeviceFactory::FromIdAsync(HSTRING id, Operation** operation)
    {
        auto const text = FromHstring(id);
        return BeginIf(IsIdentifier(Protocol::Classic, text), "BluetoothDevice.FromIdAsync", Quoted(text), operation,
                       [text](AsyncOperation<IBluetoothDevice*>& async) {
                           async.Complete(MakeDevice(FindEndpoint(Protocol::Classic, text)));
                       });
    }

    HRESULT BluetoothDeviceFactory::FromHostNameAsync(void*, Operation** operation)
    {
        return Outside("BluetoothDevice.FromHostNameAsync", {}, operation);
    }

    HRESULT BluetoothDeviceFactory::FromBluetoothAddressAsync(UINT64 address, Operation** operation)
    {
        return BeginIf(address <= highestAddress, "BluetoothDevice.FromBluetoothAddressAsync", Text(address), operation,
                       [address](AsyncOperation<IBluetoothDevice*>& async) {
                           async.Complete(MakeDevice(FindEndpointAt(Protocol::Classic, address)));
                       });
    }

    HRESULT BluetoothDeviceFactory::GetDeviceSelector(HSTRING* selector)
    {
        return GetString("BluetoothDevice.GetDeviceSelector", {}, selector,
                         [] { return PairingSelector(Protocol::Classic, true); });
    }

    HRESULT BluetoothDeviceFactory::GetDeviceSelectorFromPairingState(boolean paired, HSTRING* selector)
    {
        return GetString("BluetoothDevice.GetDeviceSelectorFromPairingState", Text(paired), selector,
                         [&] { return PairingSelector(Protocol::Classic, paired != 0); });
    }

    HRESULT BluetoothDeviceFactory::GetDeviceSelectorFromConnectionStatus(BluetoothConnectionStatus status,
                                                                          HSTRING* selector)
    {
        bool const connected = status == BluetoothConnectionStatus::Connected;
        return GetSelector(connected || status == BluetoothConnectionStatus::Disconnected,
                           "BluetoothDevice.GetDeviceSelectorFromConnectionStatus", Text(status), selector,
                           [&] { return ConnectionSelector(Protocol::Classic, connected); });
    }

    HRESULT BluetoothDeviceFactory::GetDeviceSelectorFromDeviceName(HSTRING name, HSTRING* selector)
    {
        auto const text = FromHstring(name);
        return GetString("BluetoothDevice.GetDeviceSelectorFromDeviceName", Quoted(text), selector,
                         [&] { return NameSelector(Protocol::Classic, text); });
    }

    HRESULT BluetoothDeviceFactory::GetDeviceSelectorFromBluetoothAddress(UINT64 address, HSTRING* selector)
    {
        return GetSelector(address <= highestAddress, "BluetoothDevice.GetDeviceSelectorFromBluetoothAddress",
                           Text(address), selector, [&] { return AddressSelector(Protocol::Classic, address); });
    }

    HRESULT BluetoothDeviceFactory::GetDeviceSelectorFromClassOfDevice(platform::IBluetoothClassOfDevice* classOfDevice,
                                                                       HSTRING* selector)
    {
        platform::BluetoothMajorClass majorClass{};
        INT32 minorClass = 0;
        bool const valid = classOfDevice && SUCCEEDED(classOfDevice->get_MajorClass(&majorClass)) &&
                           SUCCEEDED(classOfDevice->get_MinorClass(&minorClass));
        return GetSelector(valid, "BluetoothDevice.GetDeviceSelectorFromClassOfDevice",
                           Text(majorClass) + ", " + Text(minorClass), selector,
                           [&] { return ClassSelector(static_cast<std::int32_t>(majorClass), minorClass); });
    }
} // namespace simulator
