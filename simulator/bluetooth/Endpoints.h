// The endpoints that device objects stand for, as the platform knows them now.
#pragma once

#include "simulator/scenario/Scenario.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace simulator
{
    // Without regard to letter case.
    bool SameText(std::string_view left, std::string_view right);

    std::uint64_t AddressNumber(std::string_view address); // of "a4:c1:38:5e:22:0f"
    std::string AddressText(std::uint64_t address);

    inline constexpr std::uint64_t highestAddress = 0xFFFF'FFFF'FFFF;

    // An identifier in the protocol's form, or one that an endpoint of the protocol bears all the same.
    bool IsIdentifier(Protocol protocol, std::string const& id);

    // Null where there is no such endpoint, or the platform has never had it in range nor paired it.
    std::optional<Endpoint> FindEndpoint(Protocol protocol, std::string const& id);
    std::optional<Endpoint> FindEndpointAt(Protocol protocol, std::uint64_t address);

    std::string StringOf(Endpoint const& endpoint, std::string_view property);

    // Null where the endpoint has no such number.
    std::optional<std::int64_t> NumberOf(Endpoint const& endpoint, std::string_view property);

    std::uint32_t ClassOfDeviceOf(Endpoint const& endpoint);
    std::uint16_t AppearanceOf(Endpoint const& endpoint);
} // namespace simulator
