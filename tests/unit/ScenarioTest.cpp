// The scenario format of the simulated platform: what a text means.
#include "tests/unit/ScenarioText.h"

#include <tuple>

using namespace simulator;
using namespace test;

namespace
{
    Value Property(Endpoint const& endpoint, std::string_view name)
    {
        auto const found = endpoint.properties.find(name);
        return found == endpoint.properties.end() ? Value{} : found->second;
    }
} // namespace

TEST(Scenario, EmptyTextIsAnEmptyNeighbourhood)
{
    auto const scenario = Parse("");
    EXPECT_EQ(scenario.enumerationCompletesAtMs, 300);
    EXPECT_TRUE(scenario.appearAfterCompletion);
    EXPECT_EQ(scenario.eventThreads, 1);
    EXPECT_TRUE(scenario.endpoints.empty());
}

TEST(Scenario, WatcherKeysAreRead)
{
    auto const scenario = Parse("enumeration-completes-ms = \"never\"\nappear-after-completion = false\n");
    EXPECT_EQ(scenario.enumerationCompletesAtMs, never);
    EXPECT_FALSE(scenario.appearAfterCompletion);
    EXPECT_EQ(Parse("enumeration-completes-ms = 0").enumerationCompletesAtMs, 0);
    EXPECT_EQ(Parse("event-threads = 4").eventThreads, 4);
    EXPECT_EQ(Parse("event-threads = 64").eventThreads, 64);
}

TEST(Scenario, AddressAloneMakesADevice)
{
    auto const endpoint = OnlyEndpoint("");
    EXPECT_EQ(endpoint.id, "Bluetooth#Bluetooth00:1a:7d:da:71:13-a4:c1:38:5e:22:0f");
    EXPECT_EQ(endpoint.protocol, Protocol::Classic);
    EXPECT_EQ(endpoint.adapter, "00:1a:7d:da:71:13");
    EXPECT_EQ(endpoint.address, "a4:c1:38:5e:22:0f");
    EXPECT_EQ(endpoint.appearsAtMs, 0);
    EXPECT_EQ(endpoint.leavesAtMs, never);
    EXPECT_EQ(endpoint.repeatsAtMs, never);
    EXPECT_FALSE(endpoint.unfiltered);
    EXPECT_TRUE(endpoint.changes.empty());
    EXPECT_EQ(endpoint.pairing.kind, 1u);
    EXPECT_EQ(endpoint.pairing.status, 0);
    EXPECT_EQ(endpoint.pairing.durationMs, 100);
    EXPECT_EQ(endpoint.pairing.pin, "");
    EXPECT_EQ(endpoint.pairing.maxProtection, 3);
    EXPECT_EQ(endpoint.unpairing.status, 0);
    EXPECT_EQ(endpoint.unpairing.durationMs, 50);
    EXPECT_EQ(endpoint.unpairing.effect, UnpairEffect::Updated);
}

TEST(Scenario, PropertiesAreComplete)
{
    auto const endpoint = OnlyEndpoint("name = \"Kitchen Speaker\"\n");
    EXPECT_EQ(Property(endpoint, "System.ItemNameDisplay"), Value{"Kitchen Speaker"});
    EXPECT_EQ(Property(endpoint, "System.Devices.Aep.AepId"), Value{endpoint.id});
    EXPECT_EQ(Property(endpoint, "System.Devices.Aep.DeviceAddress"), Value{"a4:c1:38:5e:22:0f"});
    EXPECT_EQ(Property(endpoint, "System.Devices.Aep.ProtocolId"),
              Value{Guid{"{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}"}});
    EXPECT_EQ(Property(endpoint, "System.Devices.Aep.CanPair"), Value{true});
    EXPECT_EQ(Property(endpoint, "System.Devices.Aep.IsPaired"), Value{false});
    EXPECT_EQ(Property(endpoint, "System.Devices.Aep.IsConnected"), Value{false});
    EXPECT_EQ(Property(endpoint, "System.Devices.Aep.IsPresent"), Value{true});
    EXPECT_EQ(Property(endpoint, "System.Devices.Aep.SignalStrength"), Value{-60});
    EXPECT_EQ(Property(endpoint, "System.Devices.DevObjectType"), Value{std::uint32_t{5}});
    for (auto const* const name : {"DeviceInstanceId", "Icon", "GlyphIcon", "InterfaceEnabled", "IsDefault",
                                   "PhysicalDeviceLocation", "Aep.ModelName", "Aep.Manufacturer", "Aep.ModelId"})
    {
        EXPECT_EQ(Property(endpoint, "System.Devices." + std::string(name)), Value{}) << name;
    }
}

