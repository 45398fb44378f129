// The neighbourhood that plays when no other is named.
#include "simulator/scenario/DefaultScenario.h"
#include "simulator/scenario/Scenario.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstddef>
#include <set>
#include <string>

using namespace simulator;
using testing::ElementsAre;

namespace
{
    Value Property(Endpoint const& endpoint, std::string_view name)
    {
        auto const found = endpoint.properties.find(name);
        return found == endpoint.properties.end() ? Value{std::string("absent")} : found->second;
    }
} // namespace

TEST(DefaultScenario, IsAnInterestingNeighbourhood)
{
    auto const scenario = ParseScenario(DefaultScenario(), "default");
    EXPECT_EQ(scenario.endpoints.size(), 13u); // twelve devices, one of dual mode

    auto const count = [&scenario](auto const& condition) {
        return std::ranges::count_if(scenario.endpoints, condition);
    };
    EXPECT_EQ(count([](Endpoint const& endpoint) { return endpoint.protocol == Protocol::Classic; }), 9);
    EXPECT_EQ(count([](Endpoint const& endpoint) {
                  return Property(endpoint, "System.Devices.Aep.IsPaired") == Value{true};
              }),
              4);
    EXPECT_EQ(count([](Endpoint const& endpoint) {
                  return Property(endpoint, "System.Devices.Aep.CanPair") == Value{false};
              }),
              1);
    EXPECT_EQ(count([](Endpoint const& endpoint) {
                  return std::ranges::any_of(std::get<std::string>(Property(endpoint, "System.ItemNameDisplay")),
                                             [](char character) { return (character & 0x80) != 0; });
              }),
              1);

    std::set<std::uint32_t> kinds;
    std::set<std::int32_t> statuses;
    for (auto const& endpoint : scenario.endpoints)
    {
        kinds.insert(endpoint.pairing.kind);
        statuses.insert(endpoint.pairing.status);
        EXPECT_NE(endpoint.appearsAtMs, never);
        EXPECT_LT(std::max(endpoint.appearsAtMs, endpoint.leavesAtMs), scenario.enumerationCompletesAtMs);
        EXPECT_TRUE(endpoint.changes.empty() || endpoint.changes.back().atMs < scenario.enumerationCompletesAtMs);
    }
    EXPECT_THAT(kinds, ElementsAre(1u, 2u, 4u));
    EXPECT_THAT(statuses, ElementsAre(0, 9)); // paired, and refused
    EXPECT_LE(scenario.enumerationCompletesAtMs, 600);
}

TEST(DefaultScenario, OneNameArrivesLate)
{
    auto const scenario = ParseScenario(DefaultScenario(), "default");
    auto const late = std::ranges::find_if(scenario.endpoints, [](Endpoint const& endpoint) {
        return Property(endpoint, "System.ItemNameDisplay") == Value{""};
    });
    ASSERT_NE(late, scenario.endpoints.end());
    ASSERT_EQ(late->changes.size(), 1u);
    EXPECT_GT(late->changes[0].atMs, late->appearsAtMs);
    EXPECT_EQ(late->changes[0].property, "System.ItemNameDisplay");
    EXPECT_EQ(late->changes[0].value, Value{"Reading Lamp"});
}

TEST(DefaultScenario, EveryPropertyIsKnownAndOfItsKind)
{
    for (auto const& endpoint : ParseScenario(DefaultScenario(), "default").endpoints)
    {
        for (auto const& [name, value] : endpoint.properties)
        {
            // The alternatives of Value stand in the order of PropertyKind.
            auto const kind = KindOfProperty(name);
            EXPECT_NE(kind, PropertyKind::Unknown) << name;
            EXPECT_TRUE(value.index() == 0 || static_cast<std::size_t>(kind) == value.index()) << name;
        }
    }
}
