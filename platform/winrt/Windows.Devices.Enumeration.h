#pragma once

#include "Windows.Foundation.Collections.h"
#include "Windows.Foundation.h"
#include "platform/abi/Enumeration.h"

namespace winrt::Windows::Devices::Enumeration
{
    using platform::DeviceInformationKind;
    using platform::DevicePairingKinds;
    using platform::DevicePairingProtectionLevel;
    using platform::DevicePairingResultStatus;
    using platform::DeviceUnpairingResultStatus;
    using platform::DeviceWatcherStatus;

    constexpr DevicePairingKinds operator|(DevicePairingKinds left, DevicePairingKinds right) noexcept
    {
        return static_cast<DevicePairingKinds>(static_cast<std::uint32_t>(left) | static_cast<std::uint32_t>(right));
    }

    struct DeviceInformation;

    // The default interfaces of the classes below; the platform's objects are referred to through them.
    struct DeviceInformationUpdate : Foundation::IInspectable
    {
        using IInspectable::IInspectable;
        DeviceInformationUpdate() = delete;

        [[nodiscard]] hstring Id() const;
    };

    struct DevicePairingResult : Foundation::IInspectable
    {
        using IInspectable::IInspectable;
        DevicePairingResult() = delete;

        [[nodiscard]] DevicePairingResultStatus Status() const;
        [[nodiscard]] DevicePairingProtectionLevel ProtectionLevelUsed() const;
    };

    struct DeviceUnpairingResult : Foundation::IInspectable
    {
        using IInspectable::IInspectable;
        DeviceUnpairingResult() = delete;

        [[nodiscard]] DeviceUnpairingResultStatus Status() const;
    };

    struct DevicePairingRequestedEventArgs : Foundation::IInspectable
    {
        using IInspectable::IInspectable;
        DevicePairingRequestedEventArgs() = delete;

        [[nodiscard]] Enumeration::DeviceInformation DeviceInformation() const;
        [[nodiscard]] DevicePairingKinds PairingKind() const;
        [[nodiscard]] hstring Pin() const;
        void Accept() const;
        void Accept(param::hstring const& pin) const;
        [[nodiscard]] Foundation::Deferral GetDeferral() const;
    };

    struct DeviceInformationCustomPairing : Foundation::IInspectable
    {
        using IInspectable::IInspectable;
        DeviceInformationCustomPairing() = delete;
        using PairingRequestedHandler =
            Foundation::TypedEventHandler<DeviceInformationCustomPairing, DevicePairingRequestedEventArgs>;

        Foundation::IAsyncOperation<DevicePairingResult> PairAsync(
            DevicePairingKinds const& pairingKindsSupported) const;
        Foundation::IAsyncOperation<DevicePairingResult> PairAsync(
            DevicePairingKinds const& pairingKindsSupported,
            DevicePairingProtectionLevel const& minProtectionLevel) const;
        event_token PairingRequested(PairingRequestedHandler const& handler) const;
        void PairingRequested(event_token const& token) const noexcept;
    };

    struct IDeviceInformationPairing2 : Foundation::IInspectable
    {
        using IInspectable::IInspectable;
    };

    struct DeviceInformationPairing : Foundation::IInspectable
    {
        using IInspectable::IInspectable;
        DeviceInformationPairing() = delete;

        [[nodiscard]] bool IsPaired() const;
        [[nodiscard]] bool CanPair() const;
        [[nodiscard]] DeviceInformationCustomPairing Custom() const;
        Foundation::IAsyncOperation<DevicePairingResult> PairAsync() const;
        Foundation::IAsyncOperation<DevicePairingResult> PairAsync(
            DevicePairingProtectionLevel const& minProtectionLevel) const;
        Foundation::IAsyncOperation<DeviceUnpairingResult> UnpairAsync() const;
    };

    struct DeviceWatcher;
    struct DeviceInformationCollection;

    struct IDeviceInformation2 : Foundation::IInspectable
    {
        using IInspectable::IInspectable;
    };

    struct DeviceInformation : Foundation::IInspectable
    {
        using IInspectable::IInspectable;
        DeviceInformation() = delete;

