// A wrong scenario tells all of its faults, whatever its size.
#include "tests/unit/ScenarioText.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <ctime>
#include <functional>
#include <string>

using namespace simulator;
using namespace test;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Lt;
using testing::StartsWith;

namespace
{
    std::string Times(int count, std::function<std::string(int)> const& text)
    {
        std::string all;
        for (int index = 0; index < count; ++index)
        {
            all += text(index);
        }
        return all;
    }

    // Some hundredths of a second, and under the sanitizers one or two: of the processor's time, where the system
    // tells.
    std::string QuickFaultsOf(std::string const& toml)
    {
        auto const start = std::clock();
        auto faults = FaultsOf(toml);
        EXPECT_THAT(std::clock() - start, Lt(5 * CLOCKS_PER_SEC)) << toml.substr(0, 80);
        return faults;
    }
} // namespace

TEST(ScenarioAllFaults, ComeInTheOrderOfTheirLines)
{
    EXPECT_EQ(FaultsOf(R"(event-threads = 0
[listing]
unrelated-devices = -1
duration-ms = "never"
mising = true
[[device]]
adress = "a4:c1:38:5e:22:0f"
appears-ms = -5
[device.pairing]
status = "Paird"
pin = 4
[[device]]
address = "a4:c1:38:5e:22:0f"
protocols = ["le", "clasic", "bredr"]
can-pair = 1
[device.le]
nmae = "x"
[[device.le.change]]
property = "System.ItemNameDisplai"
[device.properties]
"System.Devices.Aep.IsPresnt" = true
)"),
              R"(test.toml:1: 'event-threads': 0 where a number from 1 to 64 is expected
test.toml:3: 'unrelated-devices': -1 where a number from 0 to 2147483647 is expected
test.toml:4: 'duration-ms': 'never' where a number from 0 to 2147483647 is expected
test.toml:5: 'mising': unknown key; did you mean 'missing'?
test.toml:6: 'address': missing; a device needs it
test.toml:7: 'adress': unknown key; did you mean 'address'?
test.toml:8: 'appears-ms': -5 where milliseconds from 0 to 2147483647, or "never", are expected
test.toml:10: 'status': 'Paird' where a number from -2147483648 to 2147483647 or a name is expected: )"
              "Paired, NotReadyToPair, NotPaired, AlreadyPaired, ConnectionRejected, TooManyConnections, "
              "HardwareFailure, AuthenticationTimeout, AuthenticationNotAllowed, AuthenticationFailure, "
              "NoSupportedProfiles, ProtectionLevelCouldNotBeMet, AccessDenied, InvalidCeremonyData, "
              "PairingCanceled, OperationAlreadyInProgress, RequiredHandlerNotRegistered, RejectedByHandler, "
              "RemoteDeviceHasAssociation, Failed; did you mean 'Paired'?"
              R"(
test.toml:11: 'pin': 4 where a text in quotes is expected
test.toml:14: 'protocols': 'clasic' where a name is expected: classic, le; did you mean 'classic'?
test.toml:14: 'protocols': 'bredr' where a name is expected: classic, le
test.toml:15: 'can-pair': 1 where true or false is expected
test.toml:17: 'nmae': unknown key; did you mean 'name'?
test.toml:18: 'at-ms': missing; a change needs it
test.toml:18: 'value': missing; a change needs it, or 'unset = true'
test.toml:19: 'property': 'System.ItemNameDisplai' where a property is expected; did you mean 'System.ItemNameDisplay'?
test.toml:21: 'System.Devices.Aep.IsPresnt': unknown property; did you mean 'System.Devices.Aep.IsPresent'?)");
}

TEST(ScenarioAllFaults, MistypedNamesAreGuessedWhenNear)
{
    auto const guess = [](std::string_view key) {
        auto const fault = FaultsOf(Device(std::string(key) + " = 1\n"));
        auto const begin = fault.find("mean '");
        return begin == std::string::npos ? "" : fault.substr(begin + 6, fault.find('\'', begin + 6) - begin - 6);
    };
    EXPECT_EQ(guess("adress"), "address");
    EXPECT_EQ(guess("ADDRESS"), "address");
    EXPECT_EQ(guess("nmae"), "name");
    EXPECT_EQ(guess("appears"), "appears-ms");
    EXPECT_EQ(guess("leave-ms"), "leaves-ms");
    EXPECT_EQ(guess("protocol"), "protocols");
    EXPECT_EQ(guess("chnage"), "change");
    EXPECT_EQ(guess("li"), "le");
    for (auto const* const far : {"x", "id", "colour", "apples", "is-listed-there", "addressaddress"})
    {
        EXPECT_EQ(guess(far), "") << far;
    }
}

