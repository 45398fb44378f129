#include "simulator/objects/Pairing.h"

#include "simulator/neighbourhood/Ceremony.h"
#include "simulator/objects/PairingOperations.h"
#include "simulator/trace/Call.h"

namespace simulator
{
    using platform::DevicePairingProtectionLevel;

    Pairing::Pairing(std::shared_ptr<Snapshot> snapshot)
        : m_snapshot(std::move(snapshot))
        , m_custom(Make<CustomPairing>(m_snapshot))
    {
    }

    HRESULT Pairing::get_IsPaired(boolean* value)
    {
        return Get("DeviceInformationPairing.get_IsPaired", m_snapshot->Id(), value,
                   [&]() -> boolean { return m_snapshot->IsTrue(isPairedProperty); });
    }

    HRESULT Pairing::get_CanPair(boolean* value)
    {
        return Get("DeviceInformationPairing.get_CanPair", m_snapshot->Id(), value,
                   [&]() -> boolean { return m_snapshot->IsTrue(canPairProperty); });
    }

    HRESULT Pairing::PairAsync(platform::PairingOperation** operation)
    {
        return GetObject("DeviceInformationPairing.PairAsync", m_snapshot->Id(), operation,
                         [&] { return Pair(m_snapshot->Id(), DevicePairingProtectionLevel::Default); });
    }

    HRESULT Pairing::PairWithProtectionLevelAsync(DevicePairingProtectionLevel level,
                                                  platform::PairingOperation** operation)
    {
        return GetObject("DeviceInformationPairing.PairWithProtectionLevelAsync", m_snapshot->Id() + ", " + Text(level),
                         operation, [&] { return Pair(m_snapshot->Id(), level); });
    }

    HRESULT Pairing::get_ProtectionLevel(DevicePairingProtectionLevel* value)
    {
        return Get("DeviceInformationPairing.get_ProtectionLevel", m_snapshot->Id(), value, [&] {
            return m_snapshot->IsTrue(isPairedProperty) ? HighestProtection(m_snapshot->Id())
                                                        : DevicePairingProtectionLevel::None;
        });
    }

    HRESULT Pairing::get_Custom(platform::IDeviceInformationCustomPairing** value)
    {
        return GetObject("DeviceInformationPairing.get_Custom", m_snapshot->Id(), value, [&] { return m_custom; });
    }

    HRESULT Pairing::PairWithProtectionLevelAndSettingsAsync(DevicePairingProtectionLevel level, void*,
                                                             platform::PairingOperation** operation)
    {
        return GetObject("DeviceInformationPairing.PairWithProtectionLevelAndSettingsAsync",
                         m_snapshot->Id() + ", " + Text(level), operation,
                         [&] { return Pair(m_snapshot->Id(), level); });
    }

    HRESULT Pairing::UnpairAsync(platform::UnpairingOperation** operation)
    {
        return GetObject("DeviceInformationPairing.UnpairAsync", m_snapshot->Id(), operation,
                         [&] { return Unpair(m_snapshot->Id()); });
    }

    char const* Pairing::ClassName() const noexcept
    {
        return "Windows.Devices.Enumeration.DeviceInformationPairing";
    }
} // namespace simulator
