#pragma once

#include "Windows.Devices.Radios.h"
#include "Windows.Foundation.h"
#include "platform/abi/Bluetooth.h"

#include <cstdint>

namespace winrt::Windows::Devices::Bluetooth
{
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
} // namespace winrt::Windows::Devices::Bluetooth

namespace winrt::impl
{
    template <>
    struct abi<Windows::Devices::Bluetooth::BluetoothAdapter>
    {
        using type = platform::IBluetoothAdapter;
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
} // namespace winrt::Windows::Devices::Bluetooth
