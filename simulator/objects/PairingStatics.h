// The statics of DeviceInformationPairing: inbound pairing requests, of which the simulator makes none.
#pragma once

#include "platform/abi/Enumeration.h"
#include "simulator/com/Object.h"

namespace simulator
{
    class PairingFactory final : public Object<::IActivationFactory, platform::IDeviceInformationPairingStatics,
                                               platform::IDeviceInformationPairingStatics2>
    {
    public:
        HRESULT STDMETHODCALLTYPE ActivateInstance(::IInspectable** instance) override;
        HRESULT STDMETHODCALLTYPE TryRegisterForAllInboundPairingRequests(platform::DevicePairingKinds kinds,
                                                                          boolean* registered) override;
        HRESULT STDMETHODCALLTYPE TryRegisterForAllInboundPairingRequestsWithProtectionLevel(
            platform::DevicePairingKinds kinds, platform::DevicePairingProtectionLevel level,
            boolean* registered) override;

    private:
        char const* ClassName() const noexcept override;
        bool IsAgile() const noexcept override;
    };
} // namespace simulator
