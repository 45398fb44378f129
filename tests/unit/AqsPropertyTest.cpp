// What the query language makes of each type of property.
#include "tests/unit/AqsDevices.h"

#include <gtest/gtest.h>

#include <cstdint>

using namespace simulator;
using namespace test;

namespace
{
    Properties Watch()
    {
        return {
            {"System.Devices.BatteryLife", std::uint8_t{200}},
            {"System.Devices.Aep.Bluetooth.Cod.Major", std::uint16_t{7}},
            {"System.DeviceInterface.Bluetooth.VendorId", std::uint16_t{65535}},
            {"System.DeviceInterface.Bluetooth.Flags", std::uint32_t{4294967295}},
            {"System.Devices.Aep.Category", Texts{"Wearable", "Audio.Headset"}},
            {"System.Devices.Category", Texts{}},
            {"System.Devices.AepContainer.ProtocolIds", Guids{{std::string(classicId)}, {std::string(leId)}}},
            {"System.Devices.Aep.Bluetooth.LastSeenTime", DateTime{1}},
            {"System.Devices.PhysicalDeviceLocation", Bytes{1, 2}},
        };
    }

    struct Case
    {
        std::string_view query;
        bool selects;
    };

    using AqsProperty = testing::TestWithParam<Case>;

    constexpr Case integers[] = {
        {"System.Devices.BatteryLife:=200", true},
        {"System.Devices.BatteryLife:>=+200", true},
        {"System.Devices.BatteryLife:<0", false},
        {"System.Devices.BatteryLife:<>200", false},
        {"System.Devices.Aep.Bluetooth.Cod.Major:=7", true},
        {"System.Devices.Aep.Bluetooth.Cod.Major:>6", true},
        {"System.Devices.Aep.Bluetooth.Cod.Major:<7", false},
        {"System.DeviceInterface.Bluetooth.VendorId:=65535", true},
        {"System.DeviceInterface.Bluetooth.VendorId:<65535", false},
        {"System.DeviceInterface.Bluetooth.Flags:=4294967295", true},
        {"System.DeviceInterface.Bluetooth.Flags:>2147483647", true},
        {"System.DeviceInterface.Bluetooth.Flags:<=0", false},
    };

    constexpr Case lists[] = {
        {"System.Devices.Aep.Category:=Wearable", true},
        {"System.Devices.Aep.Category:Audio.Headset", true},
        {"System.Devices.Aep.Category:=wearable", false},
        {"System.Devices.Aep.Category:=Audio", false},
        {"System.Devices.Aep.Category:<>Wearable", false},
        {"System.Devices.Aep.Category:<>Audio", true},
        {"System.Devices.Aep.Category:~~HEAD", true},
        {"System.Devices.Aep.Category:~<Audio", true},
        {"System.Devices.Aep.Category:~<Head", false},
        {"System.Devices.Aep.Category:~>Headset", true},
        {"System.Devices.Aep.Category:~!head", false},
        {"System.Devices.Aep.Category:~!phone", true},
        {"System.Devices.Aep.Category:=[]", false},
        {"System.Devices.Category:=Wearable", false},
        {"System.Devices.Category:~!Wearable", true},
        {"System.Devices.Category:=[]", false}, // it has one, of no elements
        {"System.Devices.AepContainer.ProtocolIds:={bb7bb05e-5972-42b5-94fc-76eaa7084d49}", true},
        {"System.Devices.AepContainer.ProtocolIds:={bb7bb05e-5972-42b5-94fc-76eaa7084d40}", false},
        {"System.Devices.AepContainer.ProtocolIds:<>{bb7bb05e-5972-42b5-94fc-76eaa7084d49}", false},
        {"System.Devices.AepContainer.ProtocolIds:>{00000000-5972-42b5-94fc-76eaa7084d49}", false},
    };

    constexpr Case nulls[] = {
        {"System.Devices.Aep.Bluetooth.LastSeenTime:=[]", false},
        {"System.Devices.Aep.Bluetooth.LastSeenTime:<>[]", true},
        {"System.DeviceInterface.Bluetooth.LastConnectedTime:=[]", true},
        {"System.Devices.PhysicalDeviceLocation:=[]", false},
        {"System.Devices.BatteryPlusCharging:=0", false},
        {"System.Devices.BatteryPlusCharging:<1", false},
        {"System.Devices.BatteryPlusCharging:=[]", true},
        {"System.Devices.HardwareIds:=x", false},
        {"System.Devices.HardwareIds:~!x", false},
        {"System.Devices.HardwareIds:=[]", true},
    };

    using AqsPropertyFault = testing::TestWithParam<std::string_view>;
} // namespace

TEST_P(AqsProperty, ComparesWithTheWatch)
{
    EXPECT_EQ(Selects(GetParam().query, Watch()), GetParam().selects);
}

INSTANTIATE_TEST_SUITE_P(Integers, AqsProperty, testing::ValuesIn(integers));

INSTANTIATE_TEST_SUITE_P(Lists, AqsProperty, testing::ValuesIn(lists));

INSTANTIATE_TEST_SUITE_P(Nulls, AqsProperty, testing::ValuesIn(nulls));

TEST_P(AqsPropertyFault, IsRefused)
{
    EXPECT_THROW(Query::Parse(GetParam()), QueryError);
}

INSTANTIATE_TEST_SUITE_P(Range, AqsPropertyFault,
                         testing::Values("System.Devices.BatteryLife:=256", "System.Devices.BatteryLife:=-1",
                                         "System.Devices.Aep.Bluetooth.Cod.Major:=65536",
                                         "System.Devices.Aep.Bluetooth.Cod.Major:>-1",
                                         "System.DeviceInterface.Bluetooth.Flags:=4294967296",
                                         "System.DeviceInterface.Bluetooth.Flags:=-1",
                                         "System.Devices.DevObjectType:=-5", "System.Devices.BatteryLife:=\"5\""));

INSTANTIATE_TEST_SUITE_P(Types, AqsPropertyFault,
                         testing::Values("System.Devices.Aep.Category:=5", "System.Devices.Aep.Category:<Wearable",
                                         "System.Devices.Aep.Category:~~[]",
                                         "System.Devices.AepContainer.ProtocolIds:=Bluetooth",
                                         "System.Devices.Aep.Bluetooth.LastSeenTime:=5",
                                         "System.Devices.Aep.Bluetooth.LastSeenTime:=\"2024-05-17T08:30:00Z\"",
                                         "System.Devices.Aep.Bluetooth.LastSeenTime:>[]",
                                         "System.Devices.PhysicalDeviceLocation:=1"));
