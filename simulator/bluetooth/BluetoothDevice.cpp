#include "simulator/bluetooth/BluetoothDevice.h"

namespace simulator
{
    using platform::IBluetoothDevice;
    using Events = DeviceEvents<IBluetoothDevice>;

    BluetoothDevice::BluetoothDevice(Endpoint endpoint)
        : m_core(ObjectLifetime(), "BluetoothDevice", std::move(endpoint))
    {
    }

    HRESULT BluetoothDevice::get_DeviceId(HSTRING* value)
    {
        return m_core.GetText("BluetoothDevice.get_DeviceId", value,
                              [](Endpoint const& endpoint) { return endpoint.id; });
    }

    HRESULT BluetoothDevice::get_HostName(void** value)
    {
        return Outside("BluetoothDevice.get_HostName", m_core.Id(), value);
    }

    HRESULT BluetoothDevice::get_Name(HSTRING* value)
    {
        return m_core.GetText("BluetoothDevice.get_Name", value,
                              [](Endpoint const& endpoint) { return StringOf(endpoint, "System.ItemNameDisplay"); });
    }

    HRESULT BluetoothDevice::get_ClassOfDevice(platform::IBluetoothClassOfDevice** value)
    {
        return m_core.GetPart("BluetoothDevice.get_ClassOfDevice", value,
                              [](Endpoint const& endpoint) { return MakeClassOfDevice(ClassOfDeviceOf(endpoint)); });
    }

    HRESULT BluetoothDevice::get_SdpRecords(void** value)
    {
        return Outside("BluetoothDevice.get_SdpRecords", m_core.Id(), value);
    }

    HRESULT BluetoothDevice::get_RfcommServices(void** value)
    {
        return Outside("BluetoothDevice.get_RfcommServices", m_core.Id(), value);
    }

    HRESULT BluetoothDevice::get_ConnectionStatus(platform::BluetoothConnectionStatus* value)
    {
        return m_core.Get("BluetoothDevice.get_ConnectionStatus", value, ConnectionOf);
    }

    HRESULT BluetoothDevice::get_BluetoothAddress(UINT64* value)
    {
        return m_core.Get("BluetoothDevice.get_BluetoothAddress", value,
                          [](Endpoint const& endpoint) { return AddressNumber(endpoint.address); });
    }

    HRESULT BluetoothDevice::add_NameChanged(platform::BluetoothDeviceHandler* handler, EventRegistrationToken* token)
    {
        return m_core.Add("BluetoothDevice.add_NameChanged", &Events::nameChanged, handler, token);
    }

    HRESULT BluetoothDevice::remove_NameChanged(EventRegistrationToken token)
    {
        return m_core.Remove("BluetoothDevice.remove_NameChanged", &Events::nameChanged, token);
    }

    HRESULT BluetoothDevice::add_SdpRecordsChanged(platform::BluetoothDeviceHandler* handler,
                                                   EventRegistrationToken* token)
    {
        return m_core.Add("BluetoothDevice.add_SdpRecordsChanged", &Events::servicesChanged, handler, token);
    }

    HRESULT BluetoothDevice::remove_SdpRecordsChanged(EventRegistrationToken token)
    {
        return m_core.Remove("BluetoothDevice.remove_SdpRecordsChanged", &Events::servicesChanged, token);
    }

    HRESULT BluetoothDevice::add_ConnectionStatusChanged(platform::BluetoothDeviceHandler* handler,
                                                         EventRegistrationToken* token)
    {
        return m_core.Add("BluetoothDevice.add_ConnectionStatusChanged", &Events::connectionStatusChanged, handler,
                          token);
    }

    HRESULT BluetoothDevice::remove_ConnectionStatusChanged(EventRegistrationToken token)
    {
        return m_core.Remove("BluetoothDevice.remove_ConnectionStatusChanged", &Events::connectionStatusChanged, token);
    }

    HRESULT BluetoothDevice::get_DeviceInformation(platform::IDeviceInformation** value)
    {
        return m_core.GetPart("BluetoothDevice.get_DeviceInformation", value,
                              [&](Endpoint const&) { return m_core.Information(); });
    }

    HRESULT BluetoothDevice::get_DeviceAccessInformation(void** value)
    {
        return Outside("BluetoothDevice.get_DeviceAccessInformation", m_core.Id(), value);
    }

    HRESULT BluetoothDevice::RequestAccessAsync(platform::IAsyncOperation<platform::DeviceAccessStatus>** operation)
    {
        return m_core.GetPart("BluetoothDevice.RequestAccessAsync", operation, AllowAccess);
    }

    HRESULT BluetoothDevice::GetRfcommServicesAsync(void** result)
    {
        return Outside("BluetoothDevice.GetRfcommServicesAsync", m_core.Id(), result);
    }

    HRESULT BluetoothDevice::GetRfcommServicesWithCacheModeAsync(INT32, void** result)
    {
        return Outside("BluetoothDevice.GetRfcommServicesWithCacheModeAsync", m_core.Id(), result);
    }

    HRESULT BluetoothDevice::GetRfcommServicesForIdAsync(void*, void** result)
    {
        return Outside("BluetoothDevice.GetRfcommServicesForIdAsync", m_core.Id(), result);
    }

    HRESULT BluetoothDevice::GetRfcommServicesForIdWithCacheModeAsync(void*, INT32, void** result)
    {
        return Outside("BluetoothDevice.GetRfcommServicesForIdWithCacheModeAsync", m_core.Id(), result);
    }

    HRESULT BluetoothDevice::get_BluetoothDeviceId(platform::IBluetoothDeviceId** value)
    {
        return m_core.GetPart("BluetoothDevice.get_BluetoothDeviceId", value,
                              [](Endpoint const& endpoint) { return MakeDeviceId(endpoint.id); });
    }

    HRESULT BluetoothDevice::get_WasSecureConnectionUsedForPairing(boolean* value)
    {
        return m_core.Get("BluetoothDevice.get_WasSecureConnectionUsedForPairing", value,
                          [](Endpoint const& endpoint) { return boolean(WasSecure(endpoint)); });
    }

    HRESULT BluetoothDevice::Close()
    {
        return m_core.Close("BluetoothDevice.Close");
    }

    char const* BluetoothDevice::ClassName() const noexcept
    {
        return "Windows.Devices.Bluetooth.BluetoothDevice";
    }
} // namespace simulator