        static Foundation::IAsyncOperation<DeviceInformation> CreateFromIdAsync(param::hstring const& deviceId);
        static Foundation::IAsyncOperation<DeviceInformationCollection> FindAllAsync(param::hstring const& aqsFilter);
        static Foundation::IAsyncOperation<DeviceInformationCollection> FindAllAsync(
            param::hstring const& aqsFilter, Foundation::Collections::IIterable<hstring> const& additionalProperties,
            DeviceInformationKind const& kind);
        static DeviceWatcher CreateWatcher(param::hstring const& aqsFilter,
                                           Foundation::Collections::IIterable<hstring> const& additionalProperties,
                                           DeviceInformationKind const& kind);
        [[nodiscard]] hstring Id() const;
        [[nodiscard]] hstring Name() const;
        [[nodiscard]] Foundation::Collections::IMapView<hstring, Foundation::IInspectable> Properties() const;
        [[nodiscard]] DeviceInformationPairing Pairing() const;
        void Update(DeviceInformationUpdate const& updateInfo) const;
    };

    struct DeviceInformationCollection : Foundation::Collections::IVectorView<DeviceInformation>
    {
        using IVectorView::IVectorView;
    };

    struct DeviceWatcher : Foundation::IInspectable
    {
        using IInspectable::IInspectable;
        DeviceWatcher() = delete;
        using AddedHandler = Foundation::TypedEventHandler<DeviceWatcher, DeviceInformation>;
        using UpdateHandler = Foundation::TypedEventHandler<DeviceWatcher, DeviceInformationUpdate>;
        using WatcherHandler = Foundation::TypedEventHandler<DeviceWatcher, Foundation::IInspectable>;

        using Added_revoker = impl::event_revoker<DeviceWatcher, &platform::IDeviceWatcher::remove_Added>;
        using Updated_revoker = impl::event_revoker<DeviceWatcher, &platform::IDeviceWatcher::remove_Updated>;
        using Removed_revoker = impl::event_revoker<DeviceWatcher, &platform::IDeviceWatcher::remove_Removed>;
        using EnumerationCompleted_revoker =
            impl::event_revoker<DeviceWatcher, &platform::IDeviceWatcher::remove_EnumerationCompleted>;
        using Stopped_revoker = impl::event_revoker<DeviceWatcher, &platform::IDeviceWatcher::remove_Stopped>;

        [[nodiscard]] Added_revoker Added(auto_revoke_t, AddedHandler const& handler) const;
        [[nodiscard]] Updated_revoker Updated(auto_revoke_t, UpdateHandler const& handler) const;
        [[nodiscard]] Removed_revoker Removed(auto_revoke_t, UpdateHandler const& handler) const;
        [[nodiscard]] EnumerationCompleted_revoker EnumerationCompleted(auto_revoke_t,
                                                                        WatcherHandler const& handler) const;
        [[nodiscard]] Stopped_revoker Stopped(auto_revoke_t, WatcherHandler const& handler) const;
        [[nodiscard]] DeviceWatcherStatus Status() const;
        void Start() const;
        void Stop() const;
    };
} // namespace winrt::Windows::Devices::Enumeration

namespace winrt::impl
{
    template <>
    struct abi<Windows::Devices::Enumeration::DeviceInformationUpdate>
    {
        using type = platform::IDeviceInformationUpdate;
    };
    template <>
    struct abi<Windows::Devices::Enumeration::DevicePairingResult>
    {
        using type = platform::IDevicePairingResult;
    };
    template <>
    struct abi<Windows::Devices::Enumeration::DeviceUnpairingResult>
    {
        using type = platform::IDeviceUnpairingResult;
    };
    template <>
    struct abi<Windows::Devices::Enumeration::DevicePairingRequestedEventArgs>
    {
        using type = platform::IDevicePairingRequestedEventArgs;
    };
    template <>
    struct abi<Windows::Devices::Enumeration::DeviceInformationCustomPairing>
    {
        using type = platform::IDeviceInformationCustomPairing;
    };
    template <>
    struct abi<Windows::Devices::Enumeration::DeviceInformationPairing>
    {
        using type = platform::IDeviceInformationPairing;
    };
    template <>
    struct abi<Windows::Devices::Enumeration::IDeviceInformationPairing2>
    {
        using type = platform::IDeviceInformationPairing2;
    };
    template <>
    struct abi<Windows::Devices::Enumeration::DeviceInformation>
    {
        using type = platform::IDeviceInformation;
    };
    template <>
    struct abi<Windows::Devices::Enumeration::IDeviceInformation2>
    {
        using type = platform::IDeviceInformation2;
    };
    template <>
    struct abi<Windows::Devices::Enumeration::DeviceInformationCollection>
    {
        using type = platform::DeviceCollection;
    };
    template <>
    struct abi<Windows::Devices::Enumeration::DeviceWatcher>
    {
        using type = platform::IDeviceWatcher;
    };
} // namespace winrt::impl

