#pragma once

#include "Windows.Devices.Radios.h"
#include "Windows.Foundation.h"
#include "platform/abi/Bluetooth.h"

#include <cstdint>

namespace winrt::Windows::Devices::Bluetooth
{
    using platform::BluetoothConnectionStatus;

    struct BluetoothAdapter : Foundation::IInspectable
    {
        using IInspectable::IInspectable;
        BluetoothAdapter() = delete;

        // Completes with null where there is none.
        static Foundation::IAsyncOperation<BluetoothAdapter> GetDefaultAsync();
        [[nodiscard]] std::uint64_t BluetoothAddress() const;
        [[nodiscard]] bool IsClassicSupported() const;
        [[nodiscard]] bool IsLowEnergySupported() const;
        Foundation::IAsyncOperation<Radios::Radio> GetRadioAsync() const;
    };

    struct BluetoothDevice : Foundation::IInspectable
    {
        using IInspectable::IInspectable;
        BluetoothDevice() = delete;

        // Completes with null where there is no such device.
        static Foundation::IAsyncOperation<BluetoothDevice> FromIdAsync(param::hstring const& deviceId);
        static hstring GetDeviceSelectorFromPairingState(bool pairingState);
        [[nodiscard]] hstring Name() const;
        [[nodiscard]] std::uint64_t BluetoothAddress() const;
        [[nodiscard]] BluetoothConnectionStatus ConnectionStatus() const;
        void Close() const;
    };

    struct BluetoothLEDevice : Foundation::IInspectable
    {
        using IInspectable::IInspectable;
        BluetoothLEDevice() = delete;

        // Completes with null where there is no such device.
        static Foundation::IAsyncOperation<BluetoothLEDevice> FromIdAsync(param::hstring const& deviceId);
        static hstring GetDeviceSelectorFromPairingState(bool pairingState);
        [[nodiscard]] hstring Name() const;
        [[nodiscard]] std::uint64_t BluetoothAddress() const;
        [[nodiscard]] BluetoothConnectionStatus ConnectionStatus() const;
        void Close() const;
    };
} // namespace winrt::Windows::Devices::Bluetooth

namespace winrt::impl
{
    template <>
    struct abi<Windows::Devices::Bluetooth::BluetoothAdapter>
    {
        using type = platform::IBluetoothAdapter;
    };

    template <>
    struct abi<Windows::Devices::Bluetooth::BluetoothDevice>
    {
        using type = platform::IBluetoothDevice;
    };

    template <>
    struct abi<Windows::Devices::Bluetooth::BluetoothLEDevice>
    {
        using type = platform::IBluetoothLEDevice;
    };
} // namespace winrt::impl

namespace winrt::Windows::Devices::Bluetooth
{
    inline Foundation::IAsyncOperation<BluetoothAdapter> BluetoothAdapter::GetDefaultAsync()
    {
        auto const statics = impl::get_activation_factory<platform::IBluetoothAdapterStatics>(
            L"Windows.Devices.Bluetooth.BluetoothAdapter");
        Foundation::IAsyncOperation<BluetoothAdapter> operation{nullptr};
        check_hresult(statics->GetDefaultAsync(impl::out(operation)));
        return operation;
    }

    inline std::uint64_t BluetoothAdapter::BluetoothAddress() const
    {
        UINT64 value{};
        check_hresult(impl::interface_of(*this)->get_BluetoothAddress(&value));
        return value;
    }

    inline bool BluetoothAdapter::IsClassicSupported() const
    {
        boolean value{};
        check_hresult(impl::interface_of(*this)->get_IsClassicSupported(&value));
        return value;
    }

    inline bool BluetoothAdapter::IsLowEnergySupported() const
    {
        boolean value{};
        check_hresult(impl::interface_of(*this)->get_IsLowEnergySupported(&value));
        return value;
    }

    inline Foundation::IAsyncOperation<Radios::Radio> BluetoothAdapter::GetRadioAsync() const
    {
        Foundation::IAsyncOperation<Radios::Radio> operation{nullptr};
        check_hresult(impl::interface_of(*this)->GetRadioAsync(impl::out(operation)));
        return operation;
    }

    inline Foundation::IAsyncOperation<BluetoothDevice> BluetoothDevice::FromIdAsync(param::hstring const& deviceId)
    {
        auto const statics = impl::get_activation_factory<platform::IBluetoothDeviceStatics>(
            L"Windows.Devices.Bluetooth.BluetoothDevice");
        Foundation::IAsyncOperation<BluetoothDevice> operation{nullptr};
        check_hresult(statics->FromIdAsync(static_cast<HSTRING>(get_abi(deviceId)), impl::out(operation)));
        return operation;
    }

    inline hstring BluetoothDevice::GetDeviceSelectorFromPairingState(bool pairingState)
    {
        auto const statics = impl::get_activation_factory<platform::IBluetoothDeviceStatics2>(
            L"Windows.Devices.Bluetooth.BluetoothDevice");
        hstring selector;
        check_hresult(statics->GetDeviceSelectorFromPairingState(pairingState, impl::out(selector)));
        return selector;
    }

    inline hstring BluetoothDevice::Name() const
    {
        hstring value;
        check_hresult(impl::interface_of(*this)->get_Name(impl::out(value)));
        return value;
    }

    inline std::uint64_t BluetoothDevice::BluetoothAddress() const
    {
        UINT64 value{};
        check_hresult(impl::interface_of(*this)->get_BluetoothAddress(&value));
        return value;
    }

    inline BluetoothConnectionStatus BluetoothDevice::ConnectionStatus() const
    {
        BluetoothConnectionStatus value{};
        check_hresult(impl::interface_of(*this)->get_ConnectionStatus(&value));
        return value;
    }

    inline void BluetoothDevice::Close() const
    {
        as<Foundation::IClosable>().Close();
    }

    inline Foundation::IAsyncOperation<BluetoothLEDevice> BluetoothLEDevice::FromIdAsync(param::hstring const& deviceId)
    {
        auto const statics = impl::get_activation_factory<platform::IBluetoothLEDeviceStatics>(
            L"Windows.Devices.Bluetooth.BluetoothLEDevice");
        Foundation::IAsyncOperation<BluetoothLEDevice> operation{nullptr};
        check_hresult(statics->FromIdAsync(static_cast<HSTRING>(get_abi(deviceId)), impl::out(operation)));
        return operation;
    }

    inline hstring BluetoothLEDevice::GetDeviceSelectorFromPairingState(bool pairingState)
    {
        auto const statics = impl::get_activation_factory<platform::IBluetoothLEDeviceStatics2>(
            L"Windows.Devices.Bluetooth.BluetoothLEDevice");
        hstring selector;
        check_hresult(statics->GetDeviceSelectorFromPairingState(pairingState, impl::out(selector)));
        return selector;
    }

    inline hstring BluetoothLEDevice::Name() const
    {
        hstring value;
        check_hresult(impl::interface_of(*this)->get_Name(impl::out(value)));
        return value;
    }

    inline std::uint64_t BluetoothLEDevice::BluetoothAddress() const
    {
        UINT64 value{};
        check_hresult(impl::interface_of(*this)->get_BluetoothAddress(&value));
        return value;
    }

    inline BluetoothConnectionStatus BluetoothLEDevice::ConnectionStatus() const
    {
        BluetoothConnectionStatus value{};
        check_hresult(impl::interface_of(*this)->get_ConnectionStatus(&value));
        return value;
    }

    inline void BluetoothLEDevice::Close() const
    {
        as<Foundation::IClosable>().Close();
    }
} // namespace winrt::Windows::Devices::Bluetooth
