// What is wrong with a pairing or unpairing before the device is even asked.
#pragma once

#include "simulator/neighbourhood/Neighbourhood.h"
#include "simulator/objects/Ceremony.h"

#include <optional>

namespace simulator
{
    // Both with the mutex held; null when nothing is wrong.
    std::optional<platform::DevicePairingResultStatus> PairRefusal(Neighbourhood& neighbourhood,
                                                                   PairingOrder const& order);
    std::optional<platform::DeviceUnpairingResultStatus> UnpairRefusal(Neighbourhood& neighbourhood,
                                                                       std::string const& id);
} // namespace simulator