namespace winrt::Windows::Devices::Enumeration
{
    inline hstring DeviceInformationUpdate::Id() const
    {
        hstring value;
        check_hresult(impl::interface_of(*this)->get_Id(impl::out(value)));
        return value;
    }

    inline DevicePairingResultStatus DevicePairingResult::Status() const
    {
        DevicePairingResultStatus value{};
        check_hresult(impl::interface_of(*this)->get_Status(&value));
        return value;
    }

    inline DevicePairingProtectionLevel DevicePairingResult::ProtectionLevelUsed() const
    {
        DevicePairingProtectionLevel value{};
        check_hresult(impl::interface_of(*this)->get_ProtectionLevelUsed(&value));
        return value;
    }

    inline DeviceUnpairingResultStatus DeviceUnpairingResult::Status() const
    {
        DeviceUnpairingResultStatus value{};
        check_hresult(impl::interface_of(*this)->get_Status(&value));
        return value;
    }

    inline Enumeration::DeviceInformation DevicePairingRequestedEventArgs::DeviceInformation() const
    {
        Enumeration::DeviceInformation value{nullptr};
        check_hresult(impl::interface_of(*this)->get_DeviceInformation(impl::out(value)));
        return value;
    }

    inline DevicePairingKinds DevicePairingRequestedEventArgs::PairingKind() const
    {
        DevicePairingKinds value{};
        check_hresult(impl::interface_of(*this)->get_PairingKind(&value));
        return value;
    }

    inline hstring DevicePairingRequestedEventArgs::Pin() const
    {
        hstring value;
        check_hresult(impl::interface_of(*this)->get_Pin(impl::out(value)));
        return value;
    }

    inline void DevicePairingRequestedEventArgs::Accept() const
    {
        check_hresult(impl::interface_of(*this)->Accept());
    }

    inline void DevicePairingRequestedEventArgs::Accept(param::hstring const& pin) const
    {
        check_hresult(impl::interface_of(*this)->AcceptWithPin(static_cast<HSTRING>(get_abi(pin))));
    }

    inline Foundation::Deferral DevicePairingRequestedEventArgs::GetDeferral() const
    {
        Foundation::Deferral value{nullptr};
        check_hresult(impl::interface_of(*this)->GetDeferral(impl::out(value)));
        return value;
    }

    inline Foundation::IAsyncOperation<DevicePairingResult> DeviceInformationCustomPairing::PairAsync(
        DevicePairingKinds const& pairingKindsSupported) const
    {
        Foundation::IAsyncOperation<DevicePairingResult> operation{nullptr};
        check_hresult(impl::interface_of(*this)->PairAsync(pairingKindsSupported, impl::out(operation)));
        return operation;
    }

    inline Foundation::IAsyncOperation<DevicePairingResult> DeviceInformationCustomPairing::PairAsync(
        DevicePairingKinds const& pairingKindsSupported, DevicePairingProtectionLevel const& minProtectionLevel) const
    {
        Foundation::IAsyncOperation<DevicePairingResult> operation{nullptr};
        check_hresult(impl::interface_of(*this)->PairWithProtectionLevelAsync(pairingKindsSupported, minProtectionLevel,
                                                                              impl::out(operation)));
        return operation;
    }

