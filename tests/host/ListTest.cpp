// vorlinkctl list, from outside: what it prints and the code that it ends with.
#include "tests/host/ChildProcess.h"
#include "tests/host/LiveVorlinkctl.h"
#include "tests/host/Neighbourhood.h"
#include "tests/support/LogFile.h"
#include "tests/support/Patience.h"

#include <gmock/gmock.h>

#include <nlohmann/json.hpp>
#include <sstream>
#include <string>
#include <vector>

using namespace test;
using testing::AnyOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

namespace
{
    constexpr char twoDevices[] = R"(
[[device]]
name = "Speaker"
address = "a4:c1:38:5e:22:0f"
protocols = ["classic", "le"]
[device.le]
is-paired = true
[device.le.properties]
"System.Devices.Aep.IsConnected" = true
"System.Devices.Aep.SignalStrength" = -48

[[device]]
name = "Lamp"
address = "00:00:00:00:00:01"
protocols = ["le"]
can-pair = false
)";

    constexpr char endless[] = "enumeration-completes-ms = 'never'\n";

    std::vector<nlohmann::json> Objects(std::string const& output)
    {
        std::vector<nlohmann::json> objects;
        std::istringstream lines(output);
        for (std::string line; std::getline(lines, line);)
        {
            objects.push_back(nlohmann::json::parse(line));
        }
        return objects;
    }
} // namespace

