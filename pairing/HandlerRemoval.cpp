#include "pairing/HandlerRemoval.h"

#include "platform/abi/Enumeration.h"

namespace vorlink
{
    void RemovePairingRequested(enumeration::DeviceInformationCustomPairing const& custom, winrt::event_token token)
    {
        auto* const pairing = static_cast<platform::IDeviceInformationCustomPairing*>(winrt::get_abi(custom));
        winrt::check_hresult(pairing->remove_PairingRequested({token.value}));
    }
} // namespace vorlink
