// vorlinkctl's command line: what is refused, help and version.
#include "tests/host/ChildProcess.h"

#include <gmock/gmock.h>

#include <string>

using namespace test;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(CommandLine, WhatIsWrongIsAUsageError)
{
    Arguments const wrong[] = {
        {},                         // no command
        {"dance"},                  // an unknown command
        {"pair"},                   // no name
        {"pair", ""},               // an empty name
        {"pair", "one", "two"},     // two names
        {"pair", "x", "--dance"},   // an unknown option
        {"pair", "x", "--timeout"}, // an option without its value
        {"pair", "x", "--timeout", "0"},
        {"pair", "x", "--timeout", "soon"},
        {"pair", "x", "--timeout", "86401"},
        {"unpair", "x", "--no-learn"},
        {"phones", "x"}, // a name
        {"phones", "--timeout", "0"},
        {"phones", "--no-learn"},
        {"pair-phone"},
        {"pair-phone", ""},
        {"pair-phone", "one", "two"},
        {"pair", "--address", "Kitchen"},
        {"pair", "x", "--address", "a4:c1:38:5e:22:0f"},
        {"pair", "x", "--quiet", "--verbose"},
        {"pair", "x", "--color", "sometimes"},
        {"unpair", "x", "--exact"},
    };
    for (auto const& arguments : wrong)
    {
        SCOPED_TRACE(testing::PrintToString(arguments));
        auto const result = RunVorlinkctl(arguments);
        EXPECT_EQ(result.exitCode, 2u);
        EXPECT_THAT(result.output, IsEmpty());
        EXPECT_THAT(result.error, HasSubstr("--help"));
    }
}

TEST(CommandLine, HelpListsTheExitCodes)
{
    for (auto const& arguments : {Arguments{"--help"}, Arguments{"pair", "--help"}})
    {
        auto const result = RunVorlinkctl(arguments);
        EXPECT_EQ(result.exitCode, 0u);
        EXPECT_THAT(result.output, HasSubstr("5  no answer within the time limit"));
        EXPECT_THAT(result.error, IsEmpty());
    }
}

TEST(CommandLine, HelpListsTheCommands)
{
    auto const result = RunVorlinkctl({"--help"});
    for (auto const* const command : {"\n  pair  ", "\n  unpair  ", "\n  phones  ", "\n  pair-phone  "})
    {
        EXPECT_THAT(result.output, HasSubstr(command));
    }
}

TEST(CommandLine, HelpSaysHowNamesAreCompared)
{
    constexpr char longNames[] = "A name of 14 bytes or more also matches";
    EXPECT_THAT(RunVorlinkctl({"pair", "--help"}).output, HasSubstr(longNames));
    EXPECT_THAT(RunVorlinkctl({"phones", "--help"}).output, Not(HasSubstr(longNames)));
    auto const help = RunVorlinkctl({"pair-phone", "--help"}).output;
    EXPECT_THAT(help, Not(HasSubstr(longNames)));
    EXPECT_THAT(help, HasSubstr("The name must be exactly the one"));
}

TEST(CommandLine, VersionIsPrinted)
{
    auto const result = RunVorlinkctl({"--version"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, "vorlinkctl " VORLINK_VERSION "\n");
}

TEST(CommandLine, AnythingIsAName)
{
    for (auto const& arguments :
         {Arguments{"pair", "pair"}, Arguments{"pair", "/log"}, Arguments{"pair", "--", "--log"}})
    {
        auto const result = RunVorlinkctl(arguments);
        EXPECT_EQ(result.exitCode, 3u);
        EXPECT_THAT(result.output, HasSubstr("named \"" + arguments.back() + "\""));
    }
}