    inline event_token DeviceInformationCustomPairing::PairingRequested(PairingRequestedHandler const& handler) const
    {
        EventRegistrationToken token{};
        check_hresult(impl::interface_of(*this)->add_PairingRequested(impl::interface_of(handler), &token));
        return {token.value};
    }

    inline void DeviceInformationCustomPairing::PairingRequested(event_token const& token) const noexcept
    {
        impl::interface_of(*this)->remove_PairingRequested(EventRegistrationToken{token.value});
    }

    inline bool DeviceInformationPairing::IsPaired() const
    {
        boolean value{};
        check_hresult(impl::interface_of(*this)->get_IsPaired(&value));
        return value;
    }

    inline bool DeviceInformationPairing::CanPair() const
    {
        boolean value{};
        check_hresult(impl::interface_of(*this)->get_CanPair(&value));
        return value;
    }

    inline DeviceInformationCustomPairing DeviceInformationPairing::Custom() const
    {
        DeviceInformationCustomPairing value{nullptr};
        check_hresult(impl::interface_of(as<IDeviceInformationPairing2>())->get_Custom(impl::out(value)));
        return value;
    }

    inline Foundation::IAsyncOperation<DevicePairingResult> DeviceInformationPairing::PairAsync() const
    {
        Foundation::IAsyncOperation<DevicePairingResult> operation{nullptr};
        check_hresult(impl::interface_of(*this)->PairAsync(impl::out(operation)));
        return operation;
    }

    inline Foundation::IAsyncOperation<DevicePairingResult> DeviceInformationPairing::PairAsync(
        DevicePairingProtectionLevel const& minProtectionLevel) const
    {
        Foundation::IAsyncOperation<DevicePairingResult> operation{nullptr};
        check_hresult(
            impl::interface_of(*this)->PairWithProtectionLevelAsync(minProtectionLevel, impl::out(operation)));
        return operation;
    }

    inline Foundation::IAsyncOperation<DeviceUnpairingResult> DeviceInformationPairing::UnpairAsync() const
    {
        Foundation::IAsyncOperation<DeviceUnpairingResult> operation{nullptr};
        check_hresult(impl::interface_of(as<IDeviceInformationPairing2>())->UnpairAsync(impl::out(operation)));
        return operation;
    }

    inline Foundation::IAsyncOperation<DeviceInformation> DeviceInformation::CreateFromIdAsync(
        param::hstring const& deviceId)
    {
        auto const statics = impl::get_activation_factory<platform::IDeviceInformationStatics>(
            L"Windows.Devices.Enumeration.DeviceInformation");
        Foundation::IAsyncOperation<DeviceInformation> operation{nullptr};
        check_hresult(statics->CreateFromIdAsync(static_cast<HSTRING>(get_abi(deviceId)), impl::out(operation)));
        return operation;
    }

    inline Foundation::IAsyncOperation<DeviceInformationCollection> DeviceInformation::FindAllAsync(
        param::hstring const& aqsFilter)
    {
        auto const statics = impl::get_activation_factory<platform::IDeviceInformationStatics>(
            L"Windows.Devices.Enumeration.DeviceInformation");
        Foundation::IAsyncOperation<DeviceInformationCollection> operation{nullptr};
        check_hresult(statics->FindAllAsyncAqsFilter(static_cast<HSTRING>(get_abi(aqsFilter)), impl::out(operation)));
        return operation;
    }

    inline Foundation::IAsyncOperation<DeviceInformationCollection> DeviceInformation::FindAllAsync(
        param::hstring const& aqsFilter, Foundation::Collections::IIterable<hstring> const& additionalProperties,
        DeviceInformationKind const& kind)
    {
        auto const statics = impl::get_activation_factory<platform::IDeviceInformationStatics2>(
            L"Windows.Devices.Enumeration.DeviceInformation");
        Foundation::IAsyncOperation<DeviceInformationCollection> operation{nullptr};
        check_hresult(statics->FindAllAsyncWithKindAqsFilterAndAdditionalProperties(
            static_cast<HSTRING>(get_abi(aqsFilter)), impl::interface_of(additionalProperties), kind,
            impl::out(operation)));
        return operation;
    }

