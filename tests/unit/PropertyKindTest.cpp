// Which properties there are, and of what type.
#include "simulator/properties/Property.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <string>
#include <vector>

using namespace simulator;
using testing::UnorderedElementsAreArray;

namespace
{
    struct OfKind
    {
        PropertyKind kind;
        std::vector<std::string_view> names;
    };

    using PropertyKinds = testing::TestWithParam<OfKind>;

    OfKind const kinds[] = {
        {PropertyKind::Boolean,
         {"System.Devices.Connected",
          "System.Devices.InterfaceEnabled",
          "System.Devices.IsDefault",
          "System.Devices.Paired",
          "System.Devices.Aep.Bluetooth.Cod.Services.Audio",
          "System.Devices.Aep.Bluetooth.Cod.Services.Capturing",
          "System.Devices.Aep.Bluetooth.Cod.Services.Information",
          "System.Devices.Aep.Bluetooth.Cod.Services.LimitedDiscovery",
          "System.Devices.Aep.Bluetooth.Cod.Services.Networking",
          "System.Devices.Aep.Bluetooth.Cod.Services.ObjectXfer",
          "System.Devices.Aep.Bluetooth.Cod.Services.Positioning",
          "System.Devices.Aep.Bluetooth.Cod.Services.Rendering",
          "System.Devices.Aep.Bluetooth.Cod.Services.Telephony",
          "System.Devices.Aep.Bluetooth.IssueInquiry",
          "System.Devices.Aep.Bluetooth.Le.IsConnectable",
          "System.Devices.Aep.CanPair",
          "System.Devices.Aep.IsConnected",
          "System.Devices.Aep.IsPaired",
          "System.Devices.Aep.IsPresent",
          "System.Devices.AepContainer.CanPair",
          "System.Devices.AepContainer.IsPaired",
          "System.Devices.AepContainer.IsPresent",
          "System.Devices.AepContainer.SupportsAudio",
          "System.Devices.AepContainer.SupportsCapturing",
          "System.Devices.AepContainer.SupportsImages",
          "System.Devices.AepContainer.SupportsInformation",
          "System.Devices.AepContainer.SupportsLimitedDiscovery",
          "System.Devices.AepContainer.SupportsNetworking",
          "System.Devices.AepContainer.SupportsObjectTransfer",
          "System.Devices.AepContainer.SupportsPositioning",
          "System.Devices.AepContainer.SupportsRendering",
          "System.Devices.AepContainer.SupportsTelephony",
          "System.Devices.AepContainer.SupportsVideo",
          "System.Devices.AepService.ParentAepIsPaired"}},
        {PropertyKind::UInt8,
         {"System.DeviceInterface.Bluetooth.VendorIdSource", "System.Devices.BatteryLife",
          "System.Devices.BatteryPlusCharging", "System.Devices.Aep.Bluetooth.Le.AddressType",
          "System.Devices.AepService.Bluetooth.CacheMode"}},
        {PropertyKind::UInt16,
         {"System.DeviceInterface.Bluetooth.ProductId", "System.DeviceInterface.Bluetooth.ProductVersion",
          "System.DeviceInterface.Bluetooth.VendorId", "System.Devices.Aep.Bluetooth.Cod.Major",
          "System.Devices.Aep.Bluetooth.Cod.Minor", "System.Devices.Aep.Bluetooth.Le.Appearance",
          "System.Devices.Aep.Bluetooth.Le.Appearance.Category",
          "System.Devices.Aep.Bluetooth.Le.Appearance.Subcategory"}},
        {PropertyKind::Int32, {"System.Devices.Aep.SignalStrength"}},
        {PropertyKind::UInt32, {"System.DeviceInterface.Bluetooth.Flags", "System.Devices.DevObjectType"}},
        {PropertyKind::String,
         {"System.ItemNameDisplay",
          "System.DeviceInterface.Bluetooth.DeviceAddress",
          "System.DeviceInterface.Bluetooth.Manufacturer",
          "System.DeviceInterface.Bluetooth.ModelNumber",
          "System.Devices.DeviceInstanceId",
          "System.Devices.FriendlyName",
          "System.Devices.GlyphIcon",
          "System.Devices.Icon",
          "System.Devices.Manufacturer",
          "System.Devices.ModelName",
          "System.Devices.ModelNumber",
          "System.Devices.Aep.AepId",
          "System.Devices.Aep.DeviceAddress",
          "System.Devices.Aep.Manufacturer",
          "System.Devices.Aep.ModelName",
          "System.Devices.AepContainer.Manufacturer",
          "System.Devices.AepContainer.ModelName",
          "System.Devices.AepService.AepId",
          "System.Devices.AepService.Bluetooth.TargetDevice",
          "System.Devices.AepService.FriendlyName",
          "System.Devices.AepService.ServiceId"}},
        {PropertyKind::Guid,
         {"System.DeviceInterface.Bluetooth.ServiceGuid", "System.Devices.ContainerId",
          "System.Devices.InterfaceClassGuid", "System.Devices.Aep.ContainerId", "System.Devices.Aep.ModelId",
          "System.Devices.Aep.ProtocolId", "System.Devices.AepContainer.ContainerId",
          "System.Devices.AepService.Bluetooth.ServiceGuid", "System.Devices.AepService.ContainerId",
          "System.Devices.AepService.ProtocolId", "System.Devices.AepService.ServiceClassId"}},
        {PropertyKind::DateTime,
         {"System.DeviceInterface.Bluetooth.LastConnectedTime", "System.Devices.Aep.Bluetooth.LastSeenTime"}},
        {PropertyKind::StringArray,
         {"System.Devices.Category", "System.Devices.HardwareIds", "System.Devices.Aep.Category",
          "System.Devices.AepContainer.Categories", "System.Devices.AepContainer.Children",
          "System.Devices.AepContainer.DialProtocol.InstalledApplications", "System.Devices.AepContainer.ModelIds",
          "System.Devices.AepContainer.SupportedUriSchemes", "System.Devices.AepService.IoT.ServiceInterfaces"}},
        {PropertyKind::GuidArray, {"System.Devices.AepContainer.ProtocolIds"}},
        {PropertyKind::ByteArray, {"System.Devices.PhysicalDeviceLocation"}},
    };
} // namespace

