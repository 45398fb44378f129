#include "simulator/properties/Property.h"

#include <algorithm>
#include <iterator>
#include <type_traits>

namespace simulator
{
    namespace
    {
        struct KnownProperty
        {
            std::string_view name;
            PropertyKind kind;
        };

        constexpr KnownProperty knownProperties[] = {
            {"System.ItemNameDisplay", PropertyKind::String},
            {"System.DeviceInterface.Bluetooth.DeviceAddress", PropertyKind::String},
            {"System.DeviceInterface.Bluetooth.Flags", PropertyKind::UInt32},
            {"System.DeviceInterface.Bluetooth.LastConnectedTime", PropertyKind::DateTime},
            {"System.DeviceInterface.Bluetooth.Manufacturer", PropertyKind::String},
            {"System.DeviceInterface.Bluetooth.ModelNumber", PropertyKind::String},
            {"System.DeviceInterface.Bluetooth.ProductId", PropertyKind::UInt16},
            {"System.DeviceInterface.Bluetooth.ProductVersion", PropertyKind::UInt16},
            {"System.DeviceInterface.Bluetooth.ServiceGuid", PropertyKind::Guid},
            {"System.DeviceInterface.Bluetooth.VendorId", PropertyKind::UInt16},
            {"System.DeviceInterface.Bluetooth.VendorIdSource", PropertyKind::UInt8},
            {"System.Devices.BatteryLife", PropertyKind::UInt8},
            {"System.Devices.BatteryPlusCharging", PropertyKind::UInt8},
            {"System.Devices.Category", PropertyKind::StringArray},
            {"System.Devices.Connected", PropertyKind::Boolean},
            {"System.Devices.ContainerId", PropertyKind::Guid},
            {"System.Devices.DevObjectType", PropertyKind::UInt32},
            {"System.Devices.DeviceInstanceId", PropertyKind::String},
            {"System.Devices.FriendlyName", PropertyKind::String},
            {"System.Devices.GlyphIcon", PropertyKind::String},
            {"System.Devices.HardwareIds", PropertyKind::StringArray},
            {"System.Devices.Icon", PropertyKind::String},
            {"System.Devices.InterfaceClassGuid", PropertyKind::Guid},
            {"System.Devices.InterfaceEnabled", PropertyKind::Boolean},
            {"System.Devices.IsDefault", PropertyKind::Boolean},
            {"System.Devices.Manufacturer", PropertyKind::String},
            {"System.Devices.ModelName", PropertyKind::String},
            {"System.Devices.ModelNumber", PropertyKind::String},
            {"System.Devices.Paired", PropertyKind::Boolean},
            {"System.Devices.PhysicalDeviceLocation", PropertyKind::ByteArray},
            {"System.Devices.Aep.AepId", PropertyKind::String},
            {"System.Devices.Aep.Bluetooth.Cod.Major", PropertyKind::UInt16},
            {"System.Devices.Aep.Bluetooth.Cod.Minor", PropertyKind::UInt16},
            {"System.Devices.Aep.Bluetooth.Cod.Services.Audio", PropertyKind::Boolean},
            {"System.Devices.Aep.Bluetooth.Cod.Services.Capturing", PropertyKind::Boolean},
            {"System.Devices.Aep.Bluetooth.Cod.Services.Information", PropertyKind::Boolean},
            {"System.Devices.Aep.Bluetooth.Cod.Services.LimitedDiscovery", PropertyKind::Boolean},
            {"System.Devices.Aep.Bluetooth.Cod.Services.Networking", PropertyKind::Boolean},
            {"System.Devices.Aep.Bluetooth.Cod.Services.ObjectXfer", PropertyKind::Boolean},
            {"System.Devices.Aep.Bluetooth.Cod.Services.Positioning", PropertyKind::Boolean},
            {"System.Devices.Aep.Bluetooth.Cod.Services.Rendering", PropertyKind::Boolean},
            {"System.Devices.Aep.Bluetooth.Cod.Services.Telephony", PropertyKind::Boolean},
            {"System.Devices.Aep.Bluetooth.IssueInquiry", PropertyKind::Boolean},
            {"System.Devices.Aep.Bluetooth.LastSeenTime", PropertyKind::DateTime},
            {"System.Devices.Aep.Bluetooth.Le.AddressType", PropertyKind::UInt8},
            {"System.Devices.Aep.Bluetooth.Le.Appearance", PropertyKind::UInt16},
            {"System.Devices.Aep.Bluetooth.Le.Appearance.Category", PropertyKind::UInt16},
            {"System.Devices.Aep.Bluetooth.Le.Appearance.Subcategory", PropertyKind::UInt16},
            {"System.Devices.Aep.Bluetooth.Le.IsConnectable", PropertyKind::Boolean},
            {"System.Devices.Aep.CanPair", PropertyKind::Boolean},
            {"System.Devices.Aep.Category", PropertyKind::StringArray},
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
            {"System.Devices.AepContainer.CanPair", PropertyKind::Boolean},
            {"System.Devices.AepContainer.Categories", PropertyKind::StringArray},
            {"System.Devices.AepContainer.Children", PropertyKind::StringArray},
            {"System.Devices.AepContainer.ContainerId", PropertyKind::Guid},
            {"System.Devices.AepContainer.DialProtocol.InstalledApplications", PropertyKind::StringArray},
            {"System.Devices.AepContainer.IsPaired", PropertyKind::Boolean},
            {"System.Devices.AepContainer.IsPresent", PropertyKind::Boolean},
            {"System.Devices.AepContainer.Manufacturer", PropertyKind::String},
            {"System.Devices.AepContainer.ModelIds", PropertyKind::StringArray},
            {"System.Devices.AepContainer.ModelName", PropertyKind::String},
            {"System.Devices.AepContainer.ProtocolIds", PropertyKind::GuidArray},
            {"System.Devices.AepContainer.SupportedUriSchemes", PropertyKind::StringArray},
            {"System.Devices.AepContainer.SupportsAudio", PropertyKind::Boolean},
            {"System.Devices.AepContainer.SupportsCapturing", PropertyKind::Boolean},
            {"System.Devices.AepContainer.SupportsImages", PropertyKind::Boolean},
            {"System.Devices.AepContainer.SupportsInformation", PropertyKind::Boolean},
            {"System.Devices.AepContainer.SupportsLimitedDiscovery", PropertyKind::Boolean},
            {"System.Devices.AepContainer.SupportsNetworking", PropertyKind::Boolean},
            {"System.Devices.AepContainer.SupportsObjectTransfer", PropertyKind::Boolean},
            {"System.Devices.AepContainer.SupportsPositioning", PropertyKind::Boolean},
            {"System.Devices.AepContainer.SupportsRendering", PropertyKind::Boolean},
            {"System.Devices.AepContainer.SupportsTelephony", PropertyKind::Boolean},
            {"System.Devices.AepContainer.SupportsVideo", PropertyKind::Boolean},
            {"System.Devices.AepService.AepId", PropertyKind::String},
            {"System.Devices.AepService.Bluetooth.CacheMode", PropertyKind::UInt8},
            {"System.Devices.AepService.Bluetooth.ServiceGuid", PropertyKind::Guid},
            {"System.Devices.AepService.Bluetooth.TargetDevice", PropertyKind::String},
            {"System.Devices.AepService.ContainerId", PropertyKind::Guid},
            {"System.Devices.AepService.FriendlyName", PropertyKind::String},
            {"System.Devices.AepService.IoT.ServiceInterfaces", PropertyKind::StringArray},
            {"System.Devices.AepService.ParentAepIsPaired", PropertyKind::Boolean},
            {"System.Devices.AepService.ProtocolId", PropertyKind::Guid},
            {"System.Devices.AepService.ServiceClassId", PropertyKind::Guid},
            {"System.Devices.AepService.ServiceId", PropertyKind::String},
        };
    } // namespace

