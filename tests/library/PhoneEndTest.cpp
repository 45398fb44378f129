// The 25 seconds of wall clock after which a phone watcher is ended, and what keeps the library loaded meanwhile.
#include "tests/library/PhoneHost.h"
#include "tests/support/LiveObjects.h"
#include "tests/support/ProcessEnd.h"
#include "tests/support/ReplacedImport.h"

#include <windows.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <thread>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    using Clock = std::chrono::steady_clock;
    using std::chrono::seconds;

    constexpr seconds life(25);

    // Beyond any delay of a busy machine, below the limit of a test.
    constexpr seconds late(40);

    bool LogComesToHold(std::string const& record, Clock::time_point limit, std::ptrdiff_t times = 1)
    {
        return WaitUntil(
            [&] {
                auto const log = Log();
                return std::count(log.begin(), log.end(), record) >= times;
            },
            limit - Clock::now());
    }

    HANDLE endThread = nullptr;

    HANDLE WINAPI KeptThread(SECURITY_ATTRIBUTES* security, SIZE_T stack, LPTHREAD_START_ROUTINE body, void* argument,
                             DWORD flags, DWORD* id)
    {
        HANDLE const thread = CreateThread(security, stack, body, argument, flags, id);
        DuplicateHandle(GetCurrentProcess(), thread, GetCurrentProcess(), &endThread, 0, FALSE, DUPLICATE_SAME_ACCESS);
        return thread;
    }

    std::vector<std::string> Stops()
    {
        return Trace({"DeviceWatcher.Stop("});
    }
} // namespace

TEST(SlowPhoneWatcher, IsEndedAfter25Seconds)
{
    auto const start = Clock::now();
    auto const vorlink = Watching(Device("Ana", addressA));
    ASSERT_TRUE(LogComesToHold(StopRecord(1), start + late));
    EXPECT_GE(Clock::now() - start, life);
    EXPECT_THAT(Log(), ElementsAre(AddedRecord("Ana"), exitRecord, StopRecord(1)));
    EXPECT_THAT(WithoutTokens(Trace({"DeviceWatcher.remove_", "DeviceWatcher.Stop("})),
                ElementsAre("DeviceWatcher.remove_Added(#1)", "DeviceWatcher.remove_Updated(#1)",
                            "DeviceWatcher.remove_EnumerationCompleted(#1)", "DeviceWatcher.remove_Stopped(#1)",
                            "DeviceWatcher.Stop(#1)"));
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback)) << "it is idle again";
}

TEST(SlowPhoneWatcher, CompletedBeforeIsStillSpokenOfAfter25SecondsAndNotStoppedAgain)
{
    ReplaceImport(LibraryModule(), "CreateThread", KeptThread);
    Load(prompt + Device("Ana", addressA));
    auto const vorlink = MakeLoggingVorlink();
    auto const start = Clock::now();
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
    ASSERT_TRUE(LogComesToHold(StopRecord(1), start + patience));
    EXPECT_LT(Clock::now() - start, life);
    SimulatorClearTrace();
    ASSERT_EQ(WaitForSingleObject(endThread, 40'000), WAIT_OBJECT_0);
    EXPECT_GE(Clock::now() - start, life);
    EXPECT_THAT(Log(), ElementsAre(AddedRecord("Ana"), StopRecord(1), exitRecord));
    EXPECT_THAT(Stops(), IsEmpty());
}

TEST(SlowPhoneWatcher, ThreadOfAnEarlierStartEndsTheNext)
{
    auto const first = Clock::now();
    auto const vorlink = Watching(Device("Ana", addressA));
    EXPECT_FALSE(vorlink->StartIosWatcher(Phones::Callback));
    std::this_thread::sleep_for(seconds(4)); // so far apart that the two threads cannot be confused
    auto const second = Clock::now();
    EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
    ASSERT_TRUE(SimulatorWaitForTrace("DeviceWatcher.Stop(#2)", 1, 40'000));
    EXPECT_GE(Clock::now() - first, life);
    EXPECT_LT(Clock::now() - second, life) << "its own thread comes later";
    ASSERT_TRUE(LogComesToHold(StopRecord(1), first + late, 2));
    EXPECT_THAT(Log(), ElementsAre(AddedRecord("Ana"), StopRecord(1), AddedRecord("Ana"), exitRecord, StopRecord(1)));
}

TEST(SlowPhoneWatcher, LibraryThatTheHostUnloadsStaysUntilTheThreadHasEndedIt)
{
    Load(patient + Device("Ana", addressA));
    HMODULE const module = LoadLibraryW(L"vorlink.dll");
    ASSERT_TRUE(module);
    auto const start = Clock::now();
    {
        auto const vorlink = MakeVorlink(module);
        vorlink->SetLogEnabled(true);
        EXPECT_TRUE(vorlink->StartIosWatcher(Phones::Callback));
    }
    ASSERT_TRUE(Phones::WaitFor(1));
    ASSERT_TRUE(WaitIdle());
    ASSERT_TRUE(FreeLibrary(module));
    EXPECT_TRUE(GetModuleHandleW(L"vorlink.dll")) << "its thread is under way";
    ASSERT_TRUE(WaitUntil([] { return !GetModuleHandleW(L"vorlink.dll"); }, start + late - Clock::now()))
        << "its last thread has not left it";
    EXPECT_GE(Clock::now() - start, life);
    EXPECT_THAT(Log(), ElementsAre(AddedRecord("Ana"), exitRecord, StopRecord(1)));
    EXPECT_TRUE(LiveObjectsFallTo(0));
}

// A watcher that could not be started is no better than a failing stop, for the thread of an earlier start too.
TEST(SlowPhoneWatcher, ThreadOfAnEarlierStartEndsTheProcessAtAWatcherThatNeverRan)
{
    EXPECT_EXIT(
        {
            auto const vorlink = Watching("");
            vorlink->StartIosWatcher(Phones::Callback);
            SimulateFailure("DeviceWatcher.Start", platformCode);
            CodeOfStart(*vorlink);
            Sleep(40'000);
            TerminateProcess(GetCurrentProcess(), 6);
        },
        [](int code) { return code != 0 && code != 6 && !EndedByFailFast(code); }, "terminate called");
}

TEST(SlowPhoneWatcher, FailingStopOfItsThreadEndsTheProcess)
{
    auto const directory = DirectoryOfTheTest();
    EXPECT_EXIT(
        {
            std::filesystem::current_path(directory);
            auto const vorlink = Watching(Device("Ana", addressA));
            SimulateFailure("DeviceWatcher.Stop", platformCode);
            Sleep(40'000);
            TerminateProcess(GetCurrentProcess(), 6);
        },
        [](int code) { return code != 0 && code != 6 && !EndedByFailFast(code); }, "terminate called");
    EXPECT_THAT(Log(), ElementsAre(AddedRecord("Ana"), exitRecord));
}
