#pragma once

#include "Windows.Foundation.h"
#include "platform/abi/Bluetooth.h"

namespace winrt::Windows::Devices::Radios
{
    using platform::RadioState;

    struct Radio : Foundation::IInspectable
    {
        using IInspectable::IInspectable;
        Radio() = delete;

        [[nodiscard]] RadioState State() const;
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
    inline RadioState Radio::State() const
    {
        RadioState value{};
        check_hresult(impl::interface_of(*this)->get_State(&value));
        return value;
    }
} // namespace winrt::Windows::Devices::Radios
