#include "simulator/properties/Property.h"

#include <algorithm>
#include <iterator>

namespace simulator
{
    namespace
    {
        struct KnownProperty
        {
            std::string_view name;
            PropertyKind kind;
        };

        // The platform also has lists, times and blobs (Category, LastSeenTime, PhysicalDeviceLocation).
        // They count as text here: a query may name them, and compare them with null.
        constexpr KnownProperty knownProperties[] = {
            {"System.ItemNameDisplay", PropertyKind::String},
            {"System.Devices.DevObjectType", PropertyKind::Int32},
            {"System.Devices.ContainerId", PropertyKind::Guid},
            {"System.Devices.DeviceInstanceId", PropertyKind::String},
            {"System.Devices.GlyphIcon", PropertyKind::String},
            {"System.Devices.Icon", PropertyKind::String},
            {"System.Devices.InterfaceClassGuid", PropertyKind::Guid},
            {"System.Devices.InterfaceEnabled", PropertyKind::Boolean},
            {"System.Devices.IsDefault", PropertyKind::Boolean},
            {"System.Devices.PhysicalDeviceLocation", PropertyKind::String},
            {"System.Devices.Aep.AepId", PropertyKind::String},
            {"System.Devices.Aep.Bluetooth.IssueInquiry", PropertyKind::Boolean},
            {"System.Devices.Aep.Bluetooth.LastSeenTime", PropertyKind::String},
            {"System.Devices.Aep.Bluetooth.Le.IsConnectable", PropertyKind::Boolean},
            {"System.Devices.Aep.CanPair", PropertyKind::Boolean},
            {"System.Devices.Aep.Category", PropertyKind::String},
            {"System.Devices.Aep.ContainerId", PropertyKind::Guid},
            {"System.Devices.Aep.DeviceAddress", PropertyKind::String},
            {"System.Devices.Aep.IsConnected", PropertyKind::Boolean},
            {"System.Devices.Aep.IsPaired", PropertyKind::Boolean},
            {"System.Devices.Aep.IsPresent", PropertyKind::Boolean},
            {"System.Devices.Aep.Manufacturer", PropertyKind::String},
            {"System.Devices.Aep.ModelId", PropertyKind::Guid},
            {"System.Devices.Aep.ModelName", PropertyKind::String},
            {"System.Devices.Aep.ProtocolId", PropertyKind::Guid},
            {"System.Devices.Aep.SignalStrength", PropertyKind::Int32},
        };

        bool SameName(std::string_view left, std::string_view right) noexcept
        {
            return std::ranges::equal(left, right, {}, ToLower, ToLower);
        }
    } // namespace

    bool PropertyNameLess::operator()(std::string_view left, std::string_view right) const noexcept
    {
        return std::ranges::lexicographical_compare(left, right, {}, ToLower, ToLower);
    }

    bool IsTrue(Properties const& properties, std::string_view name)
    {
        auto const found = properties.find(name);
        return found != properties.end() && found->second == Value(true);
    }

    PropertyKind KindOfProperty(std::string_view name) noexcept
    {
        auto const known = std::ranges::find_if(
            knownProperties, [name](KnownProperty const& property) { return SameName(property.name, name); });
        return known == std::end(knownProperties) ? PropertyKind::Unknown : known->kind;
    }

    std::vector<std::string_view> const& PropertyNames()
    {
        static auto const names = [] {
            std::vector<std::string_view> all;
            std::ranges::transform(knownProperties, std::back_inserter(all), &KnownProperty::name);
            return all;
        }();
        return names;
    }
} // namespace simulator
