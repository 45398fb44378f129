#include "simulator/neighbourhood/Facet.h"

#include "simulator/neighbourhood/RadioSwitch.h"
#include "simulator/scenario/DeviceNode.h"

#include <algorithm>

namespace simulator
{
    using platform::DeviceInformationKind;

    namespace
    {
        // An overload without a kind takes the first that fits.
        constexpr DeviceInformationKind kinds[] = {
            DeviceInformationKind::DeviceInterface,
            DeviceInformationKind::Device,
            DeviceInformationKind::DeviceContainer,
            DeviceInformationKind::AssociationEndpoint,
            DeviceInformationKind::AssociationEndpointContainer,
        };

        // Empty: the kind has no Bluetooth devices.
        std::string IdOf(Endpoint const& endpoint, DeviceInformationKind kind)
        {
            switch (kind)
            {
            case DeviceInformationKind::AssociationEndpoint:
                return endpoint.id;
            case DeviceInformationKind::Device:
                return InstanceIdOf(endpoint);
            case DeviceInformationKind::DeviceInterface:
                return InterfacePathOf(endpoint);
            case DeviceInformationKind::DeviceContainer:
            case DeviceInformationKind::AssociationEndpointContainer:
                return ContainerIdOf(endpoint).text;
            default:
                return {};
            }
        }

        Properties PropertiesOf(Endpoint const& endpoint, DeviceInformationKind kind)
        {
            if (kind == DeviceInformationKind::AssociationEndpoint)
            {
                return endpoint.properties;
            }
            auto const name = endpoint.properties.find("System.ItemNameDisplay");
            Properties properties{
                {"System.ItemNameDisplay", name == endpoint.properties.end() ? Value() : name->second},
                {"System.Devices.DevObjectType", static_cast<std::uint32_t>(kind)},
                {"System.Devices.ContainerId", ContainerIdOf(endpoint)},
            };
            if (kind == DeviceInformationKind::Device || kind == DeviceInformationKind::DeviceInterface)
            {
                properties["System.Devices.DeviceInstanceId"] = InstanceIdOf(endpoint);
            }
            if (kind == DeviceInformationKind::DeviceInterface)
            {
                properties["System.Devices.InterfaceClassGuid"] =
                    Guid{std::string(InterfaceClassOf(endpoint.protocol))};
                properties["System.Devices.InterfaceEnabled"] = true;
                properties["System.Devices.IsDefault"] = false;
            }
            return properties;
        }

        // Null where the platform does not know the device, or no longer.
        std::optional<Facet> FacetNow(Neighbourhood const& neighbourhood, Neighbour const& neighbour,
                                      DeviceInformationKind kind)
        {
            auto const& endpoint = neighbour.endpoint;
            bool const isPresent = IsOnAir(neighbourhood) && IsInRange(neighbour);
            bool const isPaired = IsTrue(endpoint.properties, isPairedProperty);
            if (!isPaired && (NeedsPairing(kind) || !isPresent))
            {
                return std::nullopt;
            }
            auto facet = FacetOf(endpoint, kind);
            if (kind == DeviceInformationKind::AssociationEndpoint && !isPresent)
            {
                facet->properties[std::string(isPresentProperty)] = false;
            }
            return facet;
        }
    } // namespace

    bool NeedsPairing(DeviceInformationKind kind)
    {
        return kind == DeviceInformationKind::Device || kind == DeviceInformationKind::DeviceInterface ||
               kind == DeviceInformationKind::DeviceContainer;
    }

    std::optional<Facet> FacetOf(Endpoint const& endpoint, DeviceInformationKind kind)
    {
        auto id = IdOf(endpoint, kind);
        return id.empty() ? std::nullopt : std::optional(Facet{kind, std::move(id), PropertiesOf(endpoint, kind)});
    }

    std::optional<Facet> FindFacet(Neighbourhood const& neighbourhood, std::string_view id, DeviceInformationKind kind)
    {
        if (!neighbourhood.scenario.adapter.present)
        {
            return std::nullopt;
        }
        // Most are asked for by the identifier that the platform gave: there need be no search.
        auto const exact = neighbourhood.neighboursById.find(id);
        if (exact != neighbourhood.neighboursById.end() &&
            (kind == DeviceInformationKind::Unknown || kind == DeviceInformationKind::AssociationEndpoint))
        {
            return FacetNow(neighbourhood, *exact->second, DeviceInformationKind::AssociationEndpoint);
        }
        for (auto const each : kinds)
        {
            if (kind != DeviceInformationKind::Unknown && kind != each)
            {
                continue;
            }
            for (auto const& neighbour : neighbourhood.neighbours)
            {
                if (!std::ranges::equal(IdOf(neighbour.endpoint, each), id, {}, ToLower, ToLower))
                {
                    continue;
                }
                if (auto facet = FacetNow(neighbourhood, neighbour, each))
                {
                    return facet;
                }
            }
        }
        return std::nullopt;
    }
} // namespace simulator
