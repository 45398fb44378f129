// The lookup of a new device's address piece, over listings of the test's own and without its waits.
#include "pairing/LibraryState.h"
#include "pairing/ReadLine.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/ReplacedImport.h"

#include <gmock/gmock.h>

#include <windows.h>

using namespace test;
using namespace vorlink;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

namespace
{
    LeData& Store()
    {
        return Library().leDataMap;
    }

    std::vector<std::string> calls;
    std::string listing;

    BOOL WINAPI NoteCodePage(UINT codePage)
    {
        calls.push_back("SetConsoleOutputCP " + std::to_string(codePage));
        return TRUE;
    }

    void WINAPI NoteSleep(DWORD milliseconds)
    {
        calls.push_back("Sleep " + std::to_string(milliseconds));
    }

    UINT WINAPI NoteLaunch(char const* command, UINT show)
    {
        calls.push_back("WinExec " + std::to_string(show) + " " + command);
        std::ofstream("ble.jpg", std::ios::binary) << listing;
        return 33;
    }

    // Runs the lookup without its waits, over a listing that the test itself puts in the tool's place.
    std::string LookAt(std::string const& text, std::string const& name)
    {
        listing = text;
        auto* const self = GetModuleHandleW(nullptr);
        ReplaceImport(self, "SetConsoleOutputCP", NoteCodePage);
        ReplaceImport(self, "Sleep", NoteSleep);
        ReplaceImport(self, "WinExec", NoteLaunch);
        Library().logEnabled = true;
        return OutputOf([&] { ReadLine(name); });
    }
} // namespace

TEST(ReadLine, WaitsLaunchesTheToolAndWaitsAgain)
{
    LookAt("", "Tag");
    std::vector<std::string> expected = {"SetConsoleOutputCP 65001", "Sleep 1000"};
    expected.insert(expected.end(), 19, "Sleep 100");
    expected.emplace_back("WinExec 0 C:\\Windows\\System32\\cmd.exe /d /c "
                          "C:/Windows/System32/pnputil.exe   /enum-devices >ble.jpg");
    expected.insert(expected.end(), 8, "Sleep 100");
    EXPECT_EQ(calls, expected);
}

TEST(ReadLine, EchoesTheListingAndTheStoreByteForByte)
{
    Store() = {{"AA", "BB"}};
    auto const output = LookAt("Utility\r\n\r\nBTHLE\\Dev_c1\\8&1a&0&C1\r\nx ?? LE ??\r\nStatus\r\n\r\nlast", "Tag");
    EXPECT_EQ(output, "Utility\r\n\r\nBTHLE\\Dev_c1\\8&1a&0&C1\r\n\r\nx ?? LE ??\r\nStatus\r\nx ?? LE ??\r\n"
                      "last\r\nx ?? LE ??\r\nAA:BB\r\nTag:C1\r\n");
    EXPECT_EQ(ReadFile("MyLEData"), "AA=BB\nTag=C1\n");
    EXPECT_FALSE(std::filesystem::exists("ble.jpg"));
}

TEST(ReadLine, PieceThatIsPartOfAStoredValueIsSkipped)
{
    Store() = {{"Other", "xC1x"}, {"Tag", "old"}};
    LookAt("BTHLE\\Dev_c1\\8&1a&0&C1\n?? LE ??\nBTHLE\\Dev_c1\\8&1a&0&xC1xx\n?? LE ??\n", "Tag");
    EXPECT_THAT(Store(), ElementsAre(Pair("Other", "xC1x"), Pair("Tag", "xC1xx"))) << "the reverse does not count";
}

TEST(ReadLine, PieceLearntALineBeforeIsKnown)
{
    LookAt("BTHLE\\Dev_a&b&c&C1C2\n?? LE ??\nBTHLE\\Dev_a&b&c&C2\n?? LE ??\n", "Tag");
    EXPECT_THAT(Store(), ElementsAre(Pair("Tag", "C1C2")));
    EXPECT_THAT(Log(), SizeIs(2 + 3 + 2));
}

TEST(ReadLine, EmptyPieceIsNeverStored)
{
    // An empty text is part of every value, so only an empty store does not know it.
    LookAt("BTHLE\\Dev_a&b&c&&d\n?? LE ??\n", "Tag");
    EXPECT_THAT(Store(), IsEmpty());
    EXPECT_THAT(Log(), Contains(Record(527, reader, "add new succes  ")));
    Store() = {{"Tag", "old"}};
    LookAt("BTHLE\\Dev_a&b&c&&d\n?? LE ??\n", "Tag");
    EXPECT_THAT(Store(), ElementsAre(Pair("Tag", "old")));
}

TEST(ReadLine, PercentSignsOfTheListingAreText)
{
    LookAt("BTHLE\\Dev_%s%n&%d&c&%s%s\n?? LE ??\n", "Tag");
    EXPECT_THAT(Log(), Contains(Record(514, reader, "find instance ID  is: BTHLE\\Dev_%s%n&%d&c&%s%s")));
    EXPECT_THAT(Store(), ElementsAre(Pair("Tag", "%s%s")));
}

TEST(ReadLine, VeryLongLinesAreRead)
{
    std::string const piece(100'000, 'C');
    LookAt("BTHLE\\Dev_a&b&c&" + piece + "\n?? LE ??\n", "Tag");
    EXPECT_EQ(ReadFile("MyLEData"), "Tag=" + piece + "\n");
}
