// vorlinkctl unpair, from outside: what it prints and the code that it ends with, for each outcome.
#include "tests/host/ChildProcess.h"
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
        "Unpaired \"Tag\": its Classic endpoint, and its LE endpoint if the library knew of one.\n";
} // namespace

TEST(Unpair, PrintsTheOutcomeAlone)
{
    UseScenario(PairedTag());
    KnowLe();
    auto const result = RunVorlinkctl({"unpair", "Tag"});
    EXPECT_EQ(result.exitCode, 0u);
    EXPECT_EQ(result.output, unpaired) << "without the data store's echo";
    EXPECT_EQ(result.error, "Looking for \"Tag\" and unpairing it ...\n");
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
    EXPECT_THAT(result.output, StartsWith(unpaired));
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

TEST(Unpair, WithTheLogAnUnknownNameIsNotFoundAtOnce)
{
    UseScenario("enumeration-completes-ms = 0\n" + PairedTag());
    auto const start = std::chrono::steady_clock::now();
    auto const result = RunVorlinkctl({"unpair", "Nobody", "--log"});
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(7));
    EXPECT_EQ(result.exitCode, 3u);
    EXPECT_THAT(result.output, StartsWith("Not found: no Bluetooth Classic device named \"Nobody\" answered.\n"));
}

TEST(SlowUnpair, UnknownNameIsNotFoundWhenNothingIsHeardOfIt)
{
    UseScenario("enumeration-completes-ms = 0\n" + PairedTag());
    auto const result = RunVorlinkctl({"unpair", "Nobody"});
    EXPECT_EQ(result.exitCode, 3u);
    EXPECT_THAT(result.output, StartsWith("Not found: "));
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
