// The properties that a scenario gives its endpoints.
#include "tests/unit/ScenarioText.h"

#include <gmock/gmock.h>

#include <cstdint>

using namespace simulator;
using namespace test;
using testing::HasSubstr;

namespace
{
    std::string const cod = "System.Devices.Aep.Bluetooth.Cod.";
    std::string const appearance = "System.Devices.Aep.Bluetooth.Le.Appearance";

    Value Property(Endpoint const& endpoint, std::string_view name)
    {
        auto const found = endpoint.properties.find(name);
        return found == endpoint.properties.end() ? Value{} : found->second;
    }

    Value UInt16(int number)
    {
        return static_cast<std::uint16_t>(number);
    }

    Value ContainerOf(Endpoint const& endpoint)
    {
        auto const value = Property(endpoint, "System.Devices.Aep.ContainerId");
        EXPECT_EQ(Property(endpoint, "System.Devices.ContainerId"), value);
        return value;
    }

    struct Key
    {
        std::string toml;
        std::string property;
        Value value;
    };

    using ScenarioKey = testing::TestWithParam<Key>;

    Key const keys[] = {
        {"battery = 0", "System.Devices.BatteryLife", std::uint8_t{0}},
        {"battery = 100", "System.Devices.BatteryLife", std::uint8_t{100}},
        {"vendor-id = 0x004c", "System.DeviceInterface.Bluetooth.VendorId", UInt16(76)},
        {"product-id = 65535", "System.DeviceInterface.Bluetooth.ProductId", UInt16(65535)},
        {"category = ['Audio', 'Audio.Speaker']", "System.Devices.Aep.Category", Texts{"Audio", "Audio.Speaker"}},
        {"category = []", "System.Devices.Aep.Category", Texts{}},
        {"manufacturer = 'Zoë & Co'", "System.Devices.Aep.Manufacturer", "Zoë & Co"},
        {"model-name = 'One'", "System.Devices.Aep.ModelName", "One"},
        {"container-id = '{E0CBF06C-cd8b-4647-bb8a-263b43f0f974}'", "System.Devices.ContainerId",
         Guid{"{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}"}},
    };

