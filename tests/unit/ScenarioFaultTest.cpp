// What is wrong with a wrong scenario, and where.
#include "tests/unit/ScenarioText.h"

#include <gmock/gmock.h>

#include <string>

using namespace simulator;
using namespace test;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{
    std::string Fault(std::string_view toml)
    {
        try
        {
            ParseScenario(toml, "test.toml");
        }
        catch (ScenarioError const& error)
        {
            return error.what();
        }
        return "no fault";
    }

    struct Faulty
    {
        std::string toml;
        std::string place; // what the fault begins with
        std::string reason;
    };

    using ScenarioFault = testing::TestWithParam<Faulty>;

    Faulty const syntax[] = {
        {"\n\nadapter = \n", "3", ""},
        {"[[device]]\naddress = \"a4", "2", ""},
        {"adapter = 1\nadapter = 2\n", "2", "adapter"},
        {"[[device]\n", "1", ""},
        {"\n[.device]\n", "2", "'.'"},
        {"\ngröße-ms = 1\n", "2", ""},
        {"# \xff\n", "1", ""},
    };

    Faulty const unknownKeys[] = {
        {"\nadaptor = \"00:1a:7d:da:71:13\"\n", "2", "'adaptor': unknown key"},
        {"[devices]\n", "1", "'devices': unknown key"},
        {Device("Name = \"x\"\n"), "3", "'Name': unknown key"},
        {Device("id = \"x\"\n"), "3", "'id': unknown key"},
        {Device("[device.pairing]\ndelay = 1\n"), "4", "'delay': unknown key"},
        {Device("[device.unpairing]\npin = \"1\"\n"), "4", "'pin': unknown key"},
        {Device("[device.classic]\nprotocols = [\"le\"]\n"), "4", "'protocols': unknown key"},
        {Device("[[device.change]]\nat-ms = 1\nproperty = \"System.ItemNameDisplay\"\n"
                "value = \"x\"\nwhen = 1\n"),
         "7", "'when': unknown key"},
    };

    Faulty const types[] = {
        {"appear-after-completion = 1\n", "1", "true or false"},
        {"event-threads = \"4\"\n", "1", "whole number"},
        {Device("event-threads = 4\n"), "3", "'event-threads': unknown key"},
        {"adapter = 1\n", "1", "text"},
        {"device = 1\n", "1", "tables are expected"},
        {"[device]\naddress = \"a4:c1:38:5e:22:0f\"\n", "1", "tables are expected"},
        {"device = [1]\n", "1", "tables are expected"},
        {Device("name = 5\n"), "3", "text"},
        {Device("can-pair = \"true\"\n"), "3", "true or false"},
        {Device("protocols = \"le\"\n"), "3", "list of names"},
        {Device("protocols = [1]\n"), "3", "list of names"},
        {Device("protocols = []\n"), "3", "'protocols'"},
        {Device("pairing = \"ConfirmOnly\"\n"), "3", "a table is expected"},
        {Device("[device.pairing]\npin = 123456\n"), "4", "text"},
        {Device("[device.pairing]\nkind = true\n"), "4", "wrong type"},
        {Device("[device.unpairing]\neffect = 0\n"), "4", "Updated, Removed"},
        {Device("[device.properties]\n\"System.Devices.Aep.SignalStrength\" = -4.5\n"), "4", "whole number"},
        {Device("[device.properties]\n\"System.Devices.Aep.ModelId\" = \"x\"\n"), "4", "{e0cb"},
    };

    Faulty const values[] = {
        {"[[device]]\nname = \"x\"\n", "1", "'address'"},
        {"\n[[device]]\naddress = \"\"\n", "3", "not an address"},
        {"[[device]]\naddress = \"a4:c1:38:5e:22\"\n", "2", "'a4:c1:38:5e:22' is not an address"},
        {"[[device]]\naddress = \"a4:c1:38:5e:22:0g\"\n", "2", "not an address"},
        {"[[device]]\naddress = \"a4-c1-38-5e-22-0f\"\n", "2", "not an address"},
        {"adapter = \"a4c1385e220f\"\n", "1", "not an address"},
        {"enumeration-completes-ms = -1\n", "1", "not a time"},
        {"enumeration-completes-ms = 2147483648\n", "1", "not a time"},
        {"enumeration-completes-ms = 1.5\n", "1", "wrong type"},
        {"enumeration-completes-ms = \"Never\"\n", "1", "'Never' is not known"},
        {"event-threads = 0\n", "1", "'event-threads': a number from 1 to 64 is expected"},
        {"\nevent-threads = 65\n", "2", "a number from 1 to 64"},
        {"event-threads = -4\n", "1", "a number from 1 to 64"},
        {Device("appears-ms = 5\nleaves-ms = 5\n"), "1", "leaves before it appears"},
        {Device("appears-ms = 5\nrepeats-ms = 5\n"), "1", "reported again before it appears"},
        {Device("protocols = [\"BLE\"]\n"), "3", "'BLE' is not known; known are: classic, le"},
        {Device("protocols = [\"le\", \"le\"]\n"), "3", "twice"},
        {Device("[device.le]\n"), "3", "do not list it"},
        {Device("[device.pairing]\nkind = \"confirmonly\"\n"), "4", "'confirmonly' is not known"},
        {Device("[device.pairing]\nkind = -1\n"), "4", "out of range"},
        {Device("[device.pairing]\nstatus = \"Unpaired\"\n"), "4", "'Unpaired' is not known"},
        {Device("[device.pairing]\nstatus = 2147483648\n"), "4", "out of range"},
        {Device("[device.unpairing]\nstatus = \"Paired\"\n"), "4", "'Paired' is not known"},
        {Device("[device.unpairing]\neffect = \"updated\"\n"), "4", "'updated' is not known"},
        {Device("[device.pairing]\nmax-protection = \"High\"\n"), "4", "'High' is not known"},
        {Device("[device.properties]\n\"System.Devices.Aep.Colour\" = 1\n"), "4", "no such property"},
        {Device("[device.properties]\n\"system.devices.aep.canpair\" = true\n"), "4", "other keys"},
    };

    Faulty const changes[] = {
        {Device("[[device.change]]\nproperty = \"System.ItemNameDisplay\"\nvalue = \"x\"\n"), "3", "'at-ms'"},
        {Device("[[device.change]]\nat-ms = 1\nvalue = \"x\"\n"), "3", "'property'"},
        {Device("[[device.change]]\nat-ms = 1\nproperty = \"Colour\"\nvalue = \"x\"\n"), "5", "'Colour'"},
        {Device("[[device.change]]\nat-ms = 1\nproperty = \"System.ItemNameDisplay\"\n"), "3", "either"},
        {Device("[[device.change]]\nat-ms = 1\nproperty = \"System.ItemNameDisplay\"\nvalue = \"x\"\n"
                "unset = true\n"),
         "3", "either"},
        {Device("[[device.change]]\nat-ms = 1\nproperty = \"System.ItemNameDisplay\"\nvalue = 1\n"), "6", "text"},
    };

    Faulty const duplicates[] = {
        {Device("") + Device("name = \"twin\"\n"), "3", "another device has the id"},
        {Device("protocols = [\"classic\", \"le\"]\n[device.classic]\nid = \"x\"\n[device.le]\nid = \"x\"\n"), "1",
         "'x'"},
    };
} // namespace

TEST_P(ScenarioFault, NamesLineAndReason)
{
    EXPECT_THAT(Fault(GetParam().toml), StartsWith("test.toml:" + GetParam().place + ": ")) << GetParam().toml;
    EXPECT_THAT(Fault(GetParam().toml), HasSubstr(GetParam().reason)) << GetParam().toml;
}

INSTANTIATE_TEST_SUITE_P(Syntax, ScenarioFault, testing::ValuesIn(syntax));

INSTANTIATE_TEST_SUITE_P(UnknownKeys, ScenarioFault, testing::ValuesIn(unknownKeys));

INSTANTIATE_TEST_SUITE_P(Types, ScenarioFault, testing::ValuesIn(types));

INSTANTIATE_TEST_SUITE_P(Values, ScenarioFault, testing::ValuesIn(values));

INSTANTIATE_TEST_SUITE_P(Changes, ScenarioFault, testing::ValuesIn(changes));

INSTANTIATE_TEST_SUITE_P(Duplicates, ScenarioFault, testing::ValuesIn(duplicates));
