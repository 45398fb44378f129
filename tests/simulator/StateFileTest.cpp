// The file by which the pairing state outlives a process. A reset is read as the next process's beginning.
#include "tests/simulator/CeremonyClient.h"

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>

using namespace test;
using testing::HasSubstr;

namespace
{
    constexpr char state[] = "state.txt";

    std::string QuickRoom()
    {
        std::string const unpairing = "[device.unpairing]\nduration-ms = 0\n";
        return Room("[device.pairing]\nduration-ms = 0\n" + unpairing, unpairing);
    }

    std::string Read()
    {
        std::ifstream file(state, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    void Write(std::string const& text)
    {
        std::ofstream(state, std::ios::binary) << text;
    }

    class StateFile : public SimulatorTest
    {
    protected:
        void SetUp() override
        {
            SimulatorTest::SetUp();
            auto const path = std::filesystem::current_path() / state;
            SetEnvironmentVariableW(L"VORLINK_SIMULATOR_STATE", path.c_str());
            std::ofstream("scenario.toml", std::ios::binary) << QuickRoom();
            auto const scenario = std::filesystem::current_path() / "scenario.toml";
            SetEnvironmentVariableW(L"VORLINK_SCENARIO", scenario.c_str());
            SimulatorReset();
        }
    };
} // namespace

TEST_F(StateFile, IsNotMadeBeforeSomethingChanges)
{
    EXPECT_FALSE(IsPaired(FindDevice(speaker)));
    EXPECT_FALSE(std::filesystem::exists(state));
}

TEST_F(StateFile, HoldsEveryEndpointAfterAPairing)
{
    EXPECT_EQ(Pairer(speaker).Pair(), 0);
    EXPECT_EQ(Read(), std::string("paired ") + speaker + "\nunpaired " + lamp + "\npaired " + mouse + "\n");
}

TEST_F(StateFile, KeepsWhatItSaysOfOthers)
{
    Write(std::string("paired elsewhere\npaired ") + speaker + "\nunpaired " + mouse + "\n");
    EXPECT_EQ(Pairer(speaker).Pair(), 0) << "this process has not read it";
    EXPECT_EQ(Read(),
              std::string("paired ") + speaker + "\nunpaired " + lamp + "\nunpaired " + mouse + "\npaired elsewhere\n");
}

TEST_F(StateFile, IsReadAtTheBeginning)
{
    EXPECT_EQ(Pairer(speaker).Pair(), 0);
    EXPECT_EQ(UnpairOutcome(BeginUnpair(FindDevice(mouse))), 0);
    SimulatorReset();
    EXPECT_TRUE(IsPaired(FindDevice(speaker)));
    EXPECT_FALSE(IsPaired(FindDevice(mouse)));
}

TEST_F(StateFile, FollowsThreeRoundsOfPairingAndUnpairing)
{
    for (int round = 0; round < 3; ++round)
    {
        EXPECT_EQ(Pairer(speaker).Pair(), 0);
        SimulatorReset();
        EXPECT_EQ(Pairer(speaker).Pair(), 3) << "already paired";
        EXPECT_EQ(UnpairOutcome(BeginUnpair(FindDevice(speaker))), 0);
        SimulatorReset();
        EXPECT_EQ(UnpairOutcome(BeginUnpair(FindDevice(speaker))), 1) << "already unpaired";
    }
}

TEST_F(StateFile, DoesNotHoldForAScenarioThatAProgramPasses)
{
    Write(std::string("paired ") + speaker + "\n");
    Load(QuickRoom());
    EXPECT_FALSE(IsPaired(FindDevice(speaker)));
}

TEST_F(StateFile, NamesItsFaultAndIsIgnoredThen)
{
    Write(std::string("paired ") + speaker + "\nnonsense\n");
    testing::internal::CaptureStderr();
    SimulatorReset();
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                HasSubstr("state.txt:2: 'paired' or 'unpaired' and an identifier are expected"));
    EXPECT_FALSE(IsPaired(FindDevice(speaker)));
    EXPECT_TRUE(IsPaired(FindDevice(mouse))) << "the scenario itself stands";
    EXPECT_EQ(Pairer(speaker).Pair(), 0);
    EXPECT_EQ(Read(), std::string("paired ") + speaker + "\nnonsense\n") << "for whoever mends it";
}

TEST_F(StateFile, ThatCannotBeWrittenIsTold)
{
    std::filesystem::create_directory(state);
    testing::internal::CaptureStderr();
    EXPECT_EQ(Pairer(speaker).Pair(), 0);
    EXPECT_THAT(testing::internal::GetCapturedStderr(), HasSubstr("state.txt:0: the file cannot be opened"));
    SetEnvironmentVariableW(L"VORLINK_SIMULATOR_STATE", L"no\\such\\folder.txt");
    testing::internal::CaptureStderr();
    EXPECT_EQ(UnpairOutcome(BeginUnpair(FindDevice(speaker))), 0);
    EXPECT_THAT(testing::internal::GetCapturedStderr(),
                HasSubstr("the file that VORLINK_SIMULATOR_STATE names cannot be written"));
}
