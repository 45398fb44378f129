#include "simulator/bluetooth/BluetoothLEDevice.h"

namespace simulator
{
    using platform::IBluetoothLEDevice;
    using Events = DeviceEvents<IBluetoothLEDevice>;

    BluetoothLEDevice::BluetoothLEDevice(Endpoint endpoint)
        : m_core(ObjectLifetime(), "BluetoothLEDevice", std::move(endpoint))
    {
    }

    HRESULT BluetoothLEDevice::get_DeviceId(HSTRING* value)
    {
        return m_core.GetText("BluetoothLEDevice.get_DeviceId", value,
                              [](Endpoint const& endpoint) { return endpoint.id; });
    }

    HRESULT BluetoothLEDevice::get_Name(HSTRING* value)
    {
        return m_core.GetText("BluetoothLEDevice.get_Name", value,
                              [](Endpoint const& endpoint) { return StringOf(endpoint, "System.ItemNameDisplay"); });
    }

    HRESULT BluetoothLEDevice::get_GattServices(void** value)
    {
        return Outside("BluetoothLEDevice.get_GattServices", m_core.Id(), value);
    }

    HRESULT BluetoothLEDevice::get_ConnectionStatus(platform::BluetoothConnectionStatus* value)
    {
        return m_core.Get("BluetoothLEDevice.get_ConnectionStatus", value, ConnectionOf);
    }

    HRESULT BluetoothLEDevice::get_BluetoothAddress(UINT64* value)
    {
        return m_core.Get("BluetoothLEDevice.get_BluetoothAddress", value,
                          [](Endpoint const& endpoint) { return AddressNumber(endpoint.address); });
    }

    HRESULT BluetoothLEDevice::GetGattService(GUID, void** result)
    {
        return Outside("BluetoothLEDevice.GetGattService", m_core.Id(), result);
    }

    HRESULT BluetoothLEDevice::add_NameChanged(platform::BluetoothLEDeviceHandler* handler,
                                               EventRegistrationToken* token)
    {
        return m_core.Add("BluetoothLEDevice.add_NameChanged", &Events::nameChanged, handler, token);
    }

    HRESULT BluetoothLEDevice::remove_NameChanged(EventRegistrationToken token)
    {
        return m_core.Remove("BluetoothLEDevice.remove_NameChanged", &Events::nameChanged, token);
    }

    HRESULT BluetoothLEDevice::add_GattServicesChanged(platform::BluetoothLEDeviceHandler* handler,
                                                       EventRegistrationToken* token)
    {
        return m_core.Add("BluetoothLEDevice.add_GattServicesChanged", &Events::servicesChanged, handler, token);
    }

    HRESULT BluetoothLEDevice::remove_GattServicesChanged(EventRegistrationToken token)
    {
        return m_core.Remove("BluetoothLEDevice.remove_GattServicesChanged", &Events::servicesChanged, token);
    }

    HRESULT BluetoothLEDevice::add_ConnectionStatusChanged(platform::BluetoothLEDeviceHandler* handler,
                                                           EventRegistrationToken* token)
    {
        return m_core.Add("BluetoothLEDevice.add_ConnectionStatusChanged", &Events::connectionStatusChanged, handler,
                          token);
    }

    HRESULT BluetoothLEDevice::remove_ConnectionStatusChanged(EventRegistrationToken token)
    {
        return m_core.Remove("BluetoothLEDevice.remove_ConnectionStatusChanged", &Events::connectionStatusChanged,
                             token);
    }

    HRESULT BluetoothLEDevice::get_DeviceInformation(platform::IDeviceInformation** value)
    {
        return m_core.GetPart("BluetoothLEDevice.get_DeviceInformation", value,
                              [&](Endpoint const&) { return m_core.Information(); });
    }

    HRESULT BluetoothLEDevice::get_Appearance(platform::IBluetoothLEAppearance** value)
    {
        return m_core.GetPart("BluetoothLEDevice.get_Appearance", value,
                              [](Endpoint const& endpoint) { return MakeAppearance(AppearanceOf(endpoint)); });
    }

    HRESULT BluetoothLEDevice::get_BluetoothAddressType(platform::BluetoothAddressType* value)
    {
        return m_core.Get("BluetoothLEDevice.get_BluetoothAddressType", value, AddressTypeOf);
    }

    HRESULT BluetoothLEDevice::get_DeviceAccessInformation(void** value)
    {
        return Outside("BluetoothLEDevice.get_DeviceAccessInformation", m_core.Id(), value);
    }

    HRESULT BluetoothLEDevice::RequestAccessAsync(platform::IAsyncOperation<platform::DeviceAccessStatus>** operation)
    {
        return m_core.GetPart("BluetoothLEDevice.RequestAccessAsync", operation, AllowAccess);
    }

    HRESULT BluetoothLEDevice::GetGattServicesAsync(void** result)
    {
        return Outside("BluetoothLEDevice.GetGattServicesAsync", m_core.Id(), result);
    }

    HRESULT BluetoothLEDevice::GetGattServicesWithCacheModeAsync(INT32, void** result)
    {
        return Outside("BluetoothLEDevice.GetGattServicesWithCacheModeAsync", m_core.Id(), result);
    }

    HRESULT BluetoothLEDevice::GetGattServicesForUuidAsync(GUID, void** result)
    {
        return Outside("BluetoothLEDevice.GetGattServicesForUuidAsync", m_core.Id(), result);
    }

    HRESULT BluetoothLEDevice::GetGattServicesForUuidWithCacheModeAsync(GUID, INT32, void** result)
    {
        return Outside("BluetoothLEDevice.GetGattServicesForUuidWithCacheModeAsync", m_core.Id(), result);
    }

    HRESULT BluetoothLEDevice::get_BluetoothDeviceId(platform::IBluetoothDeviceId** value)
    {
        return m_core.GetPart("BluetoothLEDevice.get_BluetoothDeviceId", value,
                              [](Endpoint const& endpoint) { return MakeDeviceId(endpoint.id); });
    }

    HRESULT BluetoothLEDevice::get_WasSecureConnectionUsedForPairing(boolean* value)
    {
        return m_core.Get("BluetoothLEDevice.get_WasSecureConnectionUsedForPairing", value,
                          [](Endpoint const& endpoint) { return boolean(WasSecure(endpoint)); });
    }

    HRESULT BluetoothLEDevice::Close()
    {
        return m_core.Close("BluetoothLEDevice.Close");
    }

    char const* BluetoothLEDevice::ClassName() const noexcept
    {
        return "Windows.Devices.Bluetooth.BluetoothLEDevice";
    }
} // namespace simulator
