// vorlinkctl's command line: what is refused, help and version.
#include "host/Meanings.h"
#include "tests/host/ChildProcess.h"
#include "tests/support/LogFile.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <fstream>
#include <regex>
#include <string>

using namespace test;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::StartsWith;

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

TEST(CommandLine, TheVersionsOfProgramAndLibraryArePrinted)
{
    auto const result = RunVorlinkctl({"--version"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, "vorlinkctl " VORLINK_VERSION "\nvorlink.dll " VORLINK_VERSION "\n");
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

TEST(CommandLine, ANearMissIsNamed)
{
    EXPECT_THAT(RunVorlinkctl({"pairr", "x"}).error, HasSubstr("Did you mean pair?"));
    EXPECT_THAT(RunVorlinkctl({"pair", "x", "--timeot", "3"}).error, HasSubstr("Did you mean --timeout?"));
    EXPECT_THAT(RunVorlinkctl({"explain", "Failled"}).error, HasSubstr("did you mean Failed?"));
    EXPECT_THAT(RunVorlinkctl({"dance"}).error, HasSubstr("There are: pair, unpair, "));
    EXPECT_THAT(RunVorlinkctl({"pair", "-x-speaker"}).error,
                HasSubstr("A name that begins with \"-\" goes behind \"--\"."));
}

TEST(CommandLine, WithoutAWordTheWholeHelpIsShown)
{
    EXPECT_THAT(RunVorlinkctl({}).error, HasSubstr("\n  pair-phone  "));
}

TEST(CommandLine, HelpNamesRangesAndHasExamples)
{
    auto const help = RunVorlinkctl({"pair", "--help"}).output;
    EXPECT_THAT(help, HasSubstr("(1 to 86400)"));
    EXPECT_THAT(help, HasSubstr("Examples:\n  vorlinkctl pair \"Kitchen Speaker\"\n"));
}

TEST(CommandLine, TheManualAndTheCompletionsKnowEachSubcommand)
{
    auto const manual = RunVorlinkctl({"manual"}).output;
    auto const bash = RunVorlinkctl({"completion", "bash"}).output;
    auto const powershell = RunVorlinkctl({"completion", "powershell"}).output;
    EXPECT_THAT(manual, StartsWith(".TH VORLINKCTL 1 "));
    for (std::string const command : {"pair", "unpair", "phones", "pair-phone", "explain", "trace", "scenario"})
    {
        EXPECT_THAT(manual, HasSubstr("\n.SS " + std::regex_replace(command, std::regex("-"), "\\-") + "\n"));
        EXPECT_THAT(bash, HasSubstr("    " + command + ") words=\""));
        EXPECT_THAT(powershell, HasSubstr("        '" + command + "' = '"));
    }
    EXPECT_THAT(manual, HasSubstr("\n.SS scenario check\n"));
}

TEST(CommandLine, LostOutputIsAFailure)
{
    auto const full = CreateFileW(L"\\\\?\\unix/dev/full", GENERIC_WRITE, 0, nullptr, OPEN_EXISTING, 0, nullptr);
    if (full == INVALID_HANDLE_VALUE)
    {
        GTEST_SKIP() << "only Wine has a device that is always full";
    }
    SetHandleInformation(full, HANDLE_FLAG_INHERIT, HANDLE_FLAG_INHERIT);
    auto const error = FileForChild(L"stderr.txt");
    EXPECT_EQ(WaitForEnd(StartChild(BinFolder() / "vorlinkctl.exe", {"phones"}, full, error)), 1u);
    CloseHandle(full);
    CloseHandle(error);
    EXPECT_THAT(ReadFile("stderr.txt"), HasSubstr("vorlinkctl: output was lost (Windows error 112)."));
}

TEST(CommandLine, QuietLeavesTheResultAlone)
{
    auto const result = RunVorlinkctl({"pair", "Nobody", "--quiet"});
    EXPECT_EQ(result.output, "Not found: no Bluetooth device named \"Nobody\".\n");
    EXPECT_THAT(result.error, IsEmpty());
}

TEST(CommandLine, VerboseTellsHowItWent)
{
    auto const result = RunVorlinkctl({"pair", "Kitchen Speaker", "--no-learn", "--verbose"});
    EXPECT_THAT(result.error, HasSubstr("The library's search looked at "));
    EXPECT_THAT(result.error, HasSubstr("\"Kitchen Speaker\".\nThe answer took "));
}

TEST(CommandLine, ColoursAreForWhoAsks)
{
    EXPECT_THAT(RunVorlinkctl({"explain", "Paired"}).output, Not(HasSubstr("\x1b[")));
    EXPECT_THAT(RunVorlinkctl({"explain", "Paired", "--color", "always"}).output, HasSubstr("\x1b[32mPaired\x1b[0m"));
}

TEST(Explain, SaysEachOutcomeInTwoLines)
{
    auto const output = RunVorlinkctl({"explain"}).output;
    for (auto const& meaning : host::Meanings())
    {
        EXPECT_THAT(output, HasSubstr("\n" + std::string(meaning.name) + " ("));
        EXPECT_THAT(output, HasSubstr("\n  " + std::string(meaning.next) + "\n"));
    }
}

TEST(Explain, TakesANameAsTheLogHasItInAnyCase)
{
    auto const result = RunVorlinkctl({"explain", "devicepairingresultstatus::connectionrejected"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output,
                HasSubstr("\nConnectionRejected (4, exit code 4)\n  The device turned the connection down.\n"));
}

TEST(ScenarioCheck, TellsEachFaultWithItsLine)
{
    std::ofstream("kitchen.toml")
        << "[[device]]\nadress = 'a4:c1:38:5e:22:0f'\n[[device]]\naddress = 'a4:c1:38:5e:22:0f'\nappears-ms = -1\n";
    auto const result = RunVorlinkctl({"scenario", "check", "kitchen.toml"});
    EXPECT_EQ(result.exitCode, 1u);
    EXPECT_THAT(result.output, HasSubstr("kitchen.toml:2: 'adress': "));
    EXPECT_THAT(result.output, HasSubstr("kitchen.toml:5: 'appears-ms': "));
    auto const json = RunVorlinkctl({"scenario", "check", "kitchen.toml", "--json"}).output;
    EXPECT_THAT(json, HasSubstr("{\"event\":\"fault\",\"file\":\"kitchen.toml\",\"line\":5,\"text\":\"'appears-ms': "));
}

TEST(ScenarioCheck, FindsNothingInASoundOne)
{
    std::ofstream("kitchen.toml") << "[[device]]\naddress = 'a4:c1:38:5e:22:0f'\n";
    auto const result = RunVorlinkctl({"scenario", "check", "kitchen.toml"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, "No fault in kitchen.toml.\n");
    EXPECT_EQ(RunVorlinkctl({"scenario", "check", "missing.toml"}).exitCode, 1u);
}
