// What a program gets for a pairing or an unpairing that it begins.
#pragma once

#include "simulator/neighbourhood/Refusal.h"
#include "simulator/objects/AsyncOperation.h"
#include "simulator/objects/CustomPairing.h"

namespace simulator
{
    // Without `custom` the system asks the user itself.
    Ref<PairingOperation> Pair(std::string const& id, platform::DevicePairingProtectionLevel least);
    Ref<PairingOperation> Pair(Ref<CustomPairing> custom, platform::DevicePairingProtectionLevel least,
                               platform::DevicePairingKinds offered);
    Ref<UnpairingOperation> Unpair(std::string const& id);
} // namespace simulator
