#include "simulator/objects/PairingStatics.h"

#include "simulator/trace/Call.h"

namespace simulator
{
    HRESULT PairingFactory::ActivateInstance(::IInspectable** instance)
    {
        return Outside("DeviceInformationPairing.ActivateInstance", {}, instance);
    }

    HRESULT PairingFactory::TryRegisterForAllInboundPairingRequests(platform::DevicePairingKinds kinds,
                                                                    boolean* registered)
    {
        return Get("DeviceInformationPairing.TryRegisterForAllInboundPairingRequests", Text(kinds), registered,
                   [] { return boolean{false}; });
    }

    HRESULT PairingFactory::TryRegisterForAllInboundPairingRequestsWithProtectionLevel(
        platform::DevicePairingKinds kinds, platform::DevicePairingProtectionLevel level, boolean* registered)
    {
        return Get("DeviceInformationPairing.TryRegisterForAllInboundPairingRequestsWithProtectionLevel",
                   Text(kinds) + ", " + Text(level), registered, [] { return boolean{false}; });
    }

    char const* PairingFactory::ClassName() const noexcept
    {
        return nullptr;
    }

    bool PairingFactory::IsAgile() const noexcept
    {
        return false;
    }
} // namespace simulator
