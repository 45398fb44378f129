// Pairing and unpairing, from the request to the end of the asynchronous operation.
#pragma once

#include "simulator/objects/AsyncOperation.h"
#include "simulator/objects/CustomPairing.h"

namespace simulator
{
    struct PairingOrder
    {
        std::string id;
        platform::DevicePairingProtectionLevel least = platform::DevicePairingProtectionLevel::Default;
        platform::DevicePairingKinds offered = platform::DevicePairingKinds::None;
        Ref<CustomPairing> custom{}; // none: the system asks the user itself, who agrees
    };

    // The operation is over when they return for an endpoint that answers at once (a duration of 0), unless
    // the program's handler keeps it waiting.
    Ref<PairingOperation> Pair(PairingOrder order);
    Ref<UnpairingOperation> Unpair(std::string const& id);

    platform::DevicePairingProtectionLevel HighestProtection(std::string const& id);
} // namespace simulator
