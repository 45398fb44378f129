#pragma once

#include "Windows.Foundation.h"
#include "platform/abi/Bluetooth.h"

namespace winrt::Windows::Devices::Radios
{
    using platform::RadioAccessStatus;
    using platform::RadioState;

    struct Radio : Foundation::IInspectable
    {
        using IInspectable::IInspectable;
        Radio() = delete;

        static Foundation::IAsyncOperation<RadioAccessStatus> RequestAccessAsync();
        Foundation::IAsyncOperation<RadioAccessStatus> SetStateAsync(RadioState const& value) const;
        [[nodiscard]] RadioState State() const;
        [[nodiscard]] hstring Name() const;
    };
} // namespace winrt::Windows::Devices::Radios

namespace winrt::impl
{
    template <>
    struct abi<Windows::Devices::Radios::Radio>
    {
        using type = platform::IRadio;
    };
} // namespace winrt::impl

namespace winrt::Windows::Devices::Radios
{
    inline Foundation::IAsyncOperation<RadioAccessStatus> Radio::RequestAccessAsync()
    {
        auto const statics = impl::get_activation_factory<platform::IRadioStatics>(L"Windows.Devices.Radios.Radio");
        Foundation::IAsyncOperation<RadioAccessStatus> operation{nullptr};
        check_hresult(statics->RequestAccessAsync(impl::out(operation)));
        return operation;
    }

    inline Foundation::IAsyncOperation<RadioAccessStatus> Radio::SetStateAsync(RadioState const& value) const
    {
        Foundation::IAsyncOperation<RadioAccessStatus> operation{nullptr};
        check_hresult(impl::interface_of(*this)->SetStateAsync(value, impl::out(operation)));
        return operation;
    }

    inline RadioState Radio::State() const
    {
        RadioState value{};
        check_hresult(impl::interface_of(*this)->get_State(&value));
        return value;
    }

    inline hstring Radio::Name() const
    {
        hstring value;
        check_hresult(impl::interface_of(*this)->get_Name(impl::out(value)));
        return value;
    }
} // namespace winrt::Windows::Devices::Radios
