// How a device shows in the PC's device tree once it is paired.
#pragma once

#include "simulator/scenario/Scenario.h"

namespace simulator
{
    std::string AddressDigits(std::string const& address, int (*letterCase)(int));

    std::string InstanceIdOf(Endpoint const& endpoint);    // BTHLE\Dev_a4c1385e220f\8&1a2b3c4d&0&A4C1385E220F
    std::string_view InterfaceClassOf(Protocol protocol);  // {781aee18-7733-4ce4-add0-91f41c67b592}
    std::string InterfacePathOf(Endpoint const& endpoint); // \\?\BTHLE#Dev_...#...#{...}

    // Shared by the endpoints of one device. Empty for an endpoint that has none.
    Guid ContainerIdOf(Endpoint const& endpoint);
} // namespace simulator