    inline DeviceWatcher DeviceInformation::CreateWatcher(
        param::hstring const& aqsFilter, Foundation::Collections::IIterable<hstring> const& additionalProperties,
        DeviceInformationKind const& kind)
    {
        auto const statics = impl::get_activation_factory<platform::IDeviceInformationStatics2>(
            L"Windows.Devices.Enumeration.DeviceInformation");
        DeviceWatcher watcher{nullptr};
        check_hresult(statics->CreateWatcherWithKindAqsFilterAndAdditionalProperties(
            static_cast<HSTRING>(get_abi(aqsFilter)), impl::interface_of(additionalProperties), kind,
            impl::out(watcher)));
        return watcher;
    }

    inline hstring DeviceInformation::Id() const
    {
        hstring value;
        check_hresult(impl::interface_of(*this)->get_Id(impl::out(value)));
        return value;
    }

    inline hstring DeviceInformation::Name() const
    {
        hstring value;
        check_hresult(impl::interface_of(*this)->get_Name(impl::out(value)));
        return value;
    }

    inline Foundation::Collections::IMapView<hstring, Foundation::IInspectable> DeviceInformation::Properties() const
    {
        Foundation::Collections::IMapView<hstring, Foundation::IInspectable> value{nullptr};
        check_hresult(impl::interface_of(*this)->get_Properties(impl::out(value)));
        return value;
    }

    inline DeviceInformationPairing DeviceInformation::Pairing() const
    {
        DeviceInformationPairing value{nullptr};
        check_hresult(impl::interface_of(as<IDeviceInformation2>())->get_Pairing(impl::out(value)));
        return value;
    }

    inline void DeviceInformation::Update(DeviceInformationUpdate const& updateInfo) const
    {
        check_hresult(impl::interface_of(*this)->Update(impl::interface_of(updateInfo)));
    }

    inline DeviceWatcher::Added_revoker DeviceWatcher::Added(auto_revoke_t, AddedHandler const& handler) const
    {
        EventRegistrationToken token{};
        check_hresult(impl::interface_of(*this)->add_Added(impl::interface_of(handler), &token));
        return {*this, event_token{token.value}};
    }

    inline DeviceWatcher::Updated_revoker DeviceWatcher::Updated(auto_revoke_t, UpdateHandler const& handler) const
    {
        EventRegistrationToken token{};
        check_hresult(impl::interface_of(*this)->add_Updated(impl::interface_of(handler), &token));
        return {*this, event_token{token.value}};
    }

    inline DeviceWatcher::Removed_revoker DeviceWatcher::Removed(auto_revoke_t, UpdateHandler const& handler) const
    {
        EventRegistrationToken token{};
        check_hresult(impl::interface_of(*this)->add_Removed(impl::interface_of(handler), &token));
        return {*this, event_token{token.value}};
    }

    inline DeviceWatcher::EnumerationCompleted_revoker DeviceWatcher::EnumerationCompleted(
        auto_revoke_t, WatcherHandler const& handler) const
    {
        EventRegistrationToken token{};
        check_hresult(impl::interface_of(*this)->add_EnumerationCompleted(impl::interface_of(handler), &token));
        return {*this, event_token{token.value}};
    }

    inline DeviceWatcher::Stopped_revoker DeviceWatcher::Stopped(auto_revoke_t, WatcherHandler const& handler) const
    {
        EventRegistrationToken token{};
        check_hresult(impl::interface_of(*this)->add_Stopped(impl::interface_of(handler), &token));
        return {*this, event_token{token.value}};
    }

    inline DeviceWatcherStatus DeviceWatcher::Status() const
    {
        DeviceWatcherStatus value{};
        check_hresult(impl::interface_of(*this)->get_Status(&value));
        return value;
    }

    inline void DeviceWatcher::Start() const
    {
        check_hresult(impl::interface_of(*this)->Start());
    }

    inline void DeviceWatcher::Stop() const
    {
        check_hresult(impl::interface_of(*this)->Stop());
    }
} // namespace winrt::Windows::Devices::Enumeration
