// vorlinkctl pair --log: the records of this run, after the outcome.
#include "tests/host/ChildProcess.h"
#include "tests/host/Neighbourhood.h"

#include <gmock/gmock.h>

using namespace test;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

TEST(Log, FollowsTheOutcome)
{
    auto const result = RunVorlinkctl({"pair", "Kitchen Speaker", "--no-learn", "--log"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output, StartsWith("Paired \"Kitchen Speaker\" (a4:c1:38:5e:22:0f).\n\n"
                                          "What the library logged (log.log):\n  2"));
    EXPECT_THAT(result.output, HasSubstr("Call  Pair entry name ->Kitchen Speaker\n"));
}

TEST(Log, HoldsTheRecordThatComesAfterTheReport)
{
    auto const result = RunVorlinkctl({"pair", "Kitchen Speaker", "--no-learn", "--log"});
    EXPECT_THAT(result.output, HasSubstr("DevicePairingResultStatus::Paired\n"));
}

TEST(Log, NamesTheReasonOfARefusal)
{
    UseScenario(R"(
[[device]]
name = "Friend"
address = "d0:3e:7d:92:0c:58"
[device.pairing]
status = "ConnectionRejected"
)");
    auto const result = RunVorlinkctl({"pair", "Friend", "--log"});
    EXPECT_EQ(result.exitCode, 4u);
    EXPECT_THAT(result.output, HasSubstr("DevicePairingResultStatus::ConnectionRejected\n"));
}

TEST(Log, LeavesOutTheRecordsOfEarlierRuns)
{
    RunVorlinkctl({"pair", "Nobody", "--log"});
    auto const result = RunVorlinkctl({"pair", "Somebody", "--log"});
    EXPECT_THAT(result.output, HasSubstr("name ->Somebody"));
    EXPECT_THAT(result.output, Not(HasSubstr("name ->Nobody")));
}
