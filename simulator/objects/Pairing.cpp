#include "simulator/objects/Pairing.h"

#include "simulator/objects/Ceremony.h"
#include "simulator/trace/Call.h"

namespace simulator
{
    using platform::DevicePairingProtectionLevel;

    Pairing::Pairing(std::shared_ptr<Snapshot> snapshot)
        : snapshot_(std::move(snapshot))
        , custom_(Make<CustomPairing>(snapshot_))
    {
    }

    HRESULT Pairing::get_IsPaired(boolean* value)
    {
        return Get("DeviceInformationPairing.get_IsPaired", snapshot_->Id(), value,
                   [&]() -> boolean { return snapshot_->IsTrue("System.Devices.Aep.IsPaired"); });
    }

    HRESULT Pairing::get_CanPair(boolean* value)
    {
        return Get("DeviceInformationPairing.get_CanPair", snapshot_->Id(), value,
                   [&]() -> boolean { return snapshot_->IsTrue("System.Devices.Aep.CanPair"); });
    }

    HRESULT Pairing::PairAsync(platform::PairingOperation** operation)
    {
        return GetObject("DeviceInformationPairing.PairAsync", snapshot_->Id(), operation,
                         [&] { return Pair({.id = snapshot_->Id()}); });
    }

    HRESULT Pairing::PairWithProtectionLevelAsync(DevicePairingProtectionLevel level,
                                                  platform::PairingOperation** operation)
    {
        return GetObject("DeviceInformationPairing.PairWithProtectionLevelAsync", snapshot_->Id() + ", " + Text(level),
                         operation, [&] { return Pair({.id = snapshot_->Id(), .least = level}); });
    }

    HRESULT Pairing::get_ProtectionLevel(DevicePairingProtectionLevel* value)
    {
        return Get("DeviceInformationPairing.get_ProtectionLevel", snapshot_->Id(), value, [&] {
            return snapshot_->IsTrue("System.Devices.Aep.IsPaired") ? HighestProtection(snapshot_->Id())
                                                                    : DevicePairingProtectionLevel::None;
        });
    }

    HRESULT Pairing::get_Custom(platform::IDeviceInformationCustomPairing** value)
    {
        return GetObject("DeviceInformationPairing.get_Custom", snapshot_->Id(), value, [&] { return custom_; });
    }

    HRESULT Pairing::PairWithProtectionLevelAndSettingsAsync(DevicePairingProtectionLevel level, void*,
                                                             platform::PairingOperation** operation)
    {
        return GetObject("DeviceInformationPairing.PairWithProtectionLevelAndSettingsAsync",
                         snapshot_->Id() + ", " + Text(level), operation,
                         [&] { return Pair({.id = snapshot_->Id(), .least = level}); });
    }

    HRESULT Pairing::UnpairAsync(platform::UnpairingOperation** operation)
    {
        return GetObject("DeviceInformationPairing.UnpairAsync", snapshot_->Id(), operation,
                         [&] { return Unpair(snapshot_->Id()); });
    }

    char const* Pairing::ClassName() const noexcept
    {
        return "Windows.Devices.Enumeration.DeviceInformationPairing";
    }
} // namespace simulator
