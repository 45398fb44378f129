#include "host/DataFile.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>

using namespace host;

TEST(DataFile, AnEntryIsReadAsTheLibraryReadsIt)
{
    EXPECT_EQ(EntryIn("Tag=C1\n", "Tag"), "C1");
    EXPECT_EQ(EntryIn("Tag=C1=x\n", "Tag"), "C1");
    EXPECT_EQ(EntryIn("Tag=C1\nTag=C2\n", "Tag"), "C1") << "the first";
    EXPECT_EQ(EntryIn("Tag\nTag=\n=C1\n\nOther=C1", "Tag"), "");
    EXPECT_EQ(EntryIn("A=1\nTag=C1", "Tag"), "C1") << "the last line needs no line feed";
    EXPECT_EQ(EntryIn("", ""), "");
}

TEST(DataFile, AnEntryReplacesThoseOfItsNameAndNothingElse)
{
    EXPECT_EQ(WithEntry("", "Tag", "C1"), "Tag=C1\n");
    EXPECT_EQ(WithEntry("A=1\nTag=old\nno entry\nTag=older", "Tag", "C1"), "A=1\nno entry\nTag=C1\n");
    EXPECT_EQ(WithEntry("A=1", "Tag", "C1"), "A=1\nTag=C1\n");
}

TEST(DataFile, SomeNamesCannotBeKept)
{
    EXPECT_TRUE(CanKeep("Zoë's Phone"));
    EXPECT_FALSE(CanKeep("a=b"));
    EXPECT_FALSE(CanKeep("a\nb"));
    EXPECT_FALSE(CanKeep(""));
}

TEST(DataFile, IsReplacedWhole)
{
    ReplaceFileText("file", "one\n");
    ReplaceFileText("file", "two\n");
    EXPECT_EQ(ReadFileText("file"), "two\n");
    std::filesystem::remove("file");
    EXPECT_EQ(ReadFileText("file"), "");
}

TEST(DataFile, ThatCannotBeReadIsNotTakenForEmpty)
{
    std::filesystem::create_directory("folder");
    EXPECT_THROW(ReadFileText("folder"), std::runtime_error);
}

TEST(DataFile, MayHaveLinesOfWindows)
{
    EXPECT_EQ(EntryIn("Tag=C1\r\n", "Tag"), "C1");
}

TEST(DataFile, ThatCannotBeWrittenIsNamed)
{
    try
    {
        ReplaceFileText(std::filesystem::path("no such folder") / "MyLEData", "x");
        ADD_FAILURE();
    }
    catch (std::runtime_error const& error)
    {
        EXPECT_NE(std::string(error.what()).find("MyLEData cannot be written"), std::string::npos) << error.what();
    }
}
