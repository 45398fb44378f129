// What is wrong with a wrong scenario, and where.
#include "simulator/scenario/Scenario.h"

#include <gmock/gmock.h>

#include <string>

namespace
{
    using namespace simulator;
    using testing::HasSubstr;
    using testing::StartsWith;

    constexpr std::string_view speakerAddress = "address = \"a4:c1:38:5e:22:0f\"\n";

    // One device with the address above and more keys or tables of its own.
    std::string Device(std::string_view more)
    {
        return "[[device]]\n" + std::string(speakerAddress) + std::string(more);
    }

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

    class ScenarioFault : public testing::TestWithParam<Faulty>
    {
    };

    TEST_P(ScenarioFault, NamesLineAndReason)
    {
        EXPECT_THAT(Fault(GetParam().toml), StartsWith("test.toml:" + GetParam().place + ": ")) << GetParam().toml;
        EXPECT_THAT(Fault(GetParam().toml), HasSubstr(GetParam().reason)) << GetParam().toml;
    }

    INSTANTIATE_TEST_SUITE_P(Syntax, ScenarioFault,
                             testing::Values(Faulty{"\n\nadapter = \n", "3", ""},
                                             Faulty{"[[device]]\naddress = \"a4", "2", ""},
                                             Faulty{"adapter = 1\nadapter = 2\n", "2", "adapter"},
                                             Faulty{"[[device]\n", "1", ""}, Faulty{"\n[.device]\n", "2", "'.'"},
                                             Faulty{"\ngröße-ms = 1\n", "2", ""}, Faulty{"# \xff\n", "1", ""}));

    INSTANTIATE_TEST_SUITE_P(
        UnknownKeys, ScenarioFault,
        testing::Values(Faulty{"\nadaptor = \"00:1a:7d:da:71:13\"\n", "2", "'adaptor': unknown key"},
                        Faulty{"[devices]\n", "1", "'devices': unknown key"},
                        Faulty{Device("Name = \"x\"\n"), "3", "'Name': unknown key"},
                        Faulty{Device("id = \"x\"\n"), "3", "'id': unknown key"},
                        Faulty{Device("[device.pairing]\ndelay = 1\n"), "4", "'delay': unknown key"},
                        Faulty{Device("[device.unpairing]\npin = \"1\"\n"), "4", "'pin': unknown key"},
                        Faulty{Device("[device.classic]\nprotocols = [\"le\"]\n"), "4", "'protocols': unknown key"},
                        Faulty{Device("[[device.change]]\nat-ms = 1\nproperty = \"System.ItemNameDisplay\"\n"
                                      "value = \"x\"\nwhen = 1\n"),
                               "7", "'when': unknown key"}));

    INSTANTIATE_TEST_SUITE_P(
        Types, ScenarioFault,
        testing::Values(Faulty{"appear-after-completion = 1\n", "1", "true or false"},
                        Faulty{"event-threads = \"4\"\n", "1", "whole number"},
                        Faulty{Device("event-threads = 4\n"), "3", "'event-threads': unknown key"},
                        Faulty{"adapter = 1\n", "1", "text"}, Faulty{"device = 1\n", "1", "tables are expected"},
                        Faulty{"[device]\naddress = \"a4:c1:38:5e:22:0f\"\n", "1", "tables are expected"},
                        Faulty{"device = [1]\n", "1", "tables are expected"}, Faulty{Device("name = 5\n"), "3", "text"},
                        Faulty{Device("can-pair = \"true\"\n"), "3", "true or false"},
                        Faulty{Device("protocols = \"le\"\n"), "3", "list of names"},
                        Faulty{Device("protocols = [1]\n"), "3", "list of names"},
                        Faulty{Device("protocols = []\n"), "3", "'protocols'"},
                        Faulty{Device("pairing = \"ConfirmOnly\"\n"), "3", "a table is expected"},
                        Faulty{Device("[device.pairing]\npin = 123456\n"), "4", "text"},
                        Faulty{Device("[device.pairing]\nkind = true\n"), "4", "wrong type"},
                        Faulty{Device("[device.unpairing]\neffect = 0\n"), "4", "Updated, Removed"},
                        Faulty{Device("[device.properties]\n\"System.Devices.Aep.SignalStrength\" = -4.5\n"), "4",
                               "whole number"},
                        Faulty{Device("[device.properties]\n\"System.Devices.Aep.ModelId\" = \"x\"\n"), "4", "{e0cb"}));

