// Initialize and Uninitialize, from outside: what they read, echo and answer.
#include "tests/support/CapturedOutput.h"
#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/support/ReplacedImport.h"

#include <gmock/gmock.h>

#include <windows.h>

using namespace test;
using testing::ElementsAre;

namespace
{
    void WriteStore(std::string const& bytes)
    {
        std::ofstream("MyLEData", std::ios::binary) << bytes;
    }

    std::string Initialize(Vorlink& vorlink)
    {
        return OutputOf([&] { vorlink.Initialize(); });
    }

    std::vector<std::string> calls;
    LANGID userLanguage = 0;

    BOOL WINAPI NoteCodePage(UINT codePage)
    {
        calls.push_back("SetConsoleOutputCP " + std::to_string(codePage));
        return FALSE; // as without a console
    }

    LANGID WINAPI NoteLanguage()
    {
        calls.emplace_back("GetUserDefaultUILanguage");
        return userLanguage;
    }

    // Each call leaves another store behind it: the echo tells which of them was read.
    BOOL WINAPI LeaveStoreAtCodePage(UINT)
    {
        WriteStore("read=behind the code page\n");
        return TRUE;
    }

    LANGID WINAPI LeaveStoreAtLanguage()
    {
        WriteStore("read=behind the language\n");
        return 0x0409;
    }

    struct Answer
    {
        LANGID language;
        bool known;
    };

    using UiLanguage = testing::TestWithParam<Answer>;

    constexpr Answer answers[] = {
        {0x0809, true}, {0x0409, true}, {0x0804, true}, {0x0413, false}, {0x0C09, false}, {0x0009, false},
    };
} // namespace

TEST(Initialize, EchoesTheEntriesOfTheFile)
{
    WriteStore("AA=BB\nAA=CC=DD\r\nEE\nFF=\n=GG\n\nZo\xc3\xab=C1\n");
    EXPECT_EQ(Initialize(*MakeVorlink()), "AA:BB\r\nAA:CC\r\nZo\xc3\xab:C1\r\n");
}

TEST(Initialize, LeavesTheFileAsItIs)
{
    WriteStore("AA=BB=CC\r\nrest");
    Initialize(*MakeVorlink());
    EXPECT_EQ(ReadFile("MyLEData"), "AA=BB=CC\r\nrest");
}

TEST(Initialize, WithoutAFileIsSilentAndMakesNone)
{
    EXPECT_EQ(Initialize(*MakeVorlink()), "");
    EXPECT_FALSE(std::filesystem::exists("MyLEData"));
}

TEST(Initialize, ReadsTheFileAgainAtEachCall)
{
    auto const vorlink = MakeVorlink();
    WriteStore("AA=BB\n");
    EXPECT_EQ(Initialize(*vorlink), "AA:BB\r\n");
    WriteStore("AA=other\nCC=DD\n");
    EXPECT_EQ(Initialize(*vorlink), "AA:other\r\nCC:DD\r\n");
}

TEST(Initialize, AndUninitializeWriteNoRecord)
{
    WriteStore("AA=BB\n");
    auto const vorlink = MakeLoggingVorlink();
    Initialize(*vorlink);
    EXPECT_TRUE(vorlink->Uninitialize());
    EXPECT_FALSE(LogExists());
}

TEST(Initialize, AnswersForTheUsersOwnLanguage)
{
    // Wine's is English (United States) here, by the locale that the tests run in.
    EXPECT_EQ(GetUserDefaultUILanguage(), 0x0409);
    EXPECT_TRUE(MakeVorlink()->Initialize());
}

TEST(Initialize, MakesTheConsoleUtf8AndThenAsksForTheLanguage)
{
    ReplaceImport(LibraryModule(), "SetConsoleOutputCP", NoteCodePage);
    ReplaceImport(LibraryModule(), "GetUserDefaultUILanguage", NoteLanguage);
    WriteStore("AA=BB\n");
    EXPECT_EQ(Initialize(*MakeVorlink()), "AA:BB\r\n") << "whether or not there is a console";
    EXPECT_THAT(calls, ElementsAre("SetConsoleOutputCP 65001", "GetUserDefaultUILanguage"));
}

TEST(Initialize, ReadsTheStoreBetweenTheConsolesCodePageAndTheLanguage)
{
    ReplaceImport(LibraryModule(), "SetConsoleOutputCP", LeaveStoreAtCodePage);
    ReplaceImport(LibraryModule(), "GetUserDefaultUILanguage", LeaveStoreAtLanguage);
    WriteStore("read=first\n");
    EXPECT_EQ(Initialize(*MakeVorlink()), "read:behind the code page\r\n");
    EXPECT_EQ(ReadFile("MyLEData"), "read=behind the language\n");
}

TEST(Uninitialize, IsTrueAlsoWithoutInitializeAndTwice)
{
    auto const vorlink = MakeVorlink();
    EXPECT_TRUE(vorlink->Uninitialize());
    EXPECT_TRUE(vorlink->Uninitialize());
}

TEST(Uninitialize, LeavesTheFileAndPrintsNothing)
{
    WriteStore("AA=BB\n");
    auto const vorlink = MakeVorlink();
    Initialize(*vorlink);
    EXPECT_EQ(OutputOf([&] { vorlink->Uninitialize(); }), "");
    EXPECT_EQ(ReadFile("MyLEData"), "AA=BB\n");
    EXPECT_EQ(Initialize(*vorlink), "AA:BB\r\n");
}

TEST_P(UiLanguage, IsAnsweredByInitialize)
{
    userLanguage = GetParam().language;
    ReplaceImport(LibraryModule(), "GetUserDefaultUILanguage", NoteLanguage);
    EXPECT_EQ(MakeVorlink()->Initialize(), GetParam().known);
}

INSTANTIATE_TEST_SUITE_P(Initialize, UiLanguage, testing::ValuesIn(answers),
                         [](auto const& test) { return "Id" + std::to_string(test.param.language); });
