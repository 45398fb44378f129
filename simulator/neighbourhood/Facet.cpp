#include "simulator/neighbourhood/Facet.h"

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

        bool IsThere(Neighbour const& neighbour, DeviceInformationKind kind)
        {
            auto const& endpoint = neighbour.endpoint;
            return IsTrue(endpoint.properties, isPairedProperty) || (!NeedsPairing(kind) && IsInRange(neighbour));
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
        for (auto const each : kinds)
        {
            if (kind != DeviceInformationKind::Unknown && kind != each)
            {
                continue;
            }
            auto const found = std::ranges::find_if(neighbourhood.neighbours, [&](Neighbour const& neighbour) {
                return IsThere(neighbour, each) &&
                       std::ranges::equal(IdOf(neighbour.endpoint, each), id, {}, ToLower, ToLower);
            });
            if (found != neighbourhood.neighbours.end())
            {
                return FacetOf(found->endpoint, each);
            }
        }
        return std::nullopt;
    }
} // namespace simulator