TEST_P(PropertyKinds, AreThoseOfTheseProperties)
{
    std::vector<std::string_view> names;
    std::ranges::copy_if(PropertyNames(), std::back_inserter(names),
                         [](std::string_view name) { return KindOfProperty(name) == GetParam().kind; });
    EXPECT_THAT(names, UnorderedElementsAreArray(GetParam().names));
}

INSTANTIATE_TEST_SUITE_P(Each, PropertyKinds, testing::ValuesIn(kinds));

TEST(PropertyValues, StandInTheOrderOfTheirValues)
{
    auto const index = [](PropertyKind kind) { return static_cast<std::size_t>(kind); };
    EXPECT_EQ(Value(std::uint8_t{1}).index(), index(PropertyKind::UInt8));
    EXPECT_EQ(Value(std::uint32_t{1}).index(), index(PropertyKind::UInt32));
    EXPECT_EQ(Value(DateTime{1}).index(), index(PropertyKind::DateTime));
    EXPECT_EQ(Value(Bytes{1}).index(), index(PropertyKind::ByteArray));
    EXPECT_EQ(std::variant_size_v<Value>, index(PropertyKind::ByteArray) + 1);
}

TEST(PropertyNames, HaveALetterCaseOfTheirOwn)
{
    EXPECT_TRUE(IsPropertyName("System.Devices.Aep.CanPair"));
    EXPECT_FALSE(IsPropertyName("System.Devices.Aep.canPair"));
    EXPECT_FALSE(IsPropertyName("System.Devices.Aep"));
    EXPECT_FALSE(IsPropertyName(""));
    EXPECT_EQ(KindOfProperty("system.devices.aep.CANPAIR"), PropertyKind::Boolean);
    EXPECT_EQ(KindOfProperty("System.Devices.Aep"), PropertyKind::Unknown);
}

TEST(DateTimes, CountFromTheYear1601)
{
    using namespace std::chrono;
    EXPECT_EQ(DateTimeOf(sys_days(year(1601) / 1 / 1)).ticks, 0);
    EXPECT_EQ(DateTimeOf(sys_days(year(1970) / 1 / 1)).ticks, 116'444'736'000'000'000);
    EXPECT_EQ(DateTimeOf(sys_days(year(1601) / 1 / 2) + Ticks(3)).ticks, 864'000'000'003);
    auto const before = Now();
    EXPECT_GT(before, DateTimeOf(sys_days(year(2024) / 1 / 1)));
    EXPECT_LE(before, Now());
}