TEST(List, IsATableOfDevices)
{
    UseScenario(twoDevices);
    auto const result = RunVorlinkctl({"list"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, "Name     Address            Protocols     State                 Signal\n"
                             "Speaker  a4:c1:38:5e:22:0f  Classic + LE  LE paired, connected  -48 dBm\n"
                             "Lamp     00:00:00:00:00:01  LE            cannot pair           -60 dBm\n"
                             "\n"
                             "2 devices, 1 paired.\n");
    EXPECT_EQ(result.error, "Looking for Bluetooth devices ...\n");
}

TEST(List, IsOfOneProtocolWhenAskedTo)
{
    UseScenario(twoDevices);
    auto const classic = RunVorlinkctl({"list", "--classic"}).output;
    EXPECT_THAT(classic, HasSubstr("Speaker  a4:c1:38:5e:22:0f  Classic    can pair"));
    EXPECT_THAT(classic, HasSubstr("1 device, 0 paired."));
    auto const le = RunVorlinkctl({"list", "--le"}).output;
    EXPECT_THAT(le, HasSubstr("Speaker  a4:c1:38:5e:22:0f  LE         paired, connected"));
    EXPECT_THAT(le, HasSubstr("2 devices, 1 paired."));
}

TEST(List, IsOfPairedDevicesWhenAskedTo)
{
    UseScenario(twoDevices);
    auto const result = RunVorlinkctl({"list", "--paired"});
    EXPECT_THAT(result.output, HasSubstr("Speaker"));
    EXPECT_THAT(result.output, Not(HasSubstr("Lamp")));
    UseScenario("[[device]]\nname = 'Lamp'\naddress = '00:00:00:00:00:01'\n");
    auto const none = RunVorlinkctl({"list", "--paired"});
    EXPECT_EQ(none.exitCode, 3u);
    EXPECT_EQ(none.output, "No paired device found.\n");
}

TEST(List, WithNothingToShowSaysSo)
{
    UseScenario("");
    auto const result = RunVorlinkctl({"list"});
    EXPECT_EQ(result.exitCode, 3u);
    EXPECT_THAT(result.output, StartsWith("No device found.\n"));
    EXPECT_EQ(RunVorlinkctl({"list", "--quiet"}).output, "No device found.\n");
}

TEST(List, OfJsonIsAnObjectADevice)
{
    UseScenario(twoDevices);
    auto const result = RunVorlinkctl({"list", "--json"});
    auto const objects = Objects(result.output);
    ASSERT_EQ(objects.size(), 3u);
    EXPECT_EQ(objects[0]["event"], "device");
    EXPECT_EQ(objects[0]["name"], "Speaker");
    EXPECT_EQ(objects[0]["address"], "a4:c1:38:5e:22:0f");
    EXPECT_EQ(objects[0]["paired"], true);
    EXPECT_EQ(objects[0]["can_pair"], true);
    EXPECT_EQ(objects[0]["connected"], true);
    EXPECT_EQ(objects[0]["signal"], -48);
    auto const& endpoints = objects[0]["endpoints"];
    ASSERT_EQ(endpoints.size(), 2u);
    EXPECT_EQ(endpoints[0]["protocol"], "Classic");
    EXPECT_EQ(endpoints[0]["paired"], false);
    EXPECT_EQ(endpoints[1]["protocol"], "LE");
    EXPECT_EQ(endpoints[1]["paired"], true);
    EXPECT_EQ(endpoints[1]["present"], true);
    EXPECT_THAT(std::string(endpoints[1]["id"]), StartsWith("BluetoothLE#"));
    EXPECT_EQ(objects[1]["name"], "Lamp");
    EXPECT_EQ(objects[1]["can_pair"], false);
    EXPECT_EQ(objects[2]["event"], "outcome");
    EXPECT_EQ(objects[2]["exit_code"], 0);
    EXPECT_EQ(objects[2]["count"], 2);
    EXPECT_EQ(objects[2]["paired_count"], 1);
    EXPECT_EQ(objects[2]["complete"], true);
}

TEST(List, EndsAtItsTimeWithWhatIsSeen)
{
    UseScenario(std::string(endless) + twoDevices);
    auto const result = RunVorlinkctl({"list", "--timeout", "1"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output,
                HasSubstr("2 devices, 1 paired. The search was not complete after 1 s.\nWith --timeout 30"));
    EXPECT_EQ(Objects(RunVorlinkctl({"list", "--timeout", "1", "--json"}).output).back()["complete"], false);
}

TEST(List, EndsByCtrlC)
{
    UseScenario(std::string(endless) + twoDevices);
    LiveVorlinkctl vorlinkctl({"list"});
    EXPECT_TRUE(WaitUntil([] { return !ReadFile("stderr.txt").empty(); })) << "it looks for devices";
    vorlinkctl.PressCtrlC();
    auto const result = vorlinkctl.Finish();
    EXPECT_THAT(result.exitCode, AnyOf(0u, 3u)) << "whether or not it has seen one yet";
    EXPECT_THAT(result.output, HasSubstr(" The search was ended early.\n"));
}

TEST(List, ThatWatchesPrintsALineAChange)
{
    UseScenario(R"(
[[device]]
name = "Lamp"
address = "00:00:00:00:00:01"
leaves-ms = 900
[[device.change]]
at-ms = 500
property = "System.Devices.Aep.IsPaired"
value = true
)");
    auto const result = RunVorlinkctl({"list", "--watch", "--timeout", "2"});
    EXPECT_EQ(result.output, "+ Lamp  00:00:00:00:00:01  Classic  can pair  -60 dBm\n"
                             "~ Lamp  00:00:00:00:00:01  Classic  paired  -60 dBm\n"
                             "- Lamp  00:00:00:00:00:01  Classic  paired  -60 dBm\n"
                             "No device found.\n"
                             "Switch it on, bring it near, and make it discoverable.\n");
    EXPECT_EQ(result.exitCode, 3u);
}

TEST(List, ThatWatchesGoesOnUntilCtrlC)
{
    UseScenario("[[device]]\nname = 'Late'\naddress = '00:00:00:00:00:01'\n"
                "appears-ms = 900\n"); // after the search is complete
    LiveVorlinkctl vorlinkctl({"list", "--watch"});
    EXPECT_THAT(vorlinkctl.ReadLine(), StartsWith("+ Late  "));
    EXPECT_TRUE(vorlinkctl.Runs());
    vorlinkctl.PressCtrlC();
    auto const result = vorlinkctl.Finish();
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, "1 device, 0 paired.\n");
}

TEST(List, ThatWatchesTellsChangesAsJson)
{
    UseScenario("[[device]]\nname = 'Lamp'\naddress = '00:00:00:00:00:01'\nleaves-ms = 300\n");
    auto const objects = Objects(RunVorlinkctl({"list", "--watch", "--timeout", "1", "--json"}).output);
    ASSERT_EQ(objects.size(), 3u);
    EXPECT_EQ(objects[0]["event"], "added");
    EXPECT_EQ(objects[0]["name"], "Lamp");
    EXPECT_EQ(objects[0]["protocol"], "Classic");
    EXPECT_EQ(objects[1]["event"], "removed");
    EXPECT_EQ(objects[1]["name"], "Lamp");
    EXPECT_EQ(objects[2]["event"], "outcome");
    EXPECT_EQ(objects[2]["exit_code"], 3);
}

TEST(List, OfAFailingPlatformSaysWhy)
{
    UseScenario("[[device]]\naddress = 12\n");
    auto const result = RunVorlinkctl({"list"});
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_THAT(result.output, HasSubstr("0x80070057"));
    EXPECT_THAT(result.error, HasSubstr("vorlink_simulator: "));
}

TEST(List, HasNoTwoProtocolsToChooseFrom)
{
    EXPECT_EQ(RunVorlinkctl({"list", "--classic", "--le"}).exitCode, 2u);
    EXPECT_EQ(RunVorlinkctl({"list", "Speaker"}).exitCode, 2u);
    EXPECT_EQ(RunVorlinkctl({"list", "--timeout", "0"}).exitCode, 2u);
}
