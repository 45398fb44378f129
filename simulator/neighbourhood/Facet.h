// What an endpoint is among the devices of a kind: itself, or what the PC makes of it.
#pragma once

#include "platform/abi/EnumerationValues.h"
#include "simulator/neighbourhood/Neighbourhood.h"

namespace simulator
{
    struct Facet
    {
        platform::DeviceInformationKind kind;
        std::string id; // of a container: the same for all endpoints of the device
        Properties properties;
    };

    // It has a place in the device tree, which it has as long as the endpoint is paired and wherever the device is.
    bool NeedsPairing(platform::DeviceInformationKind kind);

    // Null where the kind has no Bluetooth devices.
    std::optional<Facet> FacetOf(Endpoint const& endpoint, platform::DeviceInformationKind kind);

    // With the mutex held: the device that there is now, by its identifier in any case of its letters. Unknown stands
    // for every kind. An endpoint is known while it is in range or paired.
    std::optional<Facet> FindFacet(Neighbourhood const& neighbourhood, std::string_view id,
                                   platform::DeviceInformationKind kind);
} // namespace simulator
