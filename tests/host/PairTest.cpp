// vorlinkctl pair, from outside: what it prints and the code that it ends with, for each outcome.
#include "host/Meanings.h"
#include "tests/host/ChildProcess.h"
#include "tests/host/LiveVorlinkctl.h"
#include "tests/host/Neighbourhood.h"
#include "tests/support/LogFile.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <filesystem>

using namespace test;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(Pair, PrintsTheNameAndTheAddress)
{
    auto const result = RunVorlinkctl({"pair", "Kitchen Speaker", "--no-learn"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, "Paired \"Kitchen Speaker\" (a4:c1:38:5e:22:0f).\n");
    EXPECT_EQ(result.error, "Looking for \"Kitchen Speaker\" and pairing it ...\n");
    EXPECT_FALSE(std::filesystem::exists("log.log"));
}

TEST(Pair, TakesAndPrintsNamesOutsideAscii)
{
    UseScenario(R"(
[[device]]
name = "Küchenlautsprecher 🔊"
address = "20:3b:34:54:8a:1d"
)");
    auto const result = RunVorlinkctl({"pair", "Küchenlautsprecher 🔊", "--no-learn"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, "Paired \"Küchenlautsprecher 🔊\" (20:3b:34:54:8a:1d).\n");
}

TEST(Pair, AnUnknownNameIsNotFound)
{
    auto const result = RunVorlinkctl({"pair", "Nobody"});
    EXPECT_EQ(result.exitCode, 3u);
    EXPECT_THAT(result.output, HasSubstr("Not found: no Bluetooth device named \"Nobody\""));
}

TEST(Pair, AnUnknownNameThatOverflowsItsFieldIsNotFound)
{
    auto const result = RunVorlinkctl({"pair", std::string(200, 'n')});
    EXPECT_EQ(result.exitCode, 3u);
}

TEST(Pair, ADeviceThatAsksForAPinIsNotPaired)
{
    UseScenario(R"(
[[device]]
name = "Keyboard"
address = "d0:3e:7d:92:0c:58"
[device.pairing]
kind = "ProvidePin"
pin = "731064"
)");
    auto const result = RunVorlinkctl({"pair", "Keyboard"});
    EXPECT_EQ(result.exitCode, 4u);
    EXPECT_THAT(result.output, HasSubstr("found \"Keyboard\" (d0:3e:7d:92:0c:58)"));
}

TEST(Pair, ASearchWithoutEndIsNoAnswer)
{
    UseScenario(R"(enumeration-completes-ms = "never")");
    auto const result = RunVorlinkctl({"pair", "Nobody", "--timeout", "1"});
    EXPECT_EQ(result.exitCode, 5u);
    EXPECT_THAT(result.output, HasSubstr("No answer: the search for \"Nobody\" did not end within 1 s."));
}

TEST(Pair, APairingWithoutEndIsNoAnswer)
{
    UseScenario(R"(
[[device]]
name = "Dreamer"
address = "d0:3e:7d:92:0c:58"
[device.pairing]
duration-ms = "never"
)");
    auto const result = RunVorlinkctl({"pair", "Dreamer", "--timeout", "2"});
    EXPECT_EQ(result.exitCode, 5u);
    EXPECT_THAT(result.output, HasSubstr("No answer: the pairing of \"Dreamer\" did not end within 2 s."));
}

TEST(Pair, ControlCharactersOfANameAreSpelledOut)
{
    UseScenario(R"(
[[device]]
name = "Red\u001b[31m"
address = "d0:3e:7d:92:0c:58"
)");
    auto const result = RunVorlinkctl({"pair", "Red\x1b[31m", "--no-learn", "--log"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output, HasSubstr("Paired \"Red\\x1B[31m\""));
    EXPECT_THAT(result.output + result.error, Not(HasSubstr("\x1b")));
}

namespace
{
    constexpr char televisions[] = R"(
[[device]]
name = "Living Room TV Soundbar"
address = "c4:00:00:00:00:01"
[[device]]
name = "Living Room TV"
address = "c4:00:00:00:00:02"
appears-ms = 100
)";
} // namespace

TEST(Pair, TellsTheDevicesOwnNameWhereItOnlyContainsTheOneAskedFor)
{
    UseScenario(televisions);
    auto const result = RunVorlinkctl({"pair", "Living Room TV", "--no-learn"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output,
                StartsWith("Paired \"Living Room TV Soundbar\" (c4:00:00:00:00:01).\nWarning: the device is called "
                           "\"Living Room TV Soundbar\", not \"Living Room TV\""));
}

TEST(Pair, ExactlyRefusesADeviceThatOnlyContainsTheName)
{
    UseScenario(televisions);
    auto const result = RunVorlinkctl({"pair", "Living Room TV", "--no-learn", "--exact", "--log"});
    EXPECT_EQ(result.exitCode, 4u);
    EXPECT_THAT(result.output,
                StartsWith("Not paired: the first device found is \"Living Room TV Soundbar\" (c4:00:00:00:00:01), "
                           "not \"Living Room TV\".\nNothing was done."));
    EXPECT_THAT(result.output, HasSubstr("  nothing\n")) << "the library was not asked";
}

TEST(Pair, ExactlyPairsTheDeviceOfTheName)
{
    UseScenario(televisions);
    auto const result = RunVorlinkctl({"pair", "Living Room TV Soundbar", "--no-learn", "--exact"});
    EXPECT_EQ(result.output, "Paired \"Living Room TV Soundbar\" (c4:00:00:00:00:01).\n");
    EXPECT_EQ(RunVorlinkctl({"pair", "Nobody", "--exact"}).exitCode, 3u);
}

TEST(Pair, ByAddressPairsTheOneOfSeveral)
{
    UseScenario(televisions);
    auto const result = RunVorlinkctl({"pair", "--address", "C4-00-00-00-00-02"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, "Paired \"Living Room TV\" (c4:00:00:00:00:02).\n");
    EXPECT_EQ(RunVorlinkctl({"pair", "--address", "c4:00:00:00:00:03"}).exitCode, 3u);
}

TEST(Pair, ByAddressTellsThePlatformsStatus)
{
    UseScenario(
        "[[device]]\nname = 'Tag'\naddress = 'c4:00:00:00:00:01'\n[device.pairing]\nstatus = 'TooManyConnections'\n");
    auto const result = RunVorlinkctl({"pair", "--address", "c4:00:00:00:00:01"});
    EXPECT_EQ(result.exitCode, 4u);
    EXPECT_THAT(result.output, HasSubstr("the device takes no more connections (TooManyConnections)."));
}

TEST(Pair, ByAddressEndsWithTheTimeLimit)
{
    UseScenario("[[device]]\nname = 'Tag'\naddress = 'c4:00:00:00:00:01'\n[device.pairing]\nduration-ms = 'never'\n");
    EXPECT_EQ(RunVorlinkctl({"pair", "--address", "c4:00:00:00:00:01", "--timeout", "1"}).exitCode, 5u);
}

TEST(Pair, CtrlCSaysWhatItHasLeftBehind)
{
    UseScenario(
        "[[device]]\nname = 'Dreamer'\naddress = 'd0:3e:7d:92:0c:58'\n[device.pairing]\nduration-ms = 'never'\n");
    LiveVorlinkctl vorlinkctl({"pair", "Dreamer", "--log"});
    vorlinkctl.WaitForLog("CLassic id is");
    vorlinkctl.PressCtrlC();
    auto const result = vorlinkctl.Finish();
    EXPECT_EQ(result.exitCode, 5u);
    EXPECT_THAT(result.output,
                StartsWith("Interrupted: \"Dreamer\" was being paired.\nThe platform had been asked for it"));
}

TEST(Pair, CtrlCInTheSearchLeavesNothingBehind)
{
    UseScenario("enumeration-completes-ms = 'never'\n");
    LiveVorlinkctl vorlinkctl({"pair", "Nobody", "--log"});
    vorlinkctl.WaitForLog("Nobody");
    vorlinkctl.PressCtrlC();
    auto const result = vorlinkctl.Finish();
    EXPECT_EQ(result.exitCode, 5u);
    EXPECT_THAT(result.output,
                StartsWith("Interrupted: \"Nobody\" was not paired.\nNothing had been asked of it yet.\n"));
}

TEST(Pair, TakesANameThatBeginsWithAHyphen)
{
    UseScenario("[[device]]\nname = '-x'\naddress = 'd0:3e:7d:92:0c:58'\n");
    EXPECT_EQ(RunVorlinkctl({"pair", "--no-learn", "--", "-x"}).exitCode, 0u);
}

TEST(Pair, EachStatusIsExplained)
{
    for (auto const& meaning : host::Meanings())
    {
        bool const isAnswer = meaning.family == host::Family::Pairing && meaning.value != 15;
        if (!isAnswer || meaning.name == "Paired")
        {
            continue;
        }
        auto const status = std::string(meaning.name);
        UseScenario("[[device]]\nname = 'Tag'\naddress = 'c4:00:00:00:00:01'\n[device.pairing]\nstatus = '" + status +
                    "'\n");
        auto const result = RunVorlinkctl({"pair", "Tag", "--json"});
        EXPECT_EQ(result.exitCode, static_cast<DWORD>(meaning.code)) << status;
        EXPECT_THAT(result.output, HasSubstr("\"outcome\":\"" + status + "\"")) << status;
    }
}
