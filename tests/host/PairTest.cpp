// vorlinkctl pair, from outside: what it prints and the code that it ends with, for each outcome.
#include "tests/host/ChildProcess.h"
#include "tests/host/Neighbourhood.h"

#include <gmock/gmock.h>

#include <filesystem>

using namespace test;
using testing::HasSubstr;
using testing::Not;

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
