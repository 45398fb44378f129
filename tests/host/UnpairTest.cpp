// vorlinkctl unpair, from outside: what it prints and the code that it ends with, for each outcome.
#include "tests/host/ChildProcess.h"
#include "tests/host/LiveVorlinkctl.h"
#include "tests/host/Neighbourhood.h"
#include "tests/support/LogFile.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>

using namespace test;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

namespace
{
    // "Tag", paired over both protocols; `rest` goes on with its tables.
    std::string PairedTag(std::string const& rest = "")
    {
        return "[[device]]\nname = 'Tag'\naddress = 'c1:d2:e3:f4:a5:b6'\nprotocols = ['classic', 'le']\n"
               "is-paired = true\n" +
               rest;
    }

    void KnowLe()
    {
        std::ofstream("MyLEData", std::ios::binary) << "Tag=c1:d2:e3:f4:a5:b6\n";
    }

    // From one program to the next.
    void KeepState()
    {
        auto const path = std::filesystem::current_path() / "state.txt";
        SetEnvironmentVariableW(L"VORLINK_SIMULATOR_STATE", path.c_str());
    }

    constexpr char unpaired[] =
        "Unpaired \"Tag\" (c1:d2:e3:f4:a5:b6): its Classic side and its LE side, c1:d2:e3:f4:a5:b6.\n";
    constexpr char classicUnpaired[] = "Unpaired \"Tag\" (c1:d2:e3:f4:a5:b6): its Classic side.\n";
    constexpr char announcement[] = "Looking for \"Tag\" and unpairing it ...\n";
    constexpr char leGoesToo[] = "Its LE side, c1:d2:e3:f4:a5:b6, is unpaired with it.\n";
} // namespace

