// The LE data store and its file, byte for byte.
#include "pairing/LeStore.h"
#include "pairing/LibraryState.h"
#include "tests/support/CapturedOutput.h"

#include <gmock/gmock.h>

#include <fstream>
#include <string>

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