    INSTANTIATE_TEST_SUITE_P(
        Values, ScenarioFault,
        testing::Values(
            Faulty{"[[device]]\nname = \"x\"\n", "1", "'address'"},
            Faulty{"\n[[device]]\naddress = \"\"\n", "3", "not an address"},
            Faulty{"[[device]]\naddress = \"a4:c1:38:5e:22\"\n", "2", "'a4:c1:38:5e:22' is not an address"},
            Faulty{"[[device]]\naddress = \"a4:c1:38:5e:22:0g\"\n", "2", "not an address"},
            Faulty{"[[device]]\naddress = \"a4-c1-38-5e-22-0f\"\n", "2", "not an address"},
            Faulty{"adapter = \"a4c1385e220f\"\n", "1", "not an address"},
            Faulty{"enumeration-completes-ms = -1\n", "1", "not a time"},
            Faulty{"enumeration-completes-ms = 2147483648\n", "1", "not a time"},
            Faulty{"enumeration-completes-ms = 1.5\n", "1", "wrong type"},
            Faulty{"enumeration-completes-ms = \"Never\"\n", "1", "'Never' is not known"},
            Faulty{"event-threads = 0\n", "1", "'event-threads': a number from 1 to 64 is expected"},
            Faulty{"\nevent-threads = 65\n", "2", "a number from 1 to 64"},
            Faulty{"event-threads = -4\n", "1", "a number from 1 to 64"},
            Faulty{Device("appears-ms = 5\nleaves-ms = 5\n"), "1", "leaves before it appears"},
            Faulty{Device("appears-ms = 5\nrepeats-ms = 5\n"), "1", "reported again before it appears"},
            Faulty{Device("protocols = [\"BLE\"]\n"), "3", "'BLE' is not known; known are: classic, le"},
            Faulty{Device("protocols = [\"le\", \"le\"]\n"), "3", "twice"},
            Faulty{Device("[device.le]\n"), "3", "do not list it"},
            Faulty{Device("[device.pairing]\nkind = \"confirmonly\"\n"), "4", "'confirmonly' is not known"},
            Faulty{Device("[device.pairing]\nkind = -1\n"), "4", "out of range"},
            Faulty{Device("[device.pairing]\nstatus = \"Unpaired\"\n"), "4", "'Unpaired' is not known"},
            Faulty{Device("[device.pairing]\nstatus = 2147483648\n"), "4", "out of range"},
            Faulty{Device("[device.unpairing]\nstatus = \"Paired\"\n"), "4", "'Paired' is not known"},
            Faulty{Device("[device.unpairing]\neffect = \"updated\"\n"), "4", "'updated' is not known"},
            Faulty{Device("[device.pairing]\nmax-protection = \"High\"\n"), "4", "'High' is not known"},
            Faulty{Device("[device.properties]\n\"System.Devices.Aep.Colour\" = 1\n"), "4", "no such property"},
            Faulty{Device("[device.properties]\n\"system.devices.aep.canpair\" = true\n"), "4", "other keys"}));

    INSTANTIATE_TEST_SUITE_P(
        Changes, ScenarioFault,
        testing::Values(
            Faulty{Device("[[device.change]]\nproperty = \"System.ItemNameDisplay\"\nvalue = \"x\"\n"), "3", "'at-ms'"},
            Faulty{Device("[[device.change]]\nat-ms = 1\nvalue = \"x\"\n"), "3", "'property'"},
            Faulty{Device("[[device.change]]\nat-ms = 1\nproperty = \"Colour\"\nvalue = \"x\"\n"), "5", "'Colour'"},
            Faulty{Device("[[device.change]]\nat-ms = 1\nproperty = \"System.ItemNameDisplay\"\n"), "3", "either"},
            Faulty{Device("[[device.change]]\nat-ms = 1\nproperty = \"System.ItemNameDisplay\"\nvalue = \"x\"\n"
                          "unset = true\n"),
                   "3", "either"},
            Faulty{Device("[[device.change]]\nat-ms = 1\nproperty = \"System.ItemNameDisplay\"\nvalue = 1\n"), "6",
                   "text"}));

    INSTANTIATE_TEST_SUITE_P(
        Duplicates, ScenarioFault,
        testing::Values(
            Faulty{Device("") + Device("name = \"twin\"\n"), "3", "another device has the id"},
            Faulty{Device("protocols = [\"classic\", \"le\"]\n[device.classic]\nid = \"x\"\n[device.le]\nid = \"x\"\n"),
                   "1", "'x'"}));
} // namespace
