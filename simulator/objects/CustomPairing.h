// DeviceInformationCustomPairing: pairing in which the program answers the device's requests.
#pragma once

#include "platform/abi/Enumeration.h"
#include "simulator/com/Object.h"
#include "simulator/objects/EventSource.h"
#include "simulator/objects/Snapshot.h"

#include <memory>

namespace simulator
{
    class CustomPairing final : public Object<platform::IDeviceInformationCustomPairing>
    {
    public:
        explicit CustomPairing(std::shared_ptr<Snapshot> snapshot);

        Snapshot const& Device() const noexcept;
        EventSource<platform::PairingRequestedHandler>& PairingRequested() noexcept;

        HRESULT STDMETHODCALLTYPE PairAsync(platform::DevicePairingKinds kinds,
                                            platform::PairingOperation** operation) override;
        HRESULT STDMETHODCALLTYPE PairWithProtectionLevelAsync(platform::DevicePairingKinds kinds,
                                                               platform::DevicePairingProtectionLevel level,
                                                               platform::PairingOperation** operation) override;
        HRESULT STDMETHODCALLTYPE PairWithProtectionLevelAndSettingsAsync(
            platform::DevicePairingKinds kinds, platform::DevicePairingProtectionLevel level, void* settings,
            platform::PairingOperation** operation) override;
        HRESULT STDMETHODCALLTYPE add_PairingRequested(platform::PairingRequestedHandler* handler,
                                                       EventRegistrationToken* token) override;
        HRESULT STDMETHODCALLTYPE remove_PairingRequested(EventRegistrationToken token) override;

    private:
        char const* ClassName() const noexcept override;

        std::shared_ptr<Snapshot> const m_snapshot;
        EventSource<platform::PairingRequestedHandler> m_pairingRequested;
    };
} // namespace simulator
