#include "simulator/bluetooth/BluetoothAdapter.h"

#include "simulator/bluetooth/Endpoints.h"
#include "simulator/bluetooth/Pc.h"
#include "simulator/bluetooth/RadioHandle.h"

namespace simulator
{
    using platform::IBluetoothAdapter;

    BluetoothAdapter::BluetoothAdapter(Adapter adapter)
        : m_adapter(std::move(adapter))
        , m_id(InterfaceId(m_adapter, adapterInterface))
    {
    }

    HRESULT BluetoothAdapter::get_DeviceId(HSTRING* value)
    {
        return GetString("BluetoothAdapter.get_DeviceId", m_id, value, [&] { return m_id; });
    }

    HRESULT BluetoothAdapter::get_BluetoothAddress(UINT64* value)
    {
        return Get("BluetoothAdapter.get_BluetoothAddress", m_id, value,
                   [&] { return AddressNumber(m_adapter.address); });
    }

    HRESULT BluetoothAdapter::get_IsClassicSupported(boolean* value)
    {
        return Get("BluetoothAdapter.get_IsClassicSupported", m_id, value,
                   [&] { return static_cast<boolean>(m_adapter.classic); });
    }

    HRESULT BluetoothAdapter::get_IsLowEnergySupported(boolean* value)
    {
        return Get("BluetoothAdapter.get_IsLowEnergySupported", m_id, value,
                   [&] { return static_cast<boolean>(m_adapter.le); });
    }

    HRESULT BluetoothAdapter::get_IsPeripheralRoleSupported(boolean* value)
    {
        return Get("BluetoothAdapter.get_IsPeripheralRoleSupported", m_id, value,
                   [&] { return static_cast<boolean>(m_adapter.peripheralRole); });
    }

    HRESULT BluetoothAdapter::get_IsCentralRoleSupported(boolean* value)
    {
        return Get("BluetoothAdapter.get_IsCentralRoleSupported", m_id, value,
                   [&] { return static_cast<boolean>(m_adapter.centralRole); });
    }

    HRESULT BluetoothAdapter::get_IsAdvertisementOffloadSupported(boolean* value)
    {
        return Get("BluetoothAdapter.get_IsAdvertisementOffloadSupported", m_id, value,
                   [&] { return static_cast<boolean>(m_adapter.advertisementOffload); });
    }

    HRESULT BluetoothAdapter::GetRadioAsync(platform::IAsyncOperation<platform::IRadio*>** operation)
    {
        return Begin("BluetoothAdapter.GetRadioAsync", m_id, operation,
                     [](AsyncOperation<platform::IRadio*>& async) { async.Complete(MakeRadio()); });
    }

    HRESULT BluetoothAdapter::get_AreClassicSecureConnectionsSupported(boolean* value)
    {
        return Get("BluetoothAdapter.get_AreClassicSecureConnectionsSupported", m_id, value,
                   [&] { return static_cast<boolean>(m_adapter.secureConnections); });
    }

    HRESULT BluetoothAdapter::get_AreLowEnergySecureConnectionsSupported(boolean* value)
    {
        return Get("BluetoothAdapter.get_AreLowEnergySecureConnectionsSupported", m_id, value,
                   [&] { return static_cast<boolean>(m_adapter.secureConnections); });
    }

    HRESULT BluetoothAdapter::get_IsExtendedAdvertisingSupported(boolean* value)
    {
        return Get("BluetoothAdapter.get_IsExtendedAdvertisingSupported", m_id, value,
                   [&] { return static_cast<boolean>(m_adapter.extendedAdvertising); });
    }

    HRESULT BluetoothAdapter::get_MaxAdvertisementDataLength(UINT32* value)
    {
        return Get("BluetoothAdapter.get_MaxAdvertisementDataLength", m_id, value,
                   [&] { return static_cast<UINT32>(m_adapter.maxAdvertisementLength); });
    }

    char const* BluetoothAdapter::ClassName() const noexcept
    {
        return "Windows.Devices.Bluetooth.BluetoothAdapter";
    }

    namespace
    {
        Ref<IBluetoothAdapter> MakeAdapter(std::optional<Adapter> const& adapter)
        {
            return adapter ? Ref<IBluetoothAdapter>::Adopt(Make<BluetoothAdapter>(*adapter).Detach())
                           : Ref<IBluetoothAdapter>();
        }
    } // namespace

    HRESULT AdapterFactory::ActivateInstance(::IInspectable** instance)
    {
        return Outside("BluetoothAdapter.ActivateInstance", {}, instance);
    }

    HRESULT AdapterFactory::GetDeviceSelector(HSTRING* selector)
    {
        return GetString("BluetoothAdapter.GetDeviceSelector", {}, selector,
                         [] { return InterfaceSelector(adapterInterface); });
    }

    HRESULT AdapterFactory::FromIdAsync(HSTRING id, Operation** operation)
    {
        auto const text = FromHstring(id);
        return BeginIf(!text.empty(), "BluetoothAdapter.FromIdAsync", Quoted(text), operation,
                       [text](AsyncOperation<IBluetoothAdapter*>& async) {
                           auto const adapter = AdapterNow();
                           bool const isIt = adapter && SameText(text, InterfaceId(*adapter, adapterInterface));
                           async.Complete(MakeAdapter(isIt ? adapter : std::nullopt));
                       });
    }

    HRESULT AdapterFactory::GetDefaultAsync(Operation** operation)
    {
        return Begin("BluetoothAdapter.GetDefaultAsync", {}, operation,
                     [](AsyncOperation<IBluetoothAdapter*>& async) { async.Complete(MakeAdapter(AdapterNow())); });
    }
} // namespace simulator
