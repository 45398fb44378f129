// What is wrong with a wrong scenario, and where.
#include "tests/unit/ScenarioText.h"

#include <gmock/gmock.h>

#include <string>

using namespace simulator;
using namespace test;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{
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
        {"\nadaptor = \"00:1a:7d:da:71:13\"\n", "2", "'adaptor': unknown key; did you mean 'adapter'?"},
        {"[devices]\n", "1", "'devices': unknown key; did you mean 'device'?"},
        {Device("Name = \"x\"\n"), "3", "'Name': unknown key; did you mean 'name'?"},
        {Device("id = \"x\"\n"), "3", "'id': unknown key"},
        {Device("[device.pairing]\ndelay = 1\n"), "4", "'delay': unknown key"},
        {Device("[device.unpairing]\npin = \"1\"\n"), "4", "'pin': unknown key"},
        {Device("[device.classic]\nprotocols = [\"le\"]\n"), "4", "'protocols': unknown key"},
        {Device("[[device.change]]\nat-ms = 1\nproperty = \"System.ItemNameDisplay\"\n"
                "value = \"x\"\nwhen = 1\n"),
         "7", "'when': unknown key"},
    };

    Faulty const types[] = {
        {"appear-after-completion = 1\n", "1", "'appear-after-completion': 1 where true or false is expected"},
        {"event-threads = \"4\"\n", "1", "'event-threads': '4' where a number from 1 to 64 is expected"},
        {Device("event-threads = 4\n"), "3", "'event-threads': unknown key"},
        {"adapter = 1\n", "1", "'adapter': 1 where an address like 'a4:c1:38:5e:22:0f' is expected"},
        {"device = 1\n", "1", "'device': 1 where tables, each headed by its name in double brackets, are expected"},
        {"[device]\naddress = \"a4:c1:38:5e:22:0f\"\n", "1", "'device': a table where tables"},
        {"device = [1]\n", "1", "'device': 1 where tables"},
        {Device("name = 5\n"), "3", "'name': 5 where a text in quotes is expected"},
        {Device("name = 1979-05-27\n"), "3", "'name': a date or time where a text"},
        {Device("name = [1]\n"), "3", "'name': a list where a text"},
        {Device("can-pair = \"true\"\n"), "3", "'can-pair': 'true' where true or false is expected"},
        {Device("protocols = \"le\"\n"), "3", "'protocols': 'le' where a list of names is expected: classic, le"},
        {Device("protocols = [1]\n"), "3", "'protocols': 1 where a name is expected: classic, le"},
        {Device("protocols = []\n"), "3", "'protocols': an empty list where a list of names is expected"},
        {Device("pairing = \"ConfirmOnly\"\n"), "3", "'pairing': 'ConfirmOnly' where a table is expected"},
        {Device("[device.pairing]\npin = 123456\n"), "4", "'pin': 123456 where a text"},
        {Device("[device.pairing]\nkind = true\n"), "4",
         "'kind': true where a number from 0 to 4294967295 or a name is expected: ConfirmOnly, "},
        {Device("[device.unpairing]\neffect = 0\n"), "4", "'effect': 0 where a name is expected: Updated, Removed"},
        {Device("[device.properties]\n\"System.Devices.Aep.SignalStrength\" = -4.5\n"), "4",
         "'System.Devices.Aep.SignalStrength': a number with a point where a whole number from -2147483648 to "
         "2147483647 is expected"},
        {Device("[device.properties]\n\"System.Devices.Aep.ModelId\" = \"x\"\n"), "4", "{e0cb"},
    };

    Faulty const values[] = {
        {"[[device]]\nname = \"x\"\n", "1", "'address': missing"},
        {"\n[[device]]\naddress = \"\"\n", "3", "'address': '' where an address"},
        {"[[device]]\naddress = \"a4:c1:38:5e:22\"\n", "2", "'address': 'a4:c1:38:5e:22' where an address"},
        {"[[device]]\naddress = \"a4:c1:38:5e:22:0g\"\n", "2", "where an address"},
        {"[[device]]\naddress = \"a4-c1-38-5e-22-0f\"\n", "2", "where an address"},
        {"adapter = \"a4c1385e220f\"\n", "1", "'adapter': 'a4c1385e220f' where an address"},
        {"[adapter]\naddress = 'x'\n", "2", "'address': 'x' where an address"},
        {"[adapter]\nmax-advertisement-bytes = 1651\n", "2", "1651 where a number from 0 to 1650 is expected"},
        {"[adapter]\npresnt = true\n", "2", "'presnt': unknown key; did you mean 'present'?"},
        {"[radio]\nstate = 1\n", "2", "'state': 1 where a name is expected: Unknown, On, Off, Disabled"},
        {"[radio]\noff-watchers = 'Abrot'\n", "2", "a name is expected: Silent, Abort; did you mean 'Abort'?"},
        {"[radio]\naccess = 'No'\n", "2", "a name is expected: Unspecified, Allowed, DeniedByUser, DeniedBySystem"},
        {"enumeration-completes-ms = -1\n", "1",
         "'enumeration-completes-ms': -1 where milliseconds from 0 to 2147483647, or \"never\", are expected"},
        {"enumeration-completes-ms = 2147483648\n", "1", "2147483648 where milliseconds from 0 to 2147483647, or"},
        {"enumeration-completes-ms = 1.5\n", "1", "a number with a point where milliseconds"},
        {"enumeration-completes-ms = \"Never\"\n", "1", "'Never' where milliseconds"},
        {"event-threads = 0\n", "1", "'event-threads': 0 where a number from 1 to 64 is expected"},
        {"\nevent-threads = 65\n", "2", "65 where a number from 1 to 64"},
        {"event-threads = 4294967297\n", "1", "4294967297 where a number from 1 to 64"},
        {"event-threads = -4\n", "1", "a number from 1 to 64"},
        {Device("appears-ms = 5\nleaves-ms = 5\n"), "4", "'leaves-ms': 5 where a time after 'appears-ms', 5, is"},
        {Device("appears-ms = 5\nrepeats-ms = 5\n"), "4", "'repeats-ms': 5 where a time after 'appears-ms', 5, is"},
        {Device("leaves-ms = 5\n[device.classic]\nappears-ms = 6\n"), "5", "'appears-ms': 6 where a time before"},
        {Device("protocols = [\"BLE\"]\n"), "3", "'protocols': 'BLE' where a name is expected: classic, le"},
        {Device("protocols = [\"le\", \"le\"]\n"), "3", "'protocols': 'le' is there twice"},
        {Device("protocols = [\"BLE\"]\n[device.le]\naddress = \"a4:c1:38:5e:22:00\"\n"), "3", "'BLE'"},
        {Device("[device.le]\n"), "3", "'le': the device's 'protocols' do not list it"},
        {Device("[device.pairing]\nkind = \"Confirm\"\n"), "4", "'kind': 'Confirm' where a number from 0 to"},
        {Device("[device.pairing]\nkind = -1\n"), "4", "-1 where a number from 0 to 4294967295 or a name is expected"},
        {Device("[device.pairing]\nstatus = \"Unpaired\"\n"), "4", "'Unpaired' where a number from -2147483648 to"},
        {Device("[device.pairing]\nstatus = 2147483648\n"), "4", "2147483648 where a number"},
        {Device("[device.unpairing]\nstatus = \"Paired\"\n"), "4", "'Paired' where a number"},
        {Device("[device.unpairing]\neffect = \"updated\"\n"), "4", "'updated' where a name"},
        {Device("[device.pairing]\nmax-protection = \"High\"\n"), "4", "'High' where a number"},
        {Device("[device.properties]\n\"System.Devices.Aep.Colour\" = 1\n"), "4",
         "'System.Devices.Aep.Colour': unknown property"},
        {Device("[device.properties]\n\"system.devices.aep.canpair\" = true\n"), "4", "other keys"},
    };

    Faulty const changes[] = {
        {Device("[[device.change]]\nproperty = \"System.ItemNameDisplay\"\nvalue = \"x\"\n"), "3", "'at-ms': missing"},
        {Device("[[device.change]]\nat-ms = 1\nvalue = \"x\"\n"), "3", "'property': missing"},
        {Device("[[device.change]]\nat-ms = 1\nproperty = \"Colour\"\nvalue = \"x\"\n"), "5",
         "'property': 'Colour' where a property is expected"},
        {Device("[[device.change]]\nat-ms = 1\nproperty = 1\nvalue = \"x\"\n"), "5", "'property': 1 where a text"},
        {Device("[[device.change]]\nat-ms = 1\nproperty = \"System.ItemNameDisplay\"\n"), "3", "'value': missing"},
        {Device("[[device.change]]\nat-ms = 1\nproperty = \"System.ItemNameDisplay\"\nvalue = \"x\"\n"
                "unset = true\n"),
         "6", "'value': there beside 'unset = true'"},
        {Device("[[device.change]]\nat-ms = 1\nproperty = \"System.ItemNameDisplay\"\nvalue = 1\n"), "6",
         "'value': 1 where a text"},
    };

    Faulty const duplicates[] = {
        {Device("") + Device("name = \"twin\"\n"), "4", "'address': another device has the identifier 'Bluetooth#"},
        {Device("protocols = [\"classic\", \"le\"]\n[device.classic]\nid = \"x\"\n[device.le]\nid = \"x\"\n"), "7",
         "'id': another device has the identifier 'x'"},
    };
} // namespace

TEST_P(ScenarioFault, NamesLineAndReason)
{
    EXPECT_THAT(FaultsOf(GetParam().toml), StartsWith("test.toml:" + GetParam().place + ": ")) << GetParam().toml;
    EXPECT_THAT(FaultsOf(GetParam().toml), HasSubstr(GetParam().reason)) << GetParam().toml;
}

TEST_P(ScenarioFault, IsTheOnlyOne)
{
    EXPECT_THAT(FaultsOf(GetParam().toml), Not(HasSubstr("\n"))) << GetParam().toml;
}

INSTANTIATE_TEST_SUITE_P(Syntax, ScenarioFault, testing::ValuesIn(syntax));

INSTANTIATE_TEST_SUITE_P(UnknownKeys, ScenarioFault, testing::ValuesIn(unknownKeys));

INSTANTIATE_TEST_SUITE_P(Types, ScenarioFault, testing::ValuesIn(types));

INSTANTIATE_TEST_SUITE_P(Values, ScenarioFault, testing::ValuesIn(values));

INSTANTIATE_TEST_SUITE_P(Changes, ScenarioFault, testing::ValuesIn(changes));

INSTANTIATE_TEST_SUITE_P(Duplicates, ScenarioFault, testing::ValuesIn(duplicates));
