// The LE data store and its file, byte for byte.
#include "pairing/LeStore.h"
#include "pairing/LibraryState.h"
#include "tests/support/CapturedOutput.h"

#include <gmock/gmock.h>

#include <atomic>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

using namespace test;
using namespace vorlink;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

namespace
{
    LeData& Store()
    {
        return Library().leDataMap;
    }

    void WriteFile(std::string const& bytes)
    {
        std::ofstream(leDataFile, std::ios::binary) << bytes;
    }

    std::string Load()
    {
        return OutputOf([] { LoadLeData(leDataFile); });
    }

    std::string Save()
    {
        return OutputOf([] { SaveLeData(leDataFile); });
    }
} // namespace

TEST(LeStore, IsNamedAndEmptyToBeginWith)
{
    EXPECT_STREQ(leDataFile, "MyLEData");
    EXPECT_THAT(Store(), IsEmpty());
}

TEST(LeStore, LoadAddsTheFilesEntriesAndEchoesThem)
{
    WriteFile("AA=BB\nCC=DD=EE\nCC=FF\n=\n");
    EXPECT_EQ(Load(), "AA:BB\r\nCC:DD\r\nCC:FF\r\n");
    EXPECT_THAT(Store(), ElementsAre(Pair("AA", "BB"), Pair("CC", "DD")));
}

TEST(LeStore, LoadTakesLinesWithCarriageReturns)
{
    WriteFile("AA=BB\r\nCC=DD\r\n");
    EXPECT_EQ(Load(), "AA:BB\r\nCC:DD\r\n");
    EXPECT_THAT(Store(), ElementsAre(Pair("AA", "BB"), Pair("CC", "DD")));
}

TEST(LeStore, LoadWithoutAFileLeavesTheStoreSilently)
{
    Store() = {{"AA", "BB"}};
    EXPECT_EQ(Load(), "");
    EXPECT_THAT(Store(), ElementsAre(Pair("AA", "BB")));
    EXPECT_FALSE(std::filesystem::exists(leDataFile));
}

TEST(LeStore, LoadOfWhatIsNoFileLeavesTheStoreSilently)
{
    std::filesystem::create_directory(leDataFile);
    Store() = {{"AA", "BB"}};
    EXPECT_EQ(Load(), "");
    EXPECT_THAT(Store(), ElementsAre(Pair("AA", "BB")));
}

TEST(LeStore, SaveReplacesTheFileAndEchoesTheEntries)
{
    WriteFile("old=entry\nand=much more of it than the new one has\n");
    Store() = {{"b", "2"}, {"B", "1"}, {"Zo\xc3\xab", "3"}};
    EXPECT_EQ(Save(), "B:1\r\nZo\xc3\xab:3\r\nb:2\r\n");
    EXPECT_EQ(ReadFile(leDataFile), "B=1\nZo\xc3\xab=3\nb=2\n") << "single line feeds";
}

TEST(LeStore, SaveOfAnEmptyStoreLeavesAnEmptyFile)
{
    WriteFile("old=entry\n");
    EXPECT_EQ(Save(), "");
    EXPECT_TRUE(std::filesystem::exists(leDataFile));
    EXPECT_EQ(ReadFile(leDataFile), "");
}

TEST(LeStore, SaveThatCannotBeWrittenIsSilentAndKeepsTheStore)
{
    std::filesystem::create_directory(leDataFile);
    Store() = {{"AA", "BB"}};
    EXPECT_EQ(Save(), "AA:BB\r\n");
    EXPECT_THAT(Store(), ElementsAre(Pair("AA", "BB")));
}

TEST(LeStore, ReplaceLeavesOneEntryOrNone)
{
    Store() = {{"AA", "BB"}, {"CC", "DD"}};
    ReplaceLeData("AA", "EE");
    EXPECT_THAT(Store(), ElementsAre(Pair("AA", "EE"), Pair("CC", "DD")));
    ReplaceLeData("AA", "");
    EXPECT_THAT(Store(), ElementsAre(Pair("CC", "DD")));
    ReplaceLeData("", "FF");
    EXPECT_THAT(Store(), ElementsAre(Pair("CC", "DD")));
}

