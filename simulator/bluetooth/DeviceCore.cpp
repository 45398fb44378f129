#include "simulator/bluetooth/DeviceCore.h"

#include "simulator/bluetooth/Pc.h"

namespace simulator
{
    using platform::BluetoothAddressType;
    using platform::BluetoothConnectionStatus;

    BluetoothConnectionStatus ConnectionOf(Endpoint const& endpoint)
    {
        return IsTrue(endpoint.properties, isConnectedProperty) ? BluetoothConnectionStatus::Connected
                                                                : BluetoothConnectionStatus::Disconnected;
    }

    BluetoothAddressType AddressTypeOf(Endpoint const& endpoint)
    {
        return static_cast<BluetoothAddressType>(
            NumberOf(endpoint, "System.Devices.Aep.Bluetooth.Le.AddressType").value_or(0));
    }

    bool WasSecure(Endpoint const& endpoint)
    {
        auto const adapter = AdapterNow();
        return adapter && adapter->secureConnections && IsTrue(endpoint.properties, isPairedProperty);
    }

    Ref<AsyncOperation<platform::DeviceAccessStatus>> AllowAccess(Endpoint const& endpoint)
    {
        using platform::DeviceAccessStatus;
        return RunErrand<DeviceAccessStatus>(endpoint.id, [](AsyncOperation<DeviceAccessStatus>& async) {
            async.Complete(DeviceAccessStatus::Allowed);
        });
    }

    Ref<DeviceInformation> InformationOf(Endpoint const& endpoint)
    {
        return Make<DeviceInformation>(endpoint.id, platform::DeviceInformationKind::AssociationEndpoint,
                                       Show(*ShownProperties({}), endpoint.properties));
    }
} // namespace simulator