    DateTime DateTimeOf(std::chrono::sys_time<Ticks> time)
    {
        using namespace std::chrono;
        return {(time - sys_days(year(1601) / January / 1)).count()};
    }

    DateTime Now()
    {
        using namespace std::chrono;
        return DateTimeOf(floor<Ticks>(system_clock::now()));
    }

    std::optional<std::int64_t> AsInteger(Value const& value)
    {
        return std::visit(
            []<typename T>([[maybe_unused]] T const& held) -> std::optional<std::int64_t> {
                if constexpr (std::is_integral_v<T> && !std::is_same_v<T, bool>)
                {
                    return held;
                }
                else
                {
                    return std::nullopt;
                }
            },
            value);
    }

    bool PropertyNameLess::operator()(std::string_view left, std::string_view right) const noexcept
    {
        return std::ranges::lexicographical_compare(left, right, {}, ToLower, ToLower);
    }

    bool SamePropertyName(std::string_view left, std::string_view right) noexcept
    {
        return std::ranges::equal(left, right, {}, ToLower, ToLower);
    }

    bool IsTrue(Properties const& properties, std::string_view name)
    {
        auto const found = properties.find(name);
        return found != properties.end() && found->second == Value(true);
    }

    PropertyKind KindOfProperty(std::string_view name) noexcept
    {
        auto const known = std::ranges::find_if(
            knownProperties, [name](KnownProperty const& property) { return SamePropertyName(property.name, name); });
        return known == std::end(knownProperties) ? PropertyKind::Unknown : known->kind;
    }

    bool IsPropertyName(std::string_view name) noexcept
    {
        return std::ranges::find(knownProperties, name, &KnownProperty::name) != std::end(knownProperties);
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