TEST(LeStore, ClearLeavesTheFile)
{
    WriteFile("AA=BB\n");
    Load();
    ClearLeData();
    EXPECT_THAT(Store(), IsEmpty());
    EXPECT_EQ(ReadFile(leDataFile), "AA=BB\n");
}

// A crash, a lost entry or a torn value otherwise, within few rounds.
TEST(LeStore, ManyThreadsMayUseItsMemoryAtATime)
{
    constexpr int threads = 4;
    constexpr int rounds = 5'000;
    std::atomic<int> wrong{0};
    std::vector<std::thread> users;
    for (int thread = 0; thread < threads; ++thread)
    {
        users.emplace_back([&, thread] {
            std::string const own = "own" + std::to_string(thread);
            for (int round = 0; round < rounds; ++round)
            {
                std::string const value = std::string(40, 'v') + std::to_string(round);
                ReplaceLeData(own, value);
                wrong += GetLeData(own) == value ? 0 : 1;
                wrong += LeDataHasValue(value) ? 0 : 1;
                wrong += EraseLeData(own) == 1 ? 0 : 1;
            }
        });
    }
    for (auto& user : users)
    {
        user.join();
    }
    EXPECT_EQ(wrong, 0);
    EXPECT_THAT(Store(), IsEmpty());
}

TEST(LeStore, ManyThreadsMayUseItsFileAtATime)
{
    constexpr int threads = 4;
    std::string const values[]{std::string(40, 'a'), std::string(40, 'b')};
    std::atomic<int> torn{0};
    OutputOf([&] {
        std::vector<std::thread> users;
        for (int thread = 0; thread < threads; ++thread)
        {
            users.emplace_back([&, thread] {
                std::string const own = "own" + std::to_string(thread);
                for (int round = 0; round < 20; ++round)
                {
                    ReplaceLeData("shared", values[round % 2]);
                    ReplaceLeData(own, std::to_string(round));
                    auto const read = GetLeData("shared");
                    torn += read == values[0] || read == values[1] ? 0 : 1;
                    torn += GetLeData(own) == std::to_string(round) ? 0 : 1;
                    torn += LeDataHasValue(read.substr(0, 20)) ? 0 : 1;
                    SaveLeData(leDataFile);
                    LoadLeData(leDataFile);
                }
            });
        }
        for (auto& user : users)
        {
            user.join();
        }
    });
    EXPECT_EQ(torn, 0);
    LeData saved;
    std::ifstream file(leDataFile, std::ios::binary);
    std::ostringstream echo;
    ReadLeData(file, saved, echo);
    EXPECT_EQ(saved, Store()) << "the last save is of the last state";
    EXPECT_EQ(saved.size(), threads + 1u);
}

TEST(LeStore, EraseTellsHowManyWent)
{
    Store() = {{"AA", "BB"}, {"CC", "DD"}};
    EXPECT_EQ(EraseLeData("AA"), 1u);
    EXPECT_EQ(EraseLeData("AA"), 0u);
    EXPECT_EQ(EraseLeData("DD"), 0u) << "a value";
    EXPECT_THAT(Store(), ElementsAre(Pair("CC", "DD")));
}

TEST(LeStore, AnswersAboutItsEntries)
{
    EXPECT_FALSE(LeDataHasValue("B"));
    EXPECT_EQ(GetLeData("AA"), "");
    Store() = {{"AA", "xBBx"}};
    EXPECT_TRUE(LeDataHasValue("BB"));
    EXPECT_FALSE(LeDataHasValue("AA"));
    EXPECT_EQ(GetLeData("AA"), "xBBx");
    EXPECT_EQ(GetLeData("BB"), "");
}
