// How a program comes by a BluetoothLEDevice: its statics.
#include "simulator/bluetooth/BluetoothLEDevice.h"
#include "simulator/bluetooth/Selectors.h"

namespace simulator
{
    using platform::BluetoothAddressType;
    using platform::BluetoothConnectionStatus;
    using platform::IBluetoothLEDevice;

    namespace
    {
        Ref<IBluetoothLEDevice> MakeDevice(std::optional<Endpoint> endpoint)
        {
            return endpoint ? Ref<IBluetoothLEDevice>::Adopt(Make<BluetoothLEDevice>(*std::move(endpoint)).Detach())
                            : Ref<IBluetoothLEDevice>();
        }

        bool IsAddressType(BluetoothAddressType type)
        {
            return type == BluetoothAddressType::Public || type == BluetoothAddressType::Random ||
                   type == BluetoothAddressType::Unspecified;
        }
    } // namespace

    HRESULT BluetoothLEDeviceFactory::ActivateInstance(::IInspectable** instance)
    {
        return Outside("BluetoothLEDevice.ActivateInstance", {}, instance);
    }

    HRESULT BluetoothLEDeviceFactory::FromIdAsync(HSTRING id, Operation** operation)
    {
        auto const text = FromHstring(id);
        return BeginIf(IsIdentifier(Protocol::Le, text), "BluetoothLEDevice.FromIdAsync", Quoted(text), operation,
                       [text](AsyncOperation<IBluetoothLEDevice*>& async) {
                           async.Complete(MakeDevice(FindEndpoint(Protocol::Le, text)));
                       });
    }

    HRESULT BluetoothLEDeviceFactory::FromBluetoothAddressAsync(UINT64 address, Operation** operation)
    {
        return BeginIf(address <= highestAddress, "BluetoothLEDevice.FromBluetoothAddressAsync", Text(address),
                       operation, [address](AsyncOperation<IBluetoothLEDevice*>& async) {
                           async.Complete(MakeDevice(FindEndpointAt(Protocol::Le, address)));
                       });
    }

    HRESULT BluetoothLEDeviceFactory::GetDeviceSelector(HSTRING* selector)
    {
        return GetString("BluetoothLEDevice.GetDeviceSelector", {}, selector,
                         [] { return PairingSelector(Protocol::Le, true); });
    }

    HRESULT BluetoothLEDeviceFactory::GetDeviceSelectorFromPairingState(boolean paired, HSTRING* selector)
    {
        return GetString("BluetoothLEDevice.GetDeviceSelectorFromPairingState", Text(paired), selector,
                         [&] { return PairingSelector(Protocol::Le, paired != 0); });
    }

    HRESULT BluetoothLEDeviceFactory::GetDeviceSelectorFromConnectionStatus(BluetoothConnectionStatus status,
                                                                            HSTRING* selector)
    {
        bool const connected = status == BluetoothConnectionStatus::Connected;
        return GetSelector(connected || status == BluetoothConnectionStatus::Disconnected,
                           "BluetoothLEDevice.GetDeviceSelectorFromConnectionStatus", Text(status), selector,
                           [&] { return ConnectionSelector(Protocol::Le, connected); });
    }

    HRESULT BluetoothLEDeviceFactory::GetDeviceSelectorFromDeviceName(HSTRING name, HSTRING* selector)
    {
        auto const text = FromHstring(name);
        return GetString("BluetoothLEDevice.GetDeviceSelectorFromDeviceName", Quoted(text), selector,
                         [&] { return NameSelector(Protocol::Le, text); });
    }

    HRESULT BluetoothLEDeviceFactory::GetDeviceSelectorFromBluetoothAddress(UINT64 address, HSTRING* selector)
    {
        return GetSelector(address <= highestAddress, "BluetoothLEDevice.GetDeviceSelectorFromBluetoothAddress",
                           Text(address), selector, [&] { return AddressSelector(Protocol::Le, address); });
    }

    HRESULT BluetoothLEDeviceFactory::GetDeviceSelectorFromBluetoothAddressWithBluetoothAddressType(
        UINT64 address, BluetoothAddressType type, HSTRING* selector)
    {
        return GetSelector(address <= highestAddress && IsAddressType(type),
                           "BluetoothLEDevice.GetDeviceSelectorFromBluetoothAddressWithBluetoothAddressType",
                           Text(address) + ", " + Text(type), selector, [&] {
                               return type == BluetoothAddressType::Unspecified
                                          ? AddressSelector(Protocol::Le, address)
                                          : TypedAddressSelector(address, static_cast<std::int32_t>(type));
                           });
    }

    HRESULT BluetoothLEDeviceFactory::GetDeviceSelectorFromAppearance(platform::IBluetoothLEAppearance* appearance,
                                                                      HSTRING* selector)
    {
        UINT16 raw = 0;
        bool const valid = appearance && SUCCEEDED(appearance->get_RawValue(&raw));
        return GetSelector(valid, "BluetoothLEDevice.GetDeviceSelectorFromAppearance", Text(raw), selector,
                           [&] { return AppearanceSelector(raw); });
    }

    HRESULT BluetoothLEDeviceFactory::FromBluetoothAddressWithBluetoothAddressTypeAsync(UINT64 address,
                                                                                        BluetoothAddressType type,
                                                                                        Operation** operation)
    {
        return BeginIf(address <= highestAddress && IsAddressType(type),
                       "BluetoothLEDevice.FromBluetoothAddressWithBluetoothAddressTypeAsync",
                       Text(address) + ", " + Text(type), operation,
                       [address, type](AsyncOperation<IBluetoothLEDevice*>& async) {
                           auto endpoint = FindEndpointAt(Protocol::Le, address);
                           bool const isIt = endpoint && (type == BluetoothAddressType::Unspecified ||
                                                          type == AddressTypeOf(*endpoint));
                           async.Complete(MakeDevice(isIt ? std::move(endpoint) : std::nullopt));
                       });
    }
} // namespace simulator