TEST(Scenario, NamelessDeviceHasNoName)
{
    EXPECT_EQ(Property(OnlyEndpoint(""), "System.ItemNameDisplay"), Value{});
    EXPECT_EQ(Property(OnlyEndpoint("name = \"\"\n"), "System.ItemNameDisplay"), Value{""});
}

TEST(Scenario, NamesAreNeverInterpreted)
{
    for (auto const* const name : {"Paired", "never", "le", "Zoë’s Händy 📱", "true"})
    {
        auto const endpoint = OnlyEndpoint("name = \"" + std::string(name) + "\"\n");
        EXPECT_EQ(Property(endpoint, "System.ItemNameDisplay"), Value{name});
        EXPECT_EQ(Property(endpoint, "System.Devices.Aep.IsPaired"), Value{false});
        EXPECT_EQ(endpoint.protocol, Protocol::Classic);
        EXPECT_EQ(endpoint.appearsAtMs, 0);
    }
}

TEST(Scenario, AddressesAreNormalised)
{
    auto const scenario = Parse("adapter = \"00:1A:7D:DA:71:14\"\n[[device]]\naddress = \"A4:C1:38:5E:22:0F\"\n");
    EXPECT_EQ(scenario.endpoints.at(0).id, "Bluetooth#Bluetooth00:1a:7d:da:71:14-a4:c1:38:5e:22:0f");
}

TEST(Scenario, DualModeDeviceIsTwoEndpoints)
{
    auto const endpoints =
        Parse(Device("name = \"Both\"\nprotocols = [\"le\", \"classic\"]\nappears-ms = 7\n")).endpoints;
    ASSERT_EQ(endpoints.size(), 2u);
    EXPECT_EQ(endpoints[0].id, "Bluetooth#Bluetooth00:1a:7d:da:71:13-a4:c1:38:5e:22:0f");
    EXPECT_EQ(endpoints[0].protocol, Protocol::Classic);
    EXPECT_EQ(endpoints[1].id, "BluetoothLE#BluetoothLE00:1a:7d:da:71:13-a4:c1:38:5e:22:0f");
    EXPECT_EQ(endpoints[1].protocol, Protocol::Le);
    EXPECT_EQ(Property(endpoints[1], "System.Devices.Aep.ProtocolId"),
              Value{Guid{"{bb7bb05e-5972-42b5-94fc-76eaa7084d49}"}});
    for (auto const& endpoint : endpoints)
    {
        EXPECT_EQ(endpoint.appearsAtMs, 7);
        EXPECT_EQ(Property(endpoint, "System.ItemNameDisplay"), Value{"Both"});
        EXPECT_EQ(Property(endpoint, "System.Devices.Aep.AepId"), Value{endpoint.id});
    }
}

