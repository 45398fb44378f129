// vorlinkctl phones, from outside: which devices it lists, and how.
#include "tests/host/ChildProcess.h"
#include "tests/host/Neighbourhood.h"

#include <gmock/gmock.h>

using namespace test;
using testing::HasSubstr;
using testing::StartsWith;

TEST(Phones, AreListedInTheOrderInWhichTheyAppear)
{
    UseScenario(R"(
[[device]]
name = "Late"
address = "c4:00:00:00:00:01"
appears-ms = 200
[[device]]
name = "Early"
address = "c4:00:00:00:00:02"
[[device]]
name = "Between"
address = "c4:00:00:00:00:03"
appears-ms = 100
)");
    auto const result = RunVorlinkctl({"phones"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, "Early\nBetween\nLate\n3 devices found.\n");
    EXPECT_EQ(result.error, "Looking for devices to pair ...\n");
}

TEST(Phones, OfOneNameAreListedEach)
{
    UseScenario(R"(
[[device]]
name = "Twin"
address = "c4:00:00:00:00:01"
[[device]]
name = "Twin"
address = "c4:00:00:00:00:02"
)");
    EXPECT_EQ(RunVorlinkctl({"phones"}).output, "Twin\nTwin\n2 devices found.\n");
}

TEST(Phones, ShowNamesOutsideAsciiByteForByte)
{
    UseScenario(R"(
[[device]]
name = "Zoë 的手机"
address = "c4:00:00:00:00:01"
[[device]]
name = "🔊🎧📱🚗⌚🦊🐙"
address = "c4:00:00:00:00:02"
appears-ms = 50
)");
    EXPECT_EQ(RunVorlinkctl({"phones"}).output, "Zoë 的手机\n🔊🎧📱🚗⌚🦊🐙\n2 devices found.\n");
}

TEST(Phones, WithAHostileNameAreShownHarmlessly)
{
    UseScenario("[[device]]\nname = \"Red\\u001b[31m\\n\\u202Etxt\"\naddress = 'c4:00:00:00:00:01'\n");
    EXPECT_EQ(RunVorlinkctl({"phones"}).output, "Red\\x1B[31m\\x0A\\u202Etxt\n1 device found.\n");
}

TEST(Phones, ThatAreNothingToPairAreNotListed)
{
    UseScenario(R"(
[[device]]
name = "Paired"
address = "c4:00:00:00:00:01"
is-paired = true
[[device]]
name = "Unwilling"
address = "c4:00:00:00:00:02"
can-pair = false
[[device]]
name = ""
address = "c4:00:00:00:00:03"
[[device]]
name = "Le"
address = "c4:00:00:00:00:04"
protocols = ["le"]
[[device]]
name = "Phone"
address = "c4:00:00:00:00:05"
)");
    EXPECT_EQ(RunVorlinkctl({"phones"}).output, "Phone\n1 device found.\n");
}

TEST(Phones, AnEmptyRoomIsNotFoundWithAdvice)
{
    UseScenario("");
    auto const result = RunVorlinkctl({"phones"});
    EXPECT_EQ(result.exitCode, 3u);
    EXPECT_THAT(result.output, StartsWith("No device found.\n"));
    EXPECT_THAT(result.output, HasSubstr("make it discoverable"));
}
