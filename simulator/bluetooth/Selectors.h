// The filters by which a program finds devices of a protocol.
#pragma once

#include "simulator/scenario/Scenario.h"

#include <cstdint>
#include <string>

namespace simulator
{
    // Those of the pairing state, the connection and the name are the platform's own words; the others are in their
    // form.
    std::string PairingSelector(Protocol protocol, bool paired);
    std::string ConnectionSelector(Protocol protocol, bool connected);
    std::string NameSelector(Protocol protocol, std::string const& name);
    std::string AddressSelector(Protocol protocol, std::uint64_t address);
    std::string TypedAddressSelector(std::uint64_t address, std::int32_t type);
    std::string ClassSelector(std::int32_t majorClass, std::int32_t minorClass);
    std::string AppearanceSelector(std::uint16_t appearance);
} // namespace simulator