TEST(Scenario, ProtocolTableOverridesTheDevice)
{
    auto const endpoints = Parse(Device(R"(
name = "Both"
protocols = ["classic", "le"]
can-pair = false
[device.pairing]
kind = "DisplayPin"
duration-ms = 5
[[device.change]]
at-ms = 9
property = "System.ItemNameDisplay"
value = "Later"
[device.le]
address = "c1:9b:05:e4:77:2a"
name = "LE half"
can-pair = true
is-paired = true
appears-ms = 20
leaves-ms = 30
repeats-ms = 25
unfiltered = true
[device.le.pairing]
status = "Failed"
[device.le.unpairing]
effect = "Removed"
[device.le.properties]
"System.Devices.Aep.SignalStrength" = -40
[[device.le.change]]
at-ms = 3
property = "System.Devices.Aep.IsPresent"
unset = true
)"))
                               .endpoints;
    ASSERT_EQ(endpoints.size(), 2u);
    auto const& [classic, le] = std::tie(endpoints[0], endpoints[1]);

    EXPECT_EQ(classic.address, "a4:c1:38:5e:22:0f");
    EXPECT_EQ(Property(classic, "System.ItemNameDisplay"), Value{"Both"});
    EXPECT_EQ(Property(classic, "System.Devices.Aep.CanPair"), Value{false});
    EXPECT_EQ(Property(classic, "System.Devices.Aep.IsPaired"), Value{false});
    EXPECT_EQ(Property(classic, "System.Devices.Aep.SignalStrength"), Value{-60});
    EXPECT_EQ(classic.appearsAtMs, 0);
    EXPECT_EQ(classic.leavesAtMs, never);
    EXPECT_EQ(classic.repeatsAtMs, never);
    EXPECT_FALSE(classic.unfiltered);
    EXPECT_EQ(classic.pairing.kind, 2u);
    EXPECT_EQ(classic.pairing.status, 0);
    EXPECT_EQ(classic.unpairing.effect, UnpairEffect::Updated);
    EXPECT_EQ(classic.changes.size(), 1u);

    EXPECT_EQ(le.id, "BluetoothLE#BluetoothLE00:1a:7d:da:71:13-c1:9b:05:e4:77:2a");
    EXPECT_EQ(Property(le, "System.ItemNameDisplay"), Value{"LE half"});
    EXPECT_EQ(Property(le, "System.Devices.Aep.CanPair"), Value{true});
    EXPECT_EQ(Property(le, "System.Devices.Aep.IsPaired"), Value{true});
    EXPECT_EQ(Property(le, "System.Devices.Aep.SignalStrength"), Value{-40});
    EXPECT_EQ(le.appearsAtMs, 20);
    EXPECT_EQ(le.leavesAtMs, 30);
    EXPECT_EQ(le.repeatsAtMs, 25);
    EXPECT_TRUE(le.unfiltered);
    EXPECT_EQ(le.pairing.kind, 2u); // from the device
    EXPECT_EQ(le.pairing.durationMs, 5);
    EXPECT_EQ(le.pairing.status, 19);
    EXPECT_EQ(le.unpairing.effect, UnpairEffect::Removed);
    ASSERT_EQ(le.changes.size(), 2u); // its own and the device's, in order of time
    EXPECT_EQ(le.changes[0].atMs, 3);
    EXPECT_EQ(le.changes[0].property, "System.Devices.Aep.IsPresent");
    EXPECT_EQ(le.changes[0].value, Value{});
    EXPECT_EQ(le.changes[1].atMs, 9);
    EXPECT_EQ(le.changes[1].value, Value{"Later"});
}

TEST(Scenario, IdCanBeOverriddenWhole)
{
    auto const endpoint = OnlyEndpoint("[device.classic]\nid = \"odd one\"\n");
    EXPECT_EQ(endpoint.id, "odd one");
    EXPECT_EQ(Property(endpoint, "System.Devices.Aep.AepId"), Value{"odd one"});
}

TEST(Scenario, ChangesThatNeverHappenAreLeftOut)
{
    auto const endpoint = OnlyEndpoint("[[device.change]]\nat-ms = \"never\"\n"
                                       "property = \"System.ItemNameDisplay\"\nvalue = \"x\"\n");
    EXPECT_TRUE(endpoint.changes.empty());
}

TEST(Scenario, InlineTablesWillDo)
{
    auto const scenario = Parse("device = [{address = \"a4:c1:38:5e:22:0f\", pairing = {status = 3}}]");
    EXPECT_EQ(scenario.endpoints.at(0).pairing.status, 3);
}
