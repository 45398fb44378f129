// What is wrong with a pairing or unpairing before the device is even asked.
#pragma once

#include "platform/abi/EnumerationValues.h"
#include "simulator/neighbourhood/Neighbourhood.h"

#include <optional>

namespace simulator
{
    struct PairingOrder
    {
        platform::DevicePairingProtectionLevel least;
        std::optional<platform::DevicePairingKinds> answers{}; // by the program; null: the system asks, its user agrees
    };

    // Both with the mutex held; null when nothing is wrong.
    std::optional<platform::DevicePairingResultStatus> PairRefusal(Neighbourhood& neighbourhood, std::string const& id,
                                                                   PairingOrder const& order);
    std::optional<platform::DeviceUnpairingResultStatus> UnpairRefusal(Neighbourhood& neighbourhood,
                                                                       std::string const& id);
} // namespace simulator
