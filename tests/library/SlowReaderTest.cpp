// What the reader behind a successful pairing leaves behind, from outside.
#include "tests/support/CapturedOutput.h"
#include "tests/support/Host.h"
#include "tests/support/Listing.h"
#include "tests/support/LogFile.h"
#include "tests/support/ProcessEnd.h"
#include "tests/support/ReplacedImport.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <cstdlib>

using namespace test;
using testing::Contains;
using testing::EndsWith;
using testing::ExitedWithCode;
using testing::HasSubstr;

namespace
{
    // The listing comes when the reader launches the tool and goes as the last thing that it does.
    void PairAndWaitForReader(Vorlink& vorlink, std::string const& name)
    {
        vorlink.PairedDevice(name, Host::Callback);
        EXPECT_TRUE(WaitUntil(ListingExists));
        EXPECT_TRUE(WaitUntil([] { return !ListingExists(); }));
    }

    // What it writes to standard output.
    std::string LearnTag(Vorlink& vorlink, std::string const& devices = Tag())
    {
        LoadWithTool(prompt + "[listing]\nunrelated-devices = 2\n" + devices);
        ReplaceImport(LibraryModule(), "WinExec", RunToItsEnd);
        return OutputOf([&] { PairAndWaitForReader(vorlink, "Tag"); });
    }
} // namespace

TEST(SlowReader, LeavesTheEntryToTheNextProcess)
{
    auto const directory = DirectoryOfTheTest();
    EXPECT_EXIT(
        {
            std::filesystem::current_path(directory);
            auto const vorlink = MakeVorlink();
            LearnTag(*vorlink);
            std::_Exit(vorlink->Uninitialize() ? 0 : 1);
        },
        ExitedWithCode(0), "");
    EXPECT_EQ(ReadFile("MyLEData"), "Tag=C1D2E3F4A5B6\n");
    auto const vorlink = MakeVorlink();
    EXPECT_EQ(OutputOf([&] { vorlink->Initialize(); }), "Tag:C1D2E3F4A5B6\r\n");
}

TEST(SlowReader, WritesItsRecordsAndEchoesTheListing)
{
    auto const vorlink = MakeLoggingVorlink();
    auto const output = LearnTag(*vorlink);
    EXPECT_THAT(output,
                HasSubstr(std::string("\r\n") + tagInstance + "\r\n\r\nDevice Description:         ?? LE ??\r\n"));
    EXPECT_THAT(output, EndsWith("\r\nTag:C1D2E3F4A5B6\r\n"));
    auto const records = LogOf(reader);
    ASSERT_GE(records.size(), 5u);
    std::vector<std::string> const expected = {
        Record(488, reader, "Readline entry"), Record(503, reader, "file exist"),
        Record(514, reader, std::string("find instance ID  is: ") + tagInstance),
        Record(524, reader, std::string("find instance vectors[2]  is: ") + tagPiece),
        Record(527, reader, std::string("add new succes  ") + tagPiece)};
    EXPECT_EQ(std::vector(records.end() - 5, records.end()), expected) << "of the last attempt";
}

TEST(SlowReader, AddsToWhatInitializeLoaded)
{
    std::ofstream("MyLEData", std::ios::binary) << "AA=BB\r\nTag=old\n";
    auto const vorlink = MakeVorlink();
    vorlink->Initialize();
    std::ofstream("MyLEData", std::ios::binary) << "AA=later\n";
    vorlink->Initialize();
    EXPECT_THAT(LearnTag(*vorlink), EndsWith("\r\nAA:BB\r\nTag:C1D2E3F4A5B6\r\n"));
    EXPECT_EQ(ReadFile("MyLEData"), "AA=BB\nTag=C1D2E3F4A5B6\n");
}

TEST(SlowReader, FindsTheStoreEmptyBehindUninitialize)
{
    std::ofstream("MyLEData", std::ios::binary) << "AA=BB\n";
    auto const vorlink = MakeVorlink();
    vorlink->Initialize();
    vorlink->Uninitialize();
    LearnTag(*vorlink);
    EXPECT_EQ(ReadFile("MyLEData"), "Tag=C1D2E3F4A5B6\n");
}

TEST(SlowReader, ChangesNothingWhenThePieceIsStoredUnderAnotherName)
{
    std::ofstream("MyLEData", std::ios::binary) << "Other=C1D2E3F4A5B6\n";
    auto const vorlink = MakeVorlink();
    vorlink->Initialize();
    vorlink->SetLogEnabled(true);
    EXPECT_THAT(LearnTag(*vorlink), EndsWith("\r\nOther:C1D2E3F4A5B6\r\n")) << "saved all the same";
    EXPECT_EQ(ReadFile("MyLEData"), "Other=C1D2E3F4A5B6\n");
    EXPECT_EQ(LogOf(reader).back(), Record(524, reader, std::string("find instance vectors[2]  is: ") + tagPiece));
}

TEST(SlowReader, RecordsNothingOfADeviceWhoseDescriptionLacksTheMark)
{
    std::ofstream("MyLEData", std::ios::binary) << "Other=kept\n";
    auto const vorlink = MakeVorlink();
    vorlink->Initialize();
    vorlink->SetLogEnabled(true);
    auto const output = LearnTag(*vorlink, Tag("description = 'Bluetooth LE device'"));
    EXPECT_THAT(output, HasSubstr("\r\nDevice Description:         Bluetooth LE device\r\n"));
    EXPECT_THAT(output, EndsWith("\r\nOther:kept\r\n"));
    EXPECT_EQ(ReadFile("MyLEData"), "Other=kept\n");
    EXPECT_EQ(LogOf(reader).back(), Record(514, reader, std::string("find instance ID  is: ") + tagInstance));
}

TEST(SlowReader, StoresTheLatterOfTwoNewPieces)
{
    auto const vorlink = MakeLoggingVorlink();
    auto const output =
        LearnTag(*vorlink, Tag() + Device("", "cc:50:e3:18:f6:9d", "protocols = ['le']\nlisted = true"));
    EXPECT_THAT(output, EndsWith("\r\nTag:CC50E318F69D\r\n"));
    EXPECT_EQ(ReadFile("MyLEData"), "Tag=CC50E318F69D\n");
    EXPECT_THAT(LogOf(reader), Contains(Record(527, reader, std::string("add new succes  ") + tagPiece)))
        << "the former was stored meanwhile";
    EXPECT_EQ(LogOf(reader).back(), Record(527, reader, "add new succes  CC50E318F69D"));
}

TEST(SlowReader, KeepsTheLibraryLoadedUntilItEnds)
{
    LoadWithTool(prompt + Tag());
    auto const module = LibraryModule();
    ReplaceImport(module, "WinExec", RunToItsEnd);
    MakeVorlink()->PairedDevice("Tag", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    ASSERT_TRUE(FreeLibrary(module));
    EXPECT_TRUE(GetModuleHandleW(L"vorlink.dll")) << "the reader's code";
    EXPECT_TRUE(WaitUntil(ListingExists));
    EXPECT_TRUE(GetModuleHandleW(L"vorlink.dll"));
    EXPECT_TRUE(WaitUntil([] { return !GetModuleHandleW(L"vorlink.dll"); }));
    EXPECT_FALSE(ListingExists()) << "it came to its end";
    EXPECT_TRUE(std::filesystem::exists("MyLEData"));
}
