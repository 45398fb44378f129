#include "simulator/objects/CustomPairing.h"

#include "simulator/objects/Ceremony.h"

namespace simulator
{
    using platform::DevicePairingKinds;
    using platform::DevicePairingProtectionLevel;

    CustomPairing::CustomPairing(std::shared_ptr<Snapshot> snapshot)
        : snapshot_(std::move(snapshot))
    {
    }

    Snapshot const& CustomPairing::Device() const noexcept
    {
        return *snapshot_;
    }

    EventSource<platform::PairingRequestedHandler>& CustomPairing::PairingRequested() noexcept
    {
        return pairingRequested_;
    }

    HRESULT CustomPairing::PairAsync(DevicePairingKinds kinds, platform::PairingOperation** operation)
    {
        return GetObject(
            "DeviceInformationCustomPairing.PairAsync", snapshot_->Id() + ", " + Text(kinds), operation, [&] {
                return Pair({snapshot_->Id(), DevicePairingProtectionLevel::Default, kinds, Ref<CustomPairing>(this)});
            });
    }

    HRESULT CustomPairing::PairWithProtectionLevelAsync(DevicePairingKinds kinds, DevicePairingProtectionLevel level,
                                                        platform::PairingOperation** operation)
    {
        return GetObject("DeviceInformationCustomPairing.PairWithProtectionLevelAsync",
                         snapshot_->Id() + ", " + Text(kinds) + ", " + Text(level), operation, [&] {
                             return Pair({snapshot_->Id(), level, kinds, Ref<CustomPairing>(this)});
                         });
    }

    // The settings are a type without members: there is nothing to read from them.
    HRESULT CustomPairing::PairWithProtectionLevelAndSettingsAsync(DevicePairingKinds kinds,
                                                                   DevicePairingProtectionLevel level, void*,
                                                                   platform::PairingOperation** operation)
    {
        return GetObject("DeviceInformationCustomPairing.PairWithProtectionLevelAndSettingsAsync",
                         snapshot_->Id() + ", " + Text(kinds) + ", " + Text(level), operation, [&] {
                             return Pair({snapshot_->Id(), level, kinds, Ref<CustomPairing>(this)});
                         });
    }

    HRESULT CustomPairing::add_PairingRequested(platform::PairingRequestedHandler* handler,
                                                EventRegistrationToken* token)
    {
        return pairingRequested_.Add("DeviceInformationCustomPairing.add_PairingRequested", snapshot_->Id(), handler,
                                     token);
    }

    HRESULT CustomPairing::remove_PairingRequested(EventRegistrationToken token)
    {
        return pairingRequested_.Remove("DeviceInformationCustomPairing.remove_PairingRequested", snapshot_->Id(),
                                        token);
    }

    char const* CustomPairing::ClassName() const noexcept
    {
        return "Windows.Devices.Enumeration.DeviceInformationCustomPairing";
    }
} // namespace simulator
