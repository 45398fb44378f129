#include "simulator/objects/CustomPairing.h"

#include "simulator/objects/PairingOperations.h"

namespace simulator
{
    using platform::DevicePairingKinds;
    using platform::DevicePairingProtectionLevel;

    CustomPairing::CustomPairing(std::shared_ptr<Snapshot> snapshot)
        : m_snapshot(std::move(snapshot))
    {
    }

    Snapshot const& CustomPairing::Device() const noexcept
    {
        return *m_snapshot;
    }

    EventSource<platform::PairingRequestedHandler>& CustomPairing::PairingRequested() noexcept
    {
        return m_pairingRequested;
    }

    HRESULT CustomPairing::PairAsync(DevicePairingKinds kinds, platform::PairingOperation** operation)
    {
        return GetObject("DeviceInformationCustomPairing.PairAsync", m_snapshot->Id() + ", " + Text(kinds), operation,
                         [&] { return Pair(Ref<CustomPairing>(this), DevicePairingProtectionLevel::Default, kinds); });
    }

    HRESULT CustomPairing::PairWithProtectionLevelAsync(DevicePairingKinds kinds, DevicePairingProtectionLevel level,
                                                        platform::PairingOperation** operation)
    {
        return GetObject("DeviceInformationCustomPairing.PairWithProtectionLevelAsync",
                         m_snapshot->Id() + ", " + Text(kinds) + ", " + Text(level), operation,
                         [&] { return Pair(Ref<CustomPairing>(this), level, kinds); });
    }

    // The settings are a type without members: there is nothing to read from them.
    HRESULT CustomPairing::PairWithProtectionLevelAndSettingsAsync(DevicePairingKinds kinds,
                                                                   DevicePairingProtectionLevel level, void*,
                                                                   platform::PairingOperation** operation)
    {
        return GetObject("DeviceInformationCustomPairing.PairWithProtectionLevelAndSettingsAsync",
                         m_snapshot->Id() + ", " + Text(kinds) + ", " + Text(level), operation,
                         [&] { return Pair(Ref<CustomPairing>(this), level, kinds); });
    }

    HRESULT CustomPairing::add_PairingRequested(platform::PairingRequestedHandler* handler,
                                                EventRegistrationToken* token)
    {
        return m_pairingRequested.Add("DeviceInformationCustomPairing.add_PairingRequested", m_snapshot->Id(), handler,
                                      token);
    }

    HRESULT CustomPairing::remove_PairingRequested(EventRegistrationToken token)
    {
        return m_pairingRequested.Remove("DeviceInformationCustomPairing.remove_PairingRequested", m_snapshot->Id(),
                                         token);
    }

    char const* CustomPairing::ClassName() const noexcept
    {
        return "Windows.Devices.Enumeration.DeviceInformationCustomPairing";
    }
} // namespace simulator
