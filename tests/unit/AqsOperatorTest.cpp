// The operators of the query language, value by value.
#include "tests/unit/AqsDevices.h"

#include <gtest/gtest.h>

using namespace simulator;
using namespace test;

namespace
{
    struct Case
    {
        std::string_view query;
        bool selects;
    };

    using AqsOperator = testing::TestWithParam<Case>;

    constexpr Case equality[] = {
        {"System.Devices.Aep.SignalStrength:-60", true}, // differs from 60
        {"System.Devices.Aep.SignalStrength:=-60", true},        {"System.Devices.Aep.SignalStrength:=60", false},
        {"System.Devices.Aep.SignalStrength:<>-60", false},      {"System.Devices.Aep.SignalStrength:--60", false},
        {"System.Devices.Aep.SignalStrength:-7", true},          {"System.Devices.Aep.SignalStrength:≠-60", false},
        {"System.Devices.Aep.SignalStrength:≠7", true},          {"System.Devices.Aep.SignalStrength:NOT -60", false},
        {"System.Devices.Aep.SignalStrength:NOT 7", true},       {R"(System.ItemNameDisplay:"Kitchen Speaker")", true},
        {R"(System.ItemNameDisplay:="Kitchen")", false},         {R"(System.ItemNameDisplay:NOT"Kitchen")", true},
        {R"(System.ItemNameDisplay:="kitchen speaker")", false},
    };

    constexpr Case order[] = {
        {"System.Devices.Aep.SignalStrength:<-59", true}, {"System.Devices.Aep.SignalStrength:<-60", false},
        {"System.Devices.Aep.SignalStrength:>-61", true}, {"System.Devices.Aep.SignalStrength:>-60", false},
        {"System.Devices.DevObjectType:<5", false},       {"System.Devices.DevObjectType:>5", false},
    };

    constexpr Case orderOrEqual[] = {
        {"System.Devices.Aep.SignalStrength:<=-60", true}, {"System.Devices.Aep.SignalStrength:<=-61", false},
        {"System.Devices.Aep.SignalStrength:>=-60", true}, {"System.Devices.Aep.SignalStrength:>=-59", false},
        {"System.Devices.Aep.SignalStrength:≤-60", true},  {"System.Devices.Aep.SignalStrength:≤-61", false},
        {"System.Devices.Aep.SignalStrength:≥-60", true},  {"System.Devices.Aep.SignalStrength:≥-59", false},
        {"System.Devices.DevObjectType:<=5", false},       {"System.Devices.DevObjectType:>=5", false},
    };

    constexpr Case guidOrder[] = {
        {"System.Devices.Aep.ProtocolId:<{ffffffff-cd8b-4647-bb8a-263b43f0f974}", false},
        {"System.Devices.Aep.ProtocolId:>{00000000-cd8b-4647-bb8a-263b43f0f974}", false},
        {"System.Devices.Aep.ProtocolId:<={e0cbf06c-cd8b-4647-bb8a-263b43f0f974}", false},
        {"System.Devices.Aep.ProtocolId:>={e0cbf06c-cd8b-4647-bb8a-263b43f0f974}", false},
    };

    constexpr Case part[] = {
        {R"(System.ItemNameDisplay:~~"chen Sp")", true},
        {R"(System.ItemNameDisplay:~~"garden")", false},
        {R"(System.ItemNameDisplay:~<"Kitchen")", true},
        {R"(System.ItemNameDisplay:~<"Speaker")", false},
        {"System.ItemNameDisplay:~<Kitchen", true},
        {R"(System.Devices.Aep.ModelName:~~"")", false},
        {R"(System.ItemNameDisplay:~<"kitchen")", false},
        {R"(System.ItemNameDisplay:~~"CHEN sP")", true},
        {R"(System.ItemNameDisplay:~="chEN")", true},
        {R"(System.ItemNameDisplay:~="garden")", false},
        {R"(System.ItemNameDisplay:~~"")", true},
        {R"(System.ItemNameDisplay:~!"")", false},
        {R"(System.ItemNameDisplay:~!"SPEAKER")", false},
        {R"(System.ItemNameDisplay:~!"garden")", true},
        {R"(System.Devices.Aep.ModelName:~!"garden")", false}, // asked of texts alone
        {R"(System.ItemNameDisplay:~>"Speaker")", true},
        {R"(System.ItemNameDisplay:~>"speaker")", false},
        {R"(System.ItemNameDisplay:~>"Kitchen")", false},
        {"System.ItemNameDisplay:~>er", true},
        {R"(System.Devices.Aep.ModelName:~>"")", false},
    };

    constexpr Case null[] = {
        {"System.Devices.Aep.ModelName:=[]", true},     {"System.Devices.Aep.ModelName:[]", true},
        {"System.Devices.Aep.ModelName:<>[]", false},   {"System.Devices.Aep.ModelName:NOT[]", false},
        {"System.Devices.Aep.ContainerId:=[]", true}, // not there at all
        {"System.ItemNameDisplay:=[]", false},          {"System.ItemNameDisplay:-[]", true},
        {R"(System.Devices.Aep.ModelName:="")", false}, {R"(System.Devices.Aep.ModelName:<>"x")", false},
    };

    constexpr Case guid[] = {
        {"System.Devices.Aep.ProtocolId:={e0cbf06c-cd8b-4647-bb8a-263b43f0f974}", true},
        {R"(System.Devices.Aep.ProtocolId:="{E0CBF06C-cd8b-4647-bb8a-263b43f0f974}")", true},
        {"System.Devices.Aep.ProtocolId:={e0cbf06c-cd8b-4647-bb8a-263b43f0f975}", false},
        {"System.Devices.Aep.ProtocolId:<>{bb7bb05e-5972-42b5-94fc-76eaa7084d49}", true},
    };

    constexpr Case spelling[] = {
        {"system.devices.AEP.canpair:=SYSTEM.structuredquerytype.BOOLEAN#tRUE", true},
        {"System.Devices.Aep.CanPair:=System.StructuredQueryType.Boolean#FALSE", false},
        {"\t( System.Devices.Aep.SignalStrength\r\n:=\n-60 )  ", true},
        {"(System.Devices.Aep.SignalStrength:=-60)AND(System.ItemNameDisplay:~~en)", true},
        {"((((System.Devices.Aep.SignalStrength:=-60))))", true},
    };
} // namespace

TEST_P(AqsOperator, ComparesWithTheSpeaker)
{
    EXPECT_EQ(Selects(GetParam().query, Speaker()), GetParam().selects);
}

INSTANTIATE_TEST_SUITE_P(Equality, AqsOperator, testing::ValuesIn(equality));

INSTANTIATE_TEST_SUITE_P(Order, AqsOperator, testing::ValuesIn(order));

INSTANTIATE_TEST_SUITE_P(OrderOrEqual, AqsOperator, testing::ValuesIn(orderOrEqual));

INSTANTIATE_TEST_SUITE_P(GuidOrder, AqsOperator, testing::ValuesIn(guidOrder));

INSTANTIATE_TEST_SUITE_P(Part, AqsOperator, testing::ValuesIn(part));

INSTANTIATE_TEST_SUITE_P(Null, AqsOperator, testing::ValuesIn(null));

INSTANTIATE_TEST_SUITE_P(Guid, AqsOperator, testing::ValuesIn(guid));

INSTANTIATE_TEST_SUITE_P(Spelling, AqsOperator, testing::ValuesIn(spelling));
