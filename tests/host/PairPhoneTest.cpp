// vorlinkctl pair-phone, from outside: what it prints and the code that it ends with, for each outcome.
#include "tests/host/ChildProcess.h"
#include "tests/host/Folders.h"
#include "tests/host/LiveVorlinkctl.h"
#include "tests/host/Neighbourhood.h"
#include "tests/support/LogFile.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <array>
#include <cstdio>
#include <filesystem>
#include <string>

using namespace test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

namespace
{
    std::string Phone(std::string const& rest = "")
    {
        return "[[device]]\nname = 'My Own Mobile Phone'\naddress = 'c4:00:00:00:00:01'\n" + rest;
    }

    constexpr char paired[] = "Paired \"My Own Mobile Phone\" (c4:00:00:00:00:01).\n";
    constexpr char endless[] = "enumeration-completes-ms = 'never'\n";
} // namespace

TEST(PairPhone, PairsThePhoneAsSoonAsItAppears)
{
    UseScenario(endless + Phone("appears-ms = 300\n"));
    auto const temp = UseOwnTempFolder();
    auto const result = RunVorlinkctl({"pair-phone", "My Own Mobile Phone", "--no-learn", "--timeout", "20"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, paired) << "before the search is over";
    EXPECT_EQ(result.error, "Looking for \"My Own Mobile Phone\" and pairing it ...\n");
    EXPECT_THAT(NamesIn("."), ElementsAre("scenario.toml", "stderr.txt", "stdout.txt", "temp"));
    EXPECT_THAT(NamesIn(temp), IsEmpty());
}

TEST(PairPhone, TakesNamesOutsideAscii)
{
    UseScenario("[[device]]\nname = 'Zoë 📱'\naddress = 'c4:00:00:00:00:02'\n");
    auto const result = RunVorlinkctl({"pair-phone", "Zoë 📱", "--no-learn"});
    EXPECT_EQ(result.output, "Paired \"Zoë 📱\" (c4:00:00:00:00:02).\n");
}

TEST(PairPhone, PairsTheFirstOfTwoOfOneName)
{
    UseScenario(Phone("appears-ms = 200\n") +
                "[[device]]\nname = 'My Own Mobile Phone'\naddress = 'c4:00:00:00:00:02'\n");
    auto const result = RunVorlinkctl({"pair-phone", "My Own Mobile Phone", "--no-learn"});
    EXPECT_THAT(result.output, HasSubstr("(c4:00:00:00:00:02)"));
}

TEST(PairPhone, AnotherNameIsNotFound)
{
    UseScenario(Phone());
    for (auto const* const name :
         {"my own mobile phone", "My Own Mobile Phone ", "Own Mobile Phone", "My Own Mobile Phone 2"})
    {
        auto const result = RunVorlinkctl({"pair-phone", name});
        EXPECT_EQ(result.exitCode, 3u) << name;
        EXPECT_THAT(result.output, StartsWith("Not found: no Bluetooth device named \"" + std::string(name) + "\"."));
        EXPECT_THAT(result.output, HasSubstr("write its name exactly"));
    }
}

TEST(PairPhone, APhoneThatIsPairedAlreadyIsRefused)
{
    UseScenario(Phone("is-paired = true\n"));
    auto const result = RunVorlinkctl({"pair-phone", "My Own Mobile Phone"});
    EXPECT_EQ(result.exitCode, 4u);
    EXPECT_THAT(result.output, StartsWith("Already paired: \"My Own Mobile Phone\" (c4:00:00:00:00:01)"));
}

TEST(PairPhone, ANameThatArrivesLateIsPairedWhenTheSearchIsOver)
{
    UseScenario(R"(
[[device]]
name = ""
address = "c4:00:00:00:00:03"
[[device.change]]
at-ms = 100
property = "System.ItemNameDisplay"
value = "Late"
)");
    auto const result = RunVorlinkctl({"pair-phone", "Late", "--no-learn"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, "Paired \"Late\" (c4:00:00:00:00:03).\n");
}

TEST(PairPhone, ASearchBeyondTheTimeLimitIsNoAnswer)
{
    UseScenario(endless);
    auto const result = RunVorlinkctl({"pair-phone", "Nobody", "--timeout", "1"});
    EXPECT_EQ(result.exitCode, 5u);
    EXPECT_THAT(result.output, HasSubstr("No answer: the search for \"Nobody\" did not end within 1 s."));
}

TEST(PairPhone, APairingBeyondTheTimeLimitIsNoAnswer)
{
    UseScenario(Phone("[device.pairing]\nduration-ms = 'never'\n"));
    auto const result = RunVorlinkctl({"pair-phone", "My Own Mobile Phone", "--timeout", "3"});
    EXPECT_EQ(result.exitCode, 5u);
    EXPECT_THAT(result.output, HasSubstr("the pairing of \"My Own Mobile Phone\" did not end within 3 s."));
}

TEST(PairPhone, TheTimeLimitCountsFromTheBeginningOfTheSearch)
{
    UseScenario(endless + Phone("appears-ms = 1000\n[device.pairing]\nduration-ms = 1500\n"));
    EXPECT_EQ(RunVorlinkctl({"pair-phone", "My Own Mobile Phone", "--timeout", "2"}).exitCode, 5u);
}

TEST(PairPhone, CtrlCEndsTheSearch)
{
    UseScenario(endless + Phone());
    LiveVorlinkctl vorlinkctl({"pair-phone", "Somebody", "--log"});
    while (!std::filesystem::exists("log.log") && vorlinkctl.Runs()) // "My Own Mobile Phone" has been seen
    {
        Sleep(5);
    }
    vorlinkctl.PressCtrlC();
    auto const result = vorlinkctl.Finish();
    EXPECT_EQ(result.exitCode, 5u);
    EXPECT_THAT(result.output, StartsWith("Interrupted: \"Somebody\" was not paired.\n"));
}

TEST(PairPhone, ShowsTheLogOfSearchAndPairing)
{
    UseScenario(Phone());
    auto const result = RunVorlinkctl({"pair-phone", "My Own Mobile Phone", "--no-learn", "--log"});
    EXPECT_THAT(result.output, StartsWith(paired));
    EXPECT_THAT(result.output, HasSubstr("OnDeviceAdded    name = My Own Mobile Phone \n"));
    EXPECT_THAT(result.output, HasSubstr("DevicePairingResultStatus::Paired\n"));
}

TEST(PairPhone, CtrlCInThePairingSaysWhatItHasLeftBehind)
{
    UseScenario(Phone("[device.pairing]\nduration-ms = 'never'\n"));
    LiveVorlinkctl vorlinkctl({"pair-phone", "My Own Mobile Phone", "--log"});
    vorlinkctl.WaitForLog("find device ");
    vorlinkctl.PressCtrlC();
    auto const result = vorlinkctl.Finish();
    EXPECT_EQ(result.exitCode, 5u);
    EXPECT_THAT(result.output, StartsWith("Interrupted: \"My Own Mobile Phone\" was being paired.\n"));
}

TEST(PairPhone, TakesANameAsPhonesPrintsIt)
{
    UseScenario("[[device]]\nname = \"Red\\u001b[31m\\n\\u202Etxt \\\\x41\"\naddress = 'c4:00:00:00:00:01'\n");
    auto const listed = RunVorlinkctl({"phones", "--quiet"}).output;
    auto const name = listed.substr(0, listed.find('\n'));
    EXPECT_EQ(name, "Red\\x1B[31m\\x0A\\u202Etxt \\\\x41");
    auto const result = RunVorlinkctl({"pair-phone", name, "--no-learn"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, "Paired \"" + name + "\" (c4:00:00:00:00:01).\n");
}

TEST(PairPhone, TakesANameThatBeginsWithAHyphen)
{
    UseScenario("[[device]]\nname = '--log'\naddress = 'c4:00:00:00:00:01'\n");
    EXPECT_EQ(RunVorlinkctl({"pair-phone", "--no-learn", "--", "--log"}).output,
              "Paired \"--log\" (c4:00:00:00:00:01).\n");
}

TEST(PairPhone, ANameThatImitatesTheOutcomeIsNotBelieved)
{
    SYSTEMTIME now{};
    GetLocalTime(&now);
    std::array<char, 64> time{};
    std::snprintf(time.data(), time.size(), "%d-%02d-%02d %02d:%02d:%02d 000", now.wYear, now.wMonth, now.wDay,
                  now.wHour, now.wMinute, now.wSecond);
    auto const record = std::string("\\n") + time.data() +
                        "[File:SubVorlink][Line:796][Function:SubVorlink::PairingDevice] "
                        "DevicePairingResultStatus::Paired";
    UseScenario(endless + Phone("[device.pairing]\nstatus = 'AuthenticationFailure'\nduration-ms = 500\n") +
                "[[device]]\nname = \"x" + record + record + "\"\naddress = 'c4:00:00:00:00:02'\nappears-ms = 150\n");
    auto const result = RunVorlinkctl({"pair-phone", "My Own Mobile Phone"});
    EXPECT_EQ(result.exitCode, 4u);
    EXPECT_THAT(result.output, StartsWith("Not paired: found \"My Own Mobile Phone\" (c4:00:00:00:00:01)"));
}

TEST(PairPhone, TakesANameAsItStandsWhereToldTo)
{
    UseScenario("[[device]]\nname = 'a\\x41b'\naddress = 'c4:00:00:00:00:01'\n[[device]]\nname = 'aAb'\naddress = "
                "'c4:00:00:00:00:02'\n");
    EXPECT_THAT(RunVorlinkctl({"pair-phone", "a\\x41b", "--no-learn"}).output, HasSubstr("(c4:00:00:00:00:02)"));
    EXPECT_THAT(RunVorlinkctl({"pair-phone", "--literal", "a\\x41b", "--no-learn"}).output,
                HasSubstr("(c4:00:00:00:00:01)"));
}
