// When the reader behind a successful pairing begins, and under which name it learns.
#include "tests/library/FailFast.h"
#include "tests/support/CapturedOutput.h"
#include "tests/support/Host.h"
#include "tests/support/Listing.h"
#include "tests/support/LogFile.h"
#include "tests/support/ProcessEnd.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/StandIns.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <atomic>
#include <chrono>
#include <thread>

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

namespace
{
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

    // Leaves a file with the report's outcome behind, for whoever comes after the process.
    void LeaveReport(PairReport report)
    {
        std::ofstream("report") << int{report.paired};
    }

    // Pairs with this outcome and returns the reader's records a moment later.
    std::vector<std::string> ReaderAfter(std::string const& status)
    {
        Load(prompt + Device("Tag", tagAddress, "[device.pairing]\nduration-ms = 0\nstatus = '" + status + "'"));
        auto const vorlink = MakeLoggingVorlink();
        vorlink->PairedDevice("Tag", Host::Callback);
        EXPECT_EQ(Host::Count(), 1u);
        std::this_thread::sleep_for(moment);
        return LogOf(reader);
    }
} // namespace

TEST(Reader, BeginsBehindTheCallback)
{
    Load(prompt + Tag());
    auto const vorlink = MakeLoggingVorlink();
    vorlink->PairedDevice("Tag", LingerThenReport);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_THAT(logInCallback, IsEmpty());
    EXPECT_TRUE(WaitUntil([] { return !LogOf(reader).empty(); }));
    EXPECT_THAT(LogOf(reader), Contains(Record(488, reader, "Readline entry")));
}

TEST(Reader, LearnsUnderTheNameThatThePairingBegunInTheCallbackHasLeft)
{
    Load(prompt + Tag() + Device("Other", "00:00:00:00:00:01", "[device.pairing]\nduration-ms = 0\nstatus = 'Failed'"));
    ReplaceImport(LibraryModule(), "Sleep", SleepShortly);
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
    auto const vorlink = MakeLoggingVorlink();
    vorlink->PairedDevice("Tag", Host::Callback);
    EXPECT_EQ(reportsAtThreadStart, 1u);
    EXPECT_THAT(logAtThreadStart, IsEmpty());
    EXPECT_THAT(LogOf(ceremony), ElementsAre(Record(796, ceremony, "DevicePairingResultStatus::Paired")));
}

TEST(Reader, ThatCannotBeStartedEndsTheProcessBehindTheReportAndWithoutTheStatusRecord)
{
    auto const directory = DirectoryOfTheTest();
    ExpectFailFast(E_FAIL, [&] {
        std::filesystem::current_path(directory);
        Load(prompt + Tag());
        ReplaceImport(LibraryModule(), "CreateThread", RefuseThread);
        auto const vorlink = MakeLoggingVorlink();
        vorlink->PairedDevice("Tag", LeaveReport);
    });
    EXPECT_EQ(ReadFile("report"), "1");
    EXPECT_THAT(Log(), Not(IsEmpty()));
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
