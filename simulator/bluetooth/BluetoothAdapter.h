// BluetoothAdapter: what the PC's adapter can do, and its radio.
#pragma once

#include "platform/abi/Bluetooth.h"
#include "simulator/bluetooth/Factory.h"
#include "simulator/scenario/Scenario.h"

namespace simulator
{
    template <>
    inline constexpr auto operationClassName<platform::IBluetoothAdapter*> =
        "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Bluetooth.BluetoothAdapter>";

    class BluetoothAdapter final
        : public Object<platform::IBluetoothAdapter, platform::IBluetoothAdapter2, platform::IBluetoothAdapter3>
    {
    public:
        explicit BluetoothAdapter(Adapter adapter);

        HRESULT STDMETHODCALLTYPE get_DeviceId(HSTRING* value) override;
        HRESULT STDMETHODCALLTYPE get_BluetoothAddress(UINT64* value) override;
        HRESULT STDMETHODCALLTYPE get_IsClassicSupported(boolean* value) override;
        HRESULT STDMETHODCALLTYPE get_IsLowEnergySupported(boolean* value) override;
        HRESULT STDMETHODCALLTYPE get_IsPeripheralRoleSupported(boolean* value) override;
        HRESULT STDMETHODCALLTYPE get_IsCentralRoleSupported(boolean* value) override;
        HRESULT STDMETHODCALLTYPE get_IsAdvertisementOffloadSupported(boolean* value) override;
        HRESULT STDMETHODCALLTYPE GetRadioAsync(platform::IAsyncOperation<platform::IRadio*>** operation) override;
        HRESULT STDMETHODCALLTYPE get_AreClassicSecureConnectionsSupported(boolean* value) override;
        HRESULT STDMETHODCALLTYPE get_AreLowEnergySecureConnectionsSupported(boolean* value) override;
        HRESULT STDMETHODCALLTYPE get_IsExtendedAdvertisingSupported(boolean* value) override;
        HRESULT STDMETHODCALLTYPE get_MaxAdvertisementDataLength(UINT32* value) override;

    private:
        char const* ClassName() const noexcept override;

        Adapter const m_adapter;
        std::string const m_id;
    };

    class AdapterFactory final : public Factory<platform::IBluetoothAdapterStatics>
    {
        using Operation = platform::IAsyncOperation<platform::IBluetoothAdapter*>;

    public:
        HRESULT STDMETHODCALLTYPE ActivateInstance(::IInspectable** instance) override;
        HRESULT STDMETHODCALLTYPE GetDeviceSelector(HSTRING* selector) override;
        HRESULT STDMETHODCALLTYPE FromIdAsync(HSTRING id, Operation** operation) override;
        HRESULT STDMETHODCALLTYPE GetDefaultAsync(Operation** operation) override;
    };
} // namespace simulator