    Key const named[] = {
        {"'System.DeviceInterface.Bluetooth.Flags' = 4294967295", "System.DeviceInterface.Bluetooth.Flags",
         std::uint32_t{4294967295}},
        {"'System.DeviceInterface.Bluetooth.VendorIdSource' = 255", "System.DeviceInterface.Bluetooth.VendorIdSource",
         std::uint8_t{255}},
        {"'System.Devices.PhysicalDeviceLocation' = [0, 255]", "System.Devices.PhysicalDeviceLocation", Bytes{0, 255}},
        {"'System.Devices.HardwareIds' = ['a', 'b']", "System.Devices.HardwareIds", Texts{"a", "b"}},
        {"'System.Devices.AepContainer.ProtocolIds' = ['{BB7BB05E-5972-42b5-94fc-76eaa7084d49}']",
         "System.Devices.AepContainer.ProtocolIds", Guids{{"{bb7bb05e-5972-42b5-94fc-76eaa7084d49}"}}},
        {"'System.DeviceInterface.Bluetooth.LastConnectedTime' = 1970-01-01T00:00:00Z",
         "System.DeviceInterface.Bluetooth.LastConnectedTime", DateTime{116'444'736'000'000'000}},
        {"'System.DeviceInterface.Bluetooth.LastConnectedTime' = 1970-01-01T00:00:00.0000012",
         "System.DeviceInterface.Bluetooth.LastConnectedTime", DateTime{116'444'736'000'000'012}},
        {"'System.DeviceInterface.Bluetooth.LastConnectedTime' = 1970-01-01T01:30:00+01:30",
         "System.DeviceInterface.Bluetooth.LastConnectedTime", DateTime{116'444'736'000'000'000}},
        {"'System.Devices.ContainerId' = '{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}'", "System.Devices.ContainerId",
         Guid{"{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}"}},
    };

    struct Faulty
    {
        std::string toml;
        std::string reason;
    };

    using ScenarioPropertyFault = testing::TestWithParam<Faulty>;

    Faulty const faults[] = {
        {"battery = 101", "'battery': 101 where a number from 0 to 100 is expected"},
        {"battery = -1", "'battery': -1 where a number from 0 to 100"},
        {"batery = 1", "'batery': unknown key; did you mean 'battery'?"},
        {"class-of-device = 0x1000000", "'class-of-device': 16777216 where a number from 0 to 16777215 is expected"},
        {"class-of-devices = 1", "unknown key; did you mean 'class-of-device'?"},
        {"class-of-device = '0x240404'", "'class-of-device': '0x240404' where a number"},
        {"protocols = ['le']\nappearance = 65536", "'appearance': 65536 where a number from 0 to 65535 is expected"},
        {"protocols = ['le']\napearance = 1", "unknown key; did you mean 'appearance'?"},
        {"appearance = 64", "'appearance': the device's 'protocols' do not list 'le'"},
        {"protocols = ['le']\nclass-of-device = 1",
         "'class-of-device': the device's 'protocols' do not list 'classic'"},
        {"vendor-id = 65536", "'vendor-id': 65536 where a whole number from 0 to 65535 is expected"},
        {"product-id = -1", "'product-id': -1 where a whole number from 0 to 65535 is expected"},
        {"vendorid = 1", "unknown key; did you mean 'vendor-id'?"},
        {"container-id = 'x'", "'container-id': 'x' where a text like '{e0cb"},
        {"category = 'Audio'", "'category': 'Audio' where a list of texts in quotes is expected"},
        {"category = ['Audio', 1]", "'category': a list where a list of texts in quotes is expected"},
        {"manufacturer = 1", "'manufacturer': 1 where a text in quotes is expected"},
        {"[device.classic]\nmodel = 'x'", "'model': unknown key"},
        {"[device.properties]\n'System.DeviceInterface.Bluetooth.Flags' = -1",
         "-1 where a whole number from 0 to 4294967295 is expected"},
        {"[device.properties]\n'System.Devices.BatteryLife' = 256",
         "256 where a whole number from 0 to 255 is expected"},
        {"[device.properties]\n'System.Devices.PhysicalDeviceLocation' = [256]",
         "a list where a list of whole numbers from 0 to 255 is expected"},
        {"[device.properties]\n'System.Devices.AepContainer.ProtocolIds' = ['x']", "a list where a list of texts like"},
        {"[device.properties]\n'System.DeviceInterface.Bluetooth.LastConnectedTime' = 2024-05-17",
         "a date or time where a date and time like 2024-05-17T08:30:00Z is expected"},
        {"[device.properties]\n'System.DeviceInterface.Bluetooth.LastConnectedTime' = 5", "5 where a date and time"},
    };
} // namespace

TEST_P(ScenarioKey, SetsAProperty)
{
    EXPECT_EQ(Property(OnlyEndpoint(GetParam().toml), GetParam().property), GetParam().value) << GetParam().toml;
    auto const own = OnlyEndpoint("manufacturer = 'other'\n[device.classic]\n" + GetParam().toml);
    EXPECT_EQ(Property(own, GetParam().property), GetParam().value) << GetParam().toml;
}

INSTANTIATE_TEST_SUITE_P(Friendly, ScenarioKey, testing::ValuesIn(keys));

class ScenarioNamedProperty : public ScenarioKey
{
};

TEST_P(ScenarioNamedProperty, TakesAValueOfItsType)
{
    EXPECT_EQ(Property(OnlyEndpoint("[device.properties]\n" + GetParam().toml), GetParam().property), GetParam().value)
        << GetParam().toml;
}

INSTANTIATE_TEST_SUITE_P(Each, ScenarioNamedProperty, testing::ValuesIn(named));

TEST_P(ScenarioPropertyFault, IsTold)
{
    EXPECT_THAT(FaultsOf(Device(GetParam().toml)), HasSubstr(GetParam().reason));
    EXPECT_THAT(FaultsOf(Device(GetParam().toml)), testing::Not(HasSubstr("\n")));
}

INSTANTIATE_TEST_SUITE_P(Each, ScenarioPropertyFault, testing::ValuesIn(faults));

TEST(ScenarioProperties, AreNullUnlessGiven)
{
    auto const endpoint = OnlyEndpoint("");
    for (auto const* const name : {"System.Devices.Aep.Bluetooth.Cod.Major", "System.Devices.BatteryLife",
                                   "System.Devices.Aep.Bluetooth.Le.Appearance", "System.Devices.Aep.Category",
                                   "System.Devices.Aep.Bluetooth.LastSeenTime"})
    {
        EXPECT_EQ(Property(endpoint, name), Value{}) << name;
    }
}

TEST(ScenarioProperties, ThatAreNullTakeNoRoom)
{
    for (auto const& [name, value] : OnlyEndpoint("").properties)
    {
        EXPECT_NE(value, Value{}) << name;
    }
}

TEST(ScenarioProperties, ByNameWinOverKeys)
{
    auto const endpoint = OnlyEndpoint("battery = 5\n[device.properties]\n'System.Devices.BatteryLife' = 6\n");
    EXPECT_EQ(Property(endpoint, "System.Devices.BatteryLife"), Value{std::uint8_t{6}});
}

TEST(ClassOfDevice, IsTakenApart)
{
    auto const speaker = OnlyEndpoint("class-of-device = 0x240414\n");
    EXPECT_EQ(Property(speaker, cod + "Major"), UInt16(4));
    EXPECT_EQ(Property(speaker, cod + "Minor"), UInt16(5));
    EXPECT_EQ(Property(speaker, cod + "Services.Audio"), Value{true});
    EXPECT_EQ(Property(speaker, cod + "Services.Rendering"), Value{true});
    EXPECT_EQ(Property(speaker, cod + "Services.Telephony"), Value{false});
}

TEST(ClassOfDevice, HasABitForEachService)
{
    constexpr std::pair<std::string_view, int> services[] = {
        {"LimitedDiscovery", 0x002000}, {"Positioning", 0x010000}, {"Networking", 0x020000}, {"Rendering", 0x040000},
        {"Capturing", 0x080000},        {"ObjectXfer", 0x100000},  {"Audio", 0x200000},      {"Telephony", 0x400000},
        {"Information", 0x800000},
    };
    for (auto const& [only, bit] : services)
    {
        auto const endpoint = OnlyEndpoint("class-of-device = " + std::to_string(bit));
        EXPECT_EQ(Property(endpoint, cod + "Major"), UInt16(0));
        for (auto const& [service, other] : services)
        {
            EXPECT_EQ(Property(endpoint, cod + "Services." + std::string(service)), Value{service == only}) << service;
        }
    }
    auto const all = OnlyEndpoint("class-of-device = 0xffffff");
    EXPECT_EQ(Property(all, cod + "Major"), UInt16(31));
    EXPECT_EQ(Property(all, cod + "Minor"), UInt16(63));
}

TEST(Appearance, IsTakenApart)
{
    auto const mouse = OnlyEndpoint("protocols = ['le']\nappearance = 962\n");
    EXPECT_EQ(Property(mouse, appearance), UInt16(962));
    EXPECT_EQ(Property(mouse, appearance + ".Category"), UInt16(15));
    EXPECT_EQ(Property(mouse, appearance + ".Subcategory"), UInt16(2));
    auto const most = OnlyEndpoint("protocols = ['le']\nappearance = 0xffff\n");
    EXPECT_EQ(Property(most, appearance + ".Category"), UInt16(1023));
    EXPECT_EQ(Property(most, appearance + ".Subcategory"), UInt16(63));
}

TEST(DualModeDevice, KeepsWhatIsOfOneProtocolApart)
{
    auto const endpoints = Parse(Device("protocols = ['classic', 'le']\nclass-of-device = 0x240404\nappearance = 64\n"
                                        "[device.properties]\n'System.Devices.Aep.Bluetooth.Le.IsConnectable' = true\n"
                                        "'System.Devices.Aep.Bluetooth.Cod.Minor' = 9"))
                               .endpoints;
    ASSERT_EQ(endpoints.size(), 2u);
    EXPECT_EQ(Property(endpoints[0], cod + "Major"), UInt16(4));
    EXPECT_EQ(Property(endpoints[0], cod + "Minor"), UInt16(9));
    EXPECT_EQ(Property(endpoints[0], appearance), Value{});
    EXPECT_EQ(Property(endpoints[0], "System.Devices.Aep.Bluetooth.Le.IsConnectable"), Value{});
    EXPECT_EQ(Property(endpoints[1], cod + "Major"), Value{});
    EXPECT_EQ(Property(endpoints[1], cod + "Services.Audio"), Value{});
    EXPECT_EQ(Property(endpoints[1], appearance), UInt16(64));
    EXPECT_EQ(Property(endpoints[1], "System.Devices.Aep.Bluetooth.Le.IsConnectable"), Value{true});
}

TEST(DualModeDevice, MayHaveOneProtocolsPropertiesInTheOther)
{
    auto const endpoints =
        Parse(Device("protocols = ['classic', 'le']\n[device.le]\nclass-of-device = 0x240404\nbattery = 7\n"))
            .endpoints;
    EXPECT_EQ(Property(endpoints.at(1), cod + "Major"), UInt16(4));
    EXPECT_EQ(Property(endpoints.at(0), cod + "Major"), Value{});
    EXPECT_EQ(Property(endpoints.at(0), "System.Devices.BatteryLife"), Value{});
}

TEST(Container, FollowsFromTheAddress)
{
    auto const one = Parse("[[device]]\naddress = 'A4:C1:38:5E:22:0F'\n[[device]]\naddress = 'a4:c1:38:5e:22:10'\n");
    EXPECT_EQ(ContainerOf(one.endpoints[0]), Value{Guid{"{6f9d2e3b-41c7-5a08-9b6e-a4c1385e220f}"}});
    EXPECT_NE(ContainerOf(one.endpoints[0]), ContainerOf(one.endpoints[1]));
}

TEST(Container, HoldsBothSidesOfADevice)
{
    for (auto const* const toml :
         {"[[device]]\naddress = 'a4:c1:38:5e:22:0f'\nprotocols = ['classic', 'le']\n[device.le]\n"
          "address = 'c1:9b:05:e4:77:2a'\n",
          "[[device]]\nprotocols = ['classic', 'le']\n[device.classic]\naddress = 'a4:c1:38:5e:22:0f'\n[device.le]\n"
          "address = 'c1:9b:05:e4:77:2a'\n"})
    {
        auto const endpoints = Parse(toml).endpoints;
        ASSERT_EQ(endpoints.size(), 2u);
        EXPECT_EQ(ContainerOf(endpoints[0]), Value{Guid{"{6f9d2e3b-41c7-5a08-9b6e-a4c1385e220f}"}}) << toml;
        EXPECT_EQ(ContainerOf(endpoints[0]), ContainerOf(endpoints[1])) << toml;
    }
}

TEST(Container, MayBeGiven)
{
    Value const given = Guid{"{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}"};
    auto const id = "'{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}'\n";
    auto const endpoints = Parse(Device(std::string("protocols = ['classic', 'le']\ncontainer-id = ") + id)).endpoints;
    EXPECT_EQ(ContainerOf(endpoints.at(0)), given);
    EXPECT_EQ(ContainerOf(endpoints.at(1)), given);
    auto const apart =
        Parse(Device(std::string("protocols = ['classic', 'le']\n[device.le]\ncontainer-id = ") + id)).endpoints;
    EXPECT_NE(ContainerOf(apart.at(0)), given);
    EXPECT_EQ(ContainerOf(apart.at(1)), given);
}
