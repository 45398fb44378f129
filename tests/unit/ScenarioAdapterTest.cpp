// What a scenario says of the PC's adapter and its radio.
#include "tests/unit/ScenarioText.h"

using namespace simulator;
using namespace test;

TEST(Scenario, AdapterIsThereAndOnUnlessItIsSaid)
{
    auto const scenario = Parse("");
    EXPECT_EQ(scenario.adapter, Adapter{});
    EXPECT_TRUE(scenario.adapter.present);
    EXPECT_EQ(scenario.radio, Radio{});
    EXPECT_EQ(scenario.radio.state, 1);
}

TEST(Scenario, AdapterIsAnAddressOrATable)
{
    EXPECT_EQ(Parse("adapter = '00:00:00:00:00:09'").adapter.address, "00:00:00:00:00:09");
    auto const table = Parse("[adapter]\naddress = '00:00:00:00:00:09'\npresent = false\nclassic = false\nle = false\n"
                             "central-role = false\nperipheral-role = false\nadvertisement-offload = true\n"
                             "secure-connections = false\nextended-advertising = true\n"
                             "max-advertisement-bytes = 254\n[[device]]\naddress = '00:00:00:00:00:01'\n");
    EXPECT_EQ(table.adapter, (Adapter{false, "00:00:00:00:00:09", false, false, false, false, true, false, true, 254}));
    EXPECT_EQ(table.endpoints.at(0).id, "Bluetooth#Bluetooth00:00:00:00:00:09-00:00:00:00:00:01");
}

TEST(Scenario, RadioHasAStateAndEffects)
{
    auto const radio = Parse("[radio]\nstate = 'Off'\nname = 'Blue'\naccess = 'DeniedByUser'\noff-watchers = 'Silent'\n"
                             "off-pairing = 'ConnectionRejected'\noff-after-ms = 30\n")
                           .radio;
    EXPECT_EQ(radio, (Radio{2, "Blue", 2, false, 4, 30}));
    EXPECT_EQ(Parse("[radio]\nstate = 'Disabled'\n").radio.state, 3);
    EXPECT_EQ(Parse("[radio]\nstate = 'Unknown'\n").radio.state, 0);
}
