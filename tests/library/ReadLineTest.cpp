// What follows a successful pairing, from outside: the reader's thread and what it leaves behind.
#include "tests/library/FailFast.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/Host.h"
#include "tests/support/Listing.h"
#include "tests/support/LogFile.h"
#include "tests/support/ProcessEnd.h"
#include "tests/support/ReplacedImport.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <atomic>
#include <chrono>
#include <cstdlib>
#include <thread>

using namespace test;
using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;

namespace
{
    constexpr char reader[] = "ReadLine";
    constexpr char ceremony[] = "SubVorlink::PairingDevice";

    template <typename Condition>
    bool WaitUntil(Condition condition)
    {
        auto const end = std::chrono::steady_clock::now() + patience;
        while (!condition())
        {
            if (std::chrono::steady_clock::now() > end)
            {
                return false;
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return true;
    }

    bool ListingExists()
    {
        return std::filesystem::exists("ble.jpg");
    }

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

    std::vector<std::string> logInCallback;

    void LingerThenReport(PairReport report)
    {
        std::this_thread::sleep_for(moment);
        logInCallback = LogOf(reader);
        Host::Callback(report);
    }

    // Another pairing, which fails at once and has no reader of its own.
    void ReportThenPairAnother(PairReport report)
    {
        Host::Callback(report);
        MakeVorlink()->PairedDevice("Other", OtherHost::Callback);
    }

    void WINAPI DoNotSleep(DWORD)
    {
        SwitchToThread();
    }

    std::atomic<bool> listed = false;

    UINT WINAPI ListTagAtOnce(char const*, UINT)
    {
        std::ofstream("ble.jpg", std::ios::binary) << tagInstance << "\n?? LE ??\n";
        listed = true;
        return 33;
    }

    std::vector<std::string> logAtThreadStart;
    std::size_t reportsAtThreadStart = 0;

    HANDLE WINAPI NoteThreadStart(SECURITY_ATTRIBUTES* security, SIZE_T stack, LPTHREAD_START_ROUTINE body,
                                  void* argument, DWORD flags, DWORD* id)
    {
        logAtThreadStart = LogOf(ceremony);
        reportsAtThreadStart = Host::Count();
        return CreateThread(security, stack, body, argument, flags, id);
    }

    HANDLE WINAPI RefuseThreadStart(SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*, DWORD, DWORD*)
    {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }

    // Leaves a file with the report's outcome behind, for whoever comes after the process.
    void LeaveReport(PairReport report)
    {
        std::ofstream("report") << int{report.paired};
    }

    // Pairs with this outcome and returns the reader's records a moment later.
    std::vector<std::string> ReaderAfter(std::string const& status)
    {
        Load(prompt + Device("Tag", tagAddress, "[device.pairing]\nduration-ms = 0\nstatus = '" + status + "'"));
        auto const vorlink = MakeVorlink();
        vorlink->SetLogEnabled(true);
        vorlink->PairedDevice("Tag", Host::Callback);
        EXPECT_EQ(Host::Count(), 1u);
        std::this_thread::sleep_for(moment);
        return LogOf(reader);
    }
} // namespace

TEST(Reader, BeginsBehindTheCallback)
{
    Load(prompt + Tag());
    auto const vorlink = MakeVorlink();
    vorlink->SetLogEnabled(true);
    vorlink->PairedDevice("Tag", LingerThenReport);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_THAT(logInCallback, IsEmpty());
    EXPECT_TRUE(WaitUntil([] { return !LogOf(reader).empty(); }));
    EXPECT_THAT(LogOf(reader), Contains(Record(488, reader, "Readline entry")));
}

TEST(Reader, LearnsUnderTheNameThatThePairingBegunInTheCallbackHasLeft)
{
    Load(prompt + Tag() + Device("Other", "00:00:00:00:00:01", "[device.pairing]\nduration-ms = 0\nstatus = 'Failed'"));
    ReplaceImport(LibraryModule(), "Sleep", DoNotSleep);
    ReplaceImport(LibraryModule(), "WinExec", ListTagAtOnce);
    OutputOf([] {
        MakeVorlink()->PairedDevice("Tag", ReportThenPairAnother);
        EXPECT_TRUE(WaitUntil([] { return listed && !ListingExists(); }));
    });
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Text(Host::At(0).name), "Tag");
    ASSERT_EQ(OtherHost::Count(), 1u);
    EXPECT_EQ(Text(OtherHost::At(0).name), "Other");
    EXPECT_EQ(ReadFile("MyLEData"), std::string("Other=") + tagPiece + "\n");
}

TEST(Reader, IsStartedBetweenTheReportAndTheStatusRecord)
{
    Load(prompt + Tag());
    ReplaceImport(LibraryModule(), "CreateThread", NoteThreadStart);
    auto const vorlink = MakeVorlink();
    vorlink->SetLogEnabled(true);
    vorlink->PairedDevice("Tag", Host::Callback);
    EXPECT_EQ(reportsAtThreadStart, 1u);
    EXPECT_THAT(logAtThreadStart, IsEmpty());
    EXPECT_THAT(LogOf(ceremony), testing::ElementsAre(Record(796, ceremony, "DevicePairingResultStatus::Paired")));
}

TEST(Reader, ThatCannotBeStartedEndsTheProcessBehindTheReportAndWithoutTheStatusRecord)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(E_FAIL, [&] {
        std::filesystem::current_path(directory);
        Load(prompt + Tag());
        ReplaceImport(LibraryModule(), "CreateThread", RefuseThreadStart);
        auto const vorlink = MakeVorlink();
        vorlink->SetLogEnabled(true);
        vorlink->PairedDevice("Tag", LeaveReport);
    });
    EXPECT_EQ(ReadFile("report"), "1");
    EXPECT_THAT(Log(), testing::Not(IsEmpty()));
    EXPECT_THAT(LogOf(ceremony), IsEmpty());
}

TEST(Reader, DoesNotHoldUpTheHost)
{
    Load(prompt + Tag());
    auto const vorlink = MakeVorlink();
    auto const start = std::chrono::steady_clock::now();
    vorlink->PairedDevice("Tag", Host::Callback);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(2900));
    EXPECT_EQ(Host::Count(), 1u);
    EXPECT_FALSE(ListingExists());
}

TEST(Reader, DoesNotBeginWhenTheDeviceWasPairedBefore)
{
    EXPECT_THAT(ReaderAfter("AlreadyPaired"), IsEmpty());
}

TEST(Reader, DoesNotBeginWhenThePairingFails)
{
    EXPECT_THAT(ReaderAfter("Failed"), IsEmpty());
}

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
        testing::ExitedWithCode(0), "");
    EXPECT_EQ(ReadFile("MyLEData"), "Tag=C1D2E3F4A5B6\n");
    auto const vorlink = MakeVorlink();
    EXPECT_EQ(OutputOf([&] { vorlink->Initialize(); }), "Tag:C1D2E3F4A5B6\r\n");
}

TEST(SlowReader, WritesItsRecordsAndEchoesTheListing)
{
    auto const vorlink = MakeVorlink();
    vorlink->SetLogEnabled(true);
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
    auto const vorlink = MakeVorlink();
    vorlink->SetLogEnabled(true);
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