TEST(ScenarioAllFaults, StayALineEach)
{
    EXPECT_EQ(FaultsOf(Device("name = [1]\n\"a\\nb\" = 1\n[device.pairing]\nkind = \"x\\r\\ny\\u007f\"\n")),
              FaultsOf(Device("name = [1]\n\"a b\" = 1\n[device.pairing]\nkind = \"x  y \"\n")));
    auto const longer =
        FaultsOf("adapter = \"" + std::string(100'000, 'x') + "\"\n" + std::string(100'000, 'k') + " = 1");
    EXPECT_THAT(longer.size(), Lt(500u));
    EXPECT_THAT(FaultsOf("adapter = \"" + Times(500, [](int) { return "ë"; }) + "\""), HasSubstr("ë…'"));
}

TEST(ScenarioAllFaults, AreListedUpToAHundred)
{
    auto const keys = [](int count) {
        return Times(count, [](int index) { return "k" + std::to_string(index) + " = 1\n"; });
    };
    EXPECT_THAT(FaultsOf(keys(100)), EndsWith("\ntest.toml:100: 'k99': unknown key"));
    EXPECT_THAT(FaultsOf(keys(101)), EndsWith("\ntest.toml:100: 'k99': unknown key\n... and 1 more"));
    EXPECT_EQ(std::ranges::count(FaultsOf(keys(300)), '\n'), 100);
    EXPECT_THAT(FaultsOf(keys(300)), EndsWith("\n... and 200 more"));
}

TEST(ScenarioAllFaults, OfLongTextsAreToldInTime)
{
    auto const numbered = [](int count, std::string const& before, std::string const& behind) {
        return Times(count, [&](int index) { return before + std::to_string(index) + behind; });
    };
    auto const more = [](int count) { return "\n... and " + std::to_string(count - 100) + " more"; };
    EXPECT_THAT(QuickFaultsOf(numbered(20'000, "k", ".x = 1\n")), EndsWith(more(20'000)));
    EXPECT_THAT(QuickFaultsOf(Device("") + numbered(20'000, "[[device.change]]\n# ", "\n")), EndsWith(more(60'000)));
    EXPECT_THAT(QuickFaultsOf(Device("protocols = [" + numbered(20'000, "'le', # ", "\n") + "]\n")),
                StartsWith("test.toml:3: 'protocols': 'le' is there twice"));
    EXPECT_THAT(QuickFaultsOf("a = " + std::string(20'000, '[')), StartsWith("test.toml:1: "));
    // Each of these takes its time, though no more than the one before it.
    EXPECT_THAT(QuickFaultsOf(numbered(2'000, "[[device]]\n# ", "\n")), EndsWith(more(2'000)));
    EXPECT_THAT(QuickFaultsOf(Device("[device.properties]\n") + numbered(2'000, "\"System.Devices.Aep.Is", "\" = 1\n")),
                EndsWith(more(2'000)));
}

TEST(ScenarioAllFaults, OfDeepKeysEndNoProcess)
{
    std::string const deeper = Times(1'000'000, [](int) { return ".a"; });
    for (auto const& path : {"a" + deeper, "a." + Times(20'000, [](int) { return "\"a.b\" . 'c'."; }) + "a"})
    {
        EXPECT_EQ(QuickFaultsOf("\n" + path + " = 1\n"), "test.toml:2: a key of more than 32 parts");
        EXPECT_EQ(QuickFaultsOf("\n[" + path + "]\n"), "test.toml:2: a key of more than 32 parts");
        EXPECT_EQ(QuickFaultsOf("a = {" + path + " = 1}"), "test.toml:1: a key of more than 32 parts");
    }
    // Each inline table nests by as much as a key may.
    std::string const step = Times(31, [](int) { return "a."; }) + "a = {";
    EXPECT_THAT(QuickFaultsOf(Times(1000, [&](int) { return step; })), StartsWith("test.toml:1: "));
    EXPECT_THAT(QuickFaultsOf(step + "}"), StartsWith("test.toml:1: 'a': unknown key"));
}

TEST(ScenarioAllFaults, DoNotTakeTheDotsOfATextForAKey)
{
    auto const dots = std::string(100, '.');
    for (auto const& text : {"\"" + dots + "\"", "'" + dots + "'", "\"\"\"\n" + dots + "\\\"\"\"\"",
                             "'''\n" + dots + "'''", "\"\\\"" + dots + "\""})
    {
        EXPECT_EQ(FaultsOf("# " + dots + "\n" + Device("name = " + text + " # " + dots + "\n")), "no fault") << text;
    }
}
