#include "simulator/bluetooth/Endpoints.h"

#include "simulator/neighbourhood/Neighbourhood.h"
#include "simulator/properties/HexText.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <type_traits>

namespace simulator
{
    namespace
    {
        std::string_view PrefixOf(Protocol protocol)
        {
            return protocol == Protocol::Le ? "BluetoothLE#BluetoothLE" : "Bluetooth#Bluetooth";
        }

        bool IsKnown(Neighbour const& neighbour)
        {
            return neighbour.inRange || neighbour.sensed || neighbour.endpoint.appearsAtMs == 0 ||
                   IsTrue(neighbour.endpoint.properties, isPairedProperty);
        }

        template <typename IsIt>
        std::optional<Endpoint> FindKnown(Protocol protocol, IsIt isIt)
        {
            auto& neighbourhood = TheNeighbourhood();
            std::lock_guard const lock(neighbourhood.mutex);
            auto const& neighbours = neighbourhood.neighbours;
            auto const found = std::ranges::find_if(neighbours, [&](Neighbour const& neighbour) {
                return neighbour.endpoint.protocol == protocol && isIt(neighbour.endpoint) && IsKnown(neighbour);
            });
            bool const isThere = neighbourhood.scenario.adapter.present && found != neighbours.end();
            return isThere ? std::optional(found->endpoint) : std::nullopt;
        }
    } // namespace

    bool SameText(std::string_view left, std::string_view right)
    {
        return std::ranges::equal(left, right, {}, ToLower, ToLower);
    }

    std::uint64_t AddressNumber(std::string_view address)
    {
        std::string digits(address);
        std::erase(digits, ':');
        std::uint64_t number = 0;
        std::from_chars(digits.data(), digits.data() + digits.size(), number, 16);
        return number;
    }

    std::string AddressText(std::uint64_t address)
    {
        std::string text;
        for (int shift = 40; shift >= 0; shift -= 8)
        {
            char byte[4];
            std::snprintf(byte, sizeof byte, "%02x", static_cast<unsigned>(address >> shift & 0xFF));
            text.append(text.empty() ? "" : ":").append(byte);
        }
        return text;
    }

    bool IsIdentifier(Protocol protocol, std::string const& id)
    {
        constexpr std::size_t length = 17; // of an address
        auto const prefix = PrefixOf(protocol);
        if (id.size() == prefix.size() + 2 * length + 1 && SameText(id.substr(0, prefix.size()), prefix) &&
            ParseAddress(id.substr(prefix.size(), length)) && id[prefix.size() + length] == '-' &&
            ParseAddress(id.substr(prefix.size() + length + 1)))
        {
            return true;
        }
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        auto const* const neighbour = FindNeighbour(neighbourhood, id);
        return neighbour && neighbour->endpoint.protocol == protocol;
    }

    std::optional<Endpoint> FindEndpoint(Protocol protocol, std::string const& id)
    {
        {
            auto& neighbourhood = TheNeighbourhood();
            std::lock_guard const lock(neighbourhood.mutex);
            auto const* const exact = FindNeighbour(neighbourhood, id);
            if (exact && exact->endpoint.protocol == protocol && IsKnown(*exact) &&
                neighbourhood.scenario.adapter.present)
            {
                return exact->endpoint;
            }
        }
        return FindKnown(protocol, [&](Endpoint const& endpoint) { return SameText(endpoint.id, id); });
    }

    std::optional<Endpoint> FindEndpointAt(Protocol protocol, std::uint64_t address)
    {
        return FindKnown(protocol,
                         [text = AddressText(address)](Endpoint const& endpoint) { return endpoint.address == text; });
    }

    std::string StringOf(Endpoint const& endpoint, std::string_view property)
    {
        auto const found = endpoint.properties.find(property);
        auto const* const text =
            found == endpoint.properties.end() ? nullptr : std::get_if<std::string>(&found->second);
        return text ? *text : std::string();
    }

    std::optional<std::int64_t> NumberOf(Endpoint const& endpoint, std::string_view property)
    {
        auto const found = endpoint.properties.find(property);
        if (found == endpoint.properties.end())
        {
            return std::nullopt;
        }
        return std::visit(
            [](auto const& value) -> std::optional<std::int64_t> {
                using T = std::decay_t<decltype(value)>;
                if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>)
                {
                    return static_cast<std::int64_t>(value);
                }
                else
                {
                    return std::nullopt;
                }
            },
            found->second);
    }

    std::uint32_t ClassOfDeviceOf(Endpoint const& endpoint)
    {
        constexpr std::uint32_t uncategorised = 0x1F00;
        constexpr std::string_view cod = "System.Devices.Aep.Bluetooth.Cod.";
        auto const major = NumberOf(endpoint, std::string(cod) + "Major");
        if (!major)
        {
            return uncategorised;
        }
        // By their bits, from the 16th; those before have no property but the first.
        constexpr std::string_view services[] = {"Positioning", "Networking", "Rendering", "Capturing",
                                                 "ObjectXfer",  "Audio",      "Telephony", "Information"};
        constexpr unsigned firstService = 16;
        constexpr unsigned limitedDiscovery = 13;
        auto const offers = [&](std::string_view service) {
            return IsTrue(endpoint.properties, std::string(cod) + "Services." + std::string(service));
        };
        std::uint32_t bits = offers("LimitedDiscovery") ? 1U << limitedDiscovery : 0;
        for (unsigned index = 0; index < std::size(services); ++index)
        {
            bits |= offers(services[index]) ? 1U << (firstService + index) : 0;
        }
        auto const minor = NumberOf(endpoint, std::string(cod) + "Minor").value_or(0);
        return bits | (static_cast<std::uint32_t>(*major) & 0x1FU) << 8 |
               (static_cast<std::uint32_t>(minor) & 0x3FU) << 2;
    }

    std::uint16_t AppearanceOf(Endpoint const& endpoint)
    {
        return static_cast<std::uint16_t>(NumberOf(endpoint, "System.Devices.Aep.Bluetooth.Le.Appearance").value_or(0));
    }
} // namespace simulator