TEST(Unpair, PrintsTheOutcomeAlone)
{
    UseScenario(PairedTag());
    KnowLe();
    auto const result = RunVorlinkctl({"unpair", "Tag"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, unpaired) << "without the data store's echo";
    EXPECT_EQ(result.error, std::string(announcement) + leGoesToo);
    EXPECT_FALSE(std::filesystem::exists("log.log"));
}

TEST(Unpair, UnpairsBothEndpointsWhenTheDataStoreKnowsTheDevice)
{
    UseScenario(PairedTag());
    KeepState();
    KnowLe();
    EXPECT_EQ(RunVorlinkctl({"unpair", "Tag"}).exitCode, 0u);
    EXPECT_THAT(ReadFile("state.txt"), HasSubstr("unpaired Bluetooth#"));
    EXPECT_THAT(ReadFile("state.txt"), HasSubstr("unpaired BluetoothLE#"));
}

TEST(Unpair, LeavesTheLeEndpointThatTheDataStoreDoesNotKnow)
{
    UseScenario(PairedTag());
    KeepState();
    auto const result = RunVorlinkctl({"unpair", "Tag", "--log"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output, StartsWith(classicUnpaired));
    EXPECT_THAT(result.output, HasSubstr("ble data is bad \n"));
    EXPECT_THAT(ReadFile("state.txt"), HasSubstr("unpaired Bluetooth#"));
    EXPECT_THAT(ReadFile("state.txt"), HasSubstr("\npaired BluetoothLE#"));
}

TEST(Unpair, LogHoldsTheRecordThatComesAfterTheReport)
{
    UseScenario(PairedTag());
    KnowLe();
    auto const result = RunVorlinkctl({"unpair", "Tag", "--log"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output, EndsWith("unpaired device success\n"));
}

TEST(Unpair, ARefusalIsNotUnpaired)
{
    for (auto const* const endpoint : {"classic", "le"})
    {
        UseScenario(PairedTag(std::string("[device.") + endpoint + ".unpairing]\nstatus = 'AccessDenied'\n"));
        KnowLe();
        auto const result = RunVorlinkctl({"unpair", "Tag"});
        EXPECT_EQ(result.exitCode, 4u) << endpoint;
        EXPECT_THAT(result.output, StartsWith("Not unpaired: found \"Tag\""));
    }
}

TEST(Unpair, ADeviceThatIsNotPairedIsNotUnpaired)
{
    auto const result = RunVorlinkctl({"unpair", "Kitchen Speaker"});
    EXPECT_EQ(result.exitCode, 4u);
}

TEST(Unpair, ThatThePlatformNeverAnswersIsNoAnswer)
{
    UseScenario(PairedTag("[device.unpairing]\nduration-ms = 'never'\n"));
    for (auto const& arguments :
         {Arguments{"unpair", "Tag", "--timeout", "2"}, Arguments{"unpair", "Tag", "--timeout", "2", "--log"}})
    {
        auto const result = RunVorlinkctl(arguments);
        EXPECT_EQ(result.exitCode, 5u);
        EXPECT_THAT(result.output, StartsWith("No answer: the unpairing of \"Tag\" did not end within 2 s."));
    }
}

TEST(Unpair, AnUnknownNameIsNotFoundAsSoonAsTheSearchIsOver)
{
    UseScenario("enumeration-completes-ms = 0\n" + PairedTag());
    auto const start = std::chrono::steady_clock::now();
    auto const result = RunVorlinkctl({"unpair", "Nobody"});
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(7));
    EXPECT_EQ(result.exitCode, 3u);
    EXPECT_THAT(result.output, StartsWith("Not found: no Bluetooth device named \"Nobody\".\n"));
}

TEST(SlowUnpair, ThatTakesItsTimeIsWaitedFor)
{
    UseScenario(PairedTag("[device.unpairing]\nduration-ms = 9000\n"));
    auto const result = RunVorlinkctl({"unpair", "Tag", "--timeout", "30"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, classicUnpaired);
}

TEST(Unpair, NeedsNoLogOfItsOwnInTheUsersFolder)
{
    UseScenario("enumeration-completes-ms = 600\n" + PairedTag("appears-ms = 300\n"));
    std::filesystem::create_directory("log.log"); // where none can be written
    auto const result = RunVorlinkctl({"unpair", "Tag", "--log"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output, StartsWith(classicUnpaired));
    EXPECT_THAT(result.output, HasSubstr("ble data is bad \n")) << "the records are shown all the same";
    EXPECT_THAT(result.error, HasSubstr("The records are not in log.log"));
}

TEST(Unpair, WithALearntLeSideOfAnotherDeviceIsDeclinedWhereNobodyCanBeAsked)
{
    UseScenario(PairedTag());
    KeepState();
    std::ofstream("MyLEData", std::ios::binary) << "Tag=c1:d2:e3:f4:a5:ff\n";
    auto const result = RunVorlinkctl({"unpair", "Tag"});
    EXPECT_EQ(result.exitCode, 6u);
    EXPECT_THAT(result.output,
                StartsWith("Not unpaired: the device found is \"Tag\" (c1:d2:e3:f4:a5:b6), and the library has "
                           "learnt c1:d2:e3:f4:a5:ff as the LE side of \"Tag\""));
    EXPECT_FALSE(std::filesystem::exists("state.txt")) << "nothing was unpaired";
}

TEST(Unpair, WithALearntLeSideOfAnotherDeviceGoesOnWhenToldTo)
{
    UseScenario(PairedTag());
    KeepState();
    std::ofstream("MyLEData", std::ios::binary) << "Tag=c1:d2:e3:f4:a5:ff\n";
    auto const result = RunVorlinkctl({"unpair", "Tag", "--yes"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_THAT(result.output, StartsWith(classicUnpaired));
    EXPECT_THAT(result.output, HasSubstr("Warning: an LE side, c1:d2:e3:f4:a5:ff, is kept for this name, but no such"));
    EXPECT_THAT(result.output,
                HasSubstr("Warning: the device found is \"Tag\" (c1:d2:e3:f4:a5:b6), and the library has learnt "));
    EXPECT_THAT(ReadFile("MyLEData"), HasSubstr("Tag=")) << "it is the user's";
}

TEST(Unpair, OfADeviceThatIsNotThereIsNotFoundAlsoWhenItsLeSideIsKnown)
{
    UseScenario("enumeration-completes-ms = 0\n");
    KnowLe();
    EXPECT_EQ(RunVorlinkctl({"unpair", "Tag"}).exitCode, 3u);
}

TEST(Unpair, ByALongNameTellsTheDevicesOwn)
{
    UseScenario("[[device]]\nname = 'Living Room TV Soundbar'\naddress = 'c1:d2:e3:f4:a5:b6'\nis-paired = true\n");
    auto const result = RunVorlinkctl({"unpair", "Living Room TV"});
    EXPECT_THAT(result.output, StartsWith("Unpaired \"Living Room TV Soundbar\" (c1:d2:e3:f4:a5:b6)"));
    EXPECT_THAT(result.output, HasSubstr("Warning: the device is called"));
}

TEST(Unpair, ThatFailsOnTheLeSideSaysSo)
{
    UseScenario(PairedTag("[device.le.unpairing]\nstatus = 'Failed'\n"));
    KnowLe();
    auto const result = RunVorlinkctl({"unpair", "Tag"});
    EXPECT_EQ(result.exitCode, 4u);
    EXPECT_THAT(result.output,
                HasSubstr("the Classic side is unpaired, but the platform refused to unpair the LE side"));
}

TEST(Unpair, CtrlCSaysWhatItHasLeftBehind)
{
    UseScenario(PairedTag("[device.unpairing]\nduration-ms = 'never'\n"));
    LiveVorlinkctl vorlinkctl({"unpair", "Tag", "--log"});
    vorlinkctl.WaitForLog("CLassic id is");
    vorlinkctl.PressCtrlC();
    auto const result = vorlinkctl.Finish();
    EXPECT_EQ(result.exitCode, 5u);
    EXPECT_THAT(result.output,
                StartsWith("Interrupted: \"Tag\" was being unpaired.\nThe platform had been asked for it"));
}

TEST(Unpair, ANameLikeARecordDoesNotMakeAnotherDeviceFound)
{
    for (std::string const name :
         {R"("CLassic id is: ")", R"("CLassic id is: x  ,pair status : 1 , isPaired is:  1")",
          R"("x\n2026-01-02 03:04:05 006[File:SubVorlink][Line:437][Function:SubVorlink::GetDeviceforName] )"
          R"(CLassic id is: x  ,pair status : 1 , isPaired is:  1")"})
    {
        UseScenario("enumeration-completes-ms = 100\n[[device]]\nname = " + name + "\naddress = 'c1:d2:e3:f4:a5:b6'\n");
        for (auto const& arguments : {Arguments{"unpair", "Nobody", "--timeout", "6"},
                                      Arguments{"unpair", "Nobody", "--log", "--timeout", "6"}})
        {
            EXPECT_EQ(RunVorlinkctl(arguments).exitCode, 3u) << name;
        }
    }
}

TEST(Unpair, ALineFeedInANameHidesNothing)
{
    UseScenario("[[device]]\nname = \"Ta\\ng\"\naddress = 'c1:d2:e3:f4:a5:b6'\nis-paired = true\n");
    auto const result = RunVorlinkctl({"unpair", "Ta\\x0Ag", "--timeout", "6"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, "Unpaired \"Ta\\x0Ag\" (c1:d2:e3:f4:a5:b6): its Classic side.\n");
}

// Each step in a process of its own. The LE side pairs along with nothing: it is left out.
TEST(Unpair, AndPairFollowEachOtherThreeTimes)
{
    UseScenario("[[device]]\nname = 'Tag'\naddress = 'c1:d2:e3:f4:a5:b6'\n");
    KeepState();
    for (int round = 0; round < 3; ++round)
    {
        EXPECT_EQ(RunVorlinkctl({"pair", "Tag", "--no-learn"}).exitCode, 0u) << round;
        EXPECT_EQ(RunVorlinkctl({"pair", "Tag", "--no-learn"}).exitCode, 4u) << "already paired";
        EXPECT_EQ(RunVorlinkctl({"unpair", "Tag"}).exitCode, 0u) << round;
        EXPECT_EQ(RunVorlinkctl({"unpair", "Tag"}).exitCode, 4u) << "already unpaired";
    }
}
