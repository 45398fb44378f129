// DeviceInformationPairing: whether a device is paired, and the way to change that.
#pragma once

#include "platform/abi/Enumeration.h"
#include "simulator/com/Object.h"
#include "simulator/objects/CustomPairing.h"
#include "simulator/objects/Snapshot.h"

#include <memory>

namespace simulator
{
    class Pairing final : public Object<platform::IDeviceInformationPairing, platform::IDeviceInformationPairing2>
    {
    public:
        explicit Pairing(std::shared_ptr<Snapshot> snapshot);

        HRESULT STDMETHODCALLTYPE get_IsPaired(boolean* value) override;
        HRESULT STDMETHODCALLTYPE get_CanPair(boolean* value) override;
        HRESULT STDMETHODCALLTYPE PairAsync(platform::PairingOperation** operation) override;
        HRESULT STDMETHODCALLTYPE PairWithProtectionLevelAsync(platform::DevicePairingProtectionLevel level,
                                                               platform::PairingOperation** operation) override;
        HRESULT STDMETHODCALLTYPE get_ProtectionLevel(platform::DevicePairingProtectionLevel* value) override;
        HRESULT STDMETHODCALLTYPE get_Custom(platform::IDeviceInformationCustomPairing** value) override;
        HRESULT STDMETHODCALLTYPE
        PairWithProtectionLevelAndSettingsAsync(platform::DevicePairingProtectionLevel level, void* settings,
                                                platform::PairingOperation** operation) override;
        HRESULT STDMETHODCALLTYPE UnpairAsync(platform::UnpairingOperation** operation) override;

    private:
        char const* ClassName() const noexcept override;

        std::shared_ptr<Snapshot> const m_snapshot;
        // One for the device's whole life: handlers are found again by the next one who asks for it.
        Ref<CustomPairing> const m_custom;
    };
} // namespace simulator
