// The kind of device that a query names.
#include "simulator/query/Aqs.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string_view>

using namespace simulator;

namespace
{
    struct Case
    {
        std::string_view query;
        std::optional<std::int64_t> kind;
    };

    using AqsKind = testing::TestWithParam<Case>;

    constexpr Case named[] = {
        {"System.Devices.DevObjectType:=5", 5},
        {"system.devices.devobjecttype:5", 5},
        {"(((System.Devices.DevObjectType:=5)))", 5},
        {"System.Devices.DevObjectType:=5 AND System.ItemNameDisplay:=x", 5},
        {"System.ItemNameDisplay:=x System.Devices.DevObjectType:=1", 1},
        {"System.ItemNameDisplay:=x AND (System.Devices.DevObjectType:=5 AND System.ItemNameDisplay:=y)", 5},
        {"System.Devices.DevObjectType:=5 AND (System.ItemNameDisplay:=x OR System.ItemNameDisplay:=y)", 5},
        {"System.ItemNameDisplay:=x OR System.ItemNameDisplay:=y AND System.Devices.DevObjectType:=7", 7},
        {"System.Devices.DevObjectType:=5 OR "
         "System.Devices.Aep.Bluetooth.IssueInquiry:=System.StructuredQueryType.Boolean#True",
         5},
        {"(System.Devices.DevObjectType:=5 AND System.ItemNameDisplay:=x) OR "
         "(System.Devices.DevObjectType:=5 AND System.ItemNameDisplay:=y)",
         5},
        {"System.Devices.DevObjectType:=5 AND System.Devices.DevObjectType:=7", 5}, // of which there is none
    };

    constexpr Case unnamed[] = {
        {"", {}},
        {" ", {}},
        {"System.ItemNameDisplay:=x", {}},
        {"System.Devices.Aep.SignalStrength:=5", {}},
        {"NOT System.Devices.DevObjectType:=5", {}},
        {"System.Devices.DevObjectType:<>5", {}},
        {"System.Devices.DevObjectType:<=5", {}},
        {"System.Devices.DevObjectType:=[]", {}},
        {"System.Devices.DevObjectType:=5 OR System.ItemNameDisplay:=x", {}},
        {"System.Devices.DevObjectType:=5 OR System.Devices.DevObjectType:=1", {}},
        {"System.ItemNameDisplay:=x OR System.Devices.DevObjectType:=5", {}},
        {"System.Devices.DevObjectType:=5 AND System.ItemNameDisplay:=x OR System.ItemNameDisplay:=y", {}},
        {"System.ItemNameDisplay:=x AND (System.Devices.DevObjectType:=5 OR System.ItemNameDisplay:=y)", {}},
    };
} // namespace

TEST_P(AqsKind, IsWhatEverythingSelectedMustHave)
{
    EXPECT_EQ(Query::Parse(GetParam().query).Kind(), GetParam().kind);
}

INSTANTIATE_TEST_SUITE_P(Named, AqsKind, testing::ValuesIn(named));

INSTANTIATE_TEST_SUITE_P(Unnamed, AqsKind, testing::ValuesIn(unnamed));
