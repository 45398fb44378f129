// The LE side's pieces: the thread's body, and the leUnpairing that it begins.
#include "pairing/LibraryState.h"
#include "pairing/SubVorlink.h"
#include "pairing/UnpairLeThread.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Patience.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

using namespace test;
using namespace vorlink;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

namespace
{
    std::atomic<int> calls = 0;
    std::atomic<bool> success = false;
    std::atomic<int> reserved = -1;
    std::atomic<std::size_t> recordsThen = 0;

    void Callback(bool succeeded, int second)
    {
        success = succeeded;
        reserved = second;
        recordsThen = LogOf(leUnpairing).size();
        ++calls;
    }

    std::string Paired(std::string const& unpairingKeys)
    {
        return prompt +
               Device("Tag", tagAddress, "protocols = ['le']\nis-paired = true\n[device.unpairing]\n" + unpairingKeys);
    }

    void Prepare(std::string const& scenario)
    {
        Load(scenario);
        Library().logEnabled = true;
    }

    bool WaitForCallback()
    {
        return WaitUntil([] { return calls > 0; }) && calls == 1;
    }

    std::atomic<DWORD> leThread = 0;
    std::vector<DWORD> sleeps; // of that thread

    void WINAPI NoteSleep(DWORD milliseconds)
    {
        if (GetCurrentThreadId() == leThread)
        {
            sleeps.push_back(milliseconds);
            return;
        }
        SleepEx(milliseconds, FALSE); // as any other thread has to
    }

    std::string Begin(std::string const& piece)
    {
        return Record(1066, leUnpairing, "ble   destStr is " + piece + " ");
    }
} // namespace

TEST(UnpairBleDevice, CompletesInsideTheCallWhenThePlatformAnswersAtOnce)
{
    Prepare(Paired("duration-ms = 0"));
    SubVorlink object;
    object.UnpairBleDevice("f4:a5:b6", Callback);
    ASSERT_EQ(calls, 1);
    EXPECT_TRUE(success);
    EXPECT_EQ(reserved, 0);
    EXPECT_EQ(recordsThen, 1u);
    EXPECT_THAT(LogOf(leUnpairing),
                ElementsAre(Begin("f4:a5:b6"), Record(1083, leUnpairing, "unpaired device success")));
}

TEST(UnpairBleDevice, ReturnsAtItsFirstWait)
{
    Prepare(Paired("duration-ms = 'never'"));
    SubVorlink object;
    object.UnpairBleDevice("f4:a5:b6", Callback);
    EXPECT_EQ(calls, 0);
    EXPECT_TRUE(Library().enumerationFinished) << "the match has ended the run";
    ASSERT_TRUE(SimulateUnpairingCompletes(LeId(tagAddress).c_str(), 4)) << SimulatorLastError();
    ASSERT_TRUE(WaitForCallback());
    EXPECT_FALSE(success);
    EXPECT_EQ(recordsThen, 2u);
    EXPECT_THAT(LogOf(leUnpairing),
                ElementsAre(Begin("f4:a5:b6"), Record(1089, leUnpairing, "unpaired device failed")));
}

TEST(UnpairBleDevice, ReportsSuccessForAnEndpointThatIsNotThere)
{
    Prepare(Paired("duration-ms = 0"));
    SubVorlink object;
    object.UnpairBleDevice("F4:A5:B6", Callback);
    ASSERT_EQ(calls, 1);
    EXPECT_TRUE(success);
    EXPECT_EQ(recordsThen, 2u);
    EXPECT_THAT(LogOf(leUnpairing),
                ElementsAre(Begin("F4:A5:B6"), Record(1071, leUnpairing, "unpaired device failed")));
    EXPECT_THAT(Trace({"DeviceInformationPairing."}), IsEmpty());
}

TEST(UnpairBleDevice, RecordsAnErrorAndReportsNothing)
{
    Prepare(Paired("duration-ms = 0"));
    ASSERT_TRUE(SimulateFailure("DeviceWatcher.Start", platformCode)) << SimulatorLastError();
    SubVorlink object;
    EXPECT_NO_THROW(object.UnpairBleDevice("f4:a5:b6", Callback));
    EXPECT_EQ(calls, 0);
    auto const records = LogOf(leUnpairing);
    ASSERT_THAT(records, SizeIs(1)) << "the error comes before the first record";
    EXPECT_THAT(records[0], StartsWith("[File:SubVorlink][Line:1101][Function:SubVorlink::UnpairBleDevice] "
                                       "exception -> "));
}

TEST(UnpairBleDevice, RecordsAnErrorThatComesLater)
{
    Prepare(Paired("duration-ms = 'never'"));
    SubVorlink object;
    object.UnpairBleDevice("f4:a5:b6", Callback);
    ASSERT_TRUE(SimulateUnpairingFails(LeId(tagAddress).c_str(), platformCode)) << SimulatorLastError();
    ASSERT_TRUE(WaitUntil([] { return LogOf(leUnpairing).size() >= 2; }));
    Sleep(static_cast<DWORD>(moment.count()));
    EXPECT_EQ(calls, 0);
    ASSERT_THAT(LogOf(leUnpairing), SizeIs(2));
    EXPECT_THAT(LogOf(leUnpairing)[1], HasSubstr("[Line:1101]"));
}

TEST(UnpairLeThread, LastsForFourTenthsOfASecondAndAwaitsNoAnswer)
{
    Prepare(Paired("duration-ms = 'never'"));
    SubVorlink object;
    auto const start = std::chrono::steady_clock::now();
    UnpairLeThread(object, tagAddress, Callback);
    auto const duration = std::chrono::steady_clock::now() - start;
    EXPECT_GE(duration, std::chrono::milliseconds(390));
    EXPECT_LT(duration, std::chrono::milliseconds(2500));
    EXPECT_EQ(calls, 0);
    EXPECT_THAT(Trace({"DeviceInformationPairing.UnpairAsync("}), SizeIs(1));
    ASSERT_TRUE(SimulateUnpairingCompletes(LeId(tagAddress).c_str(), 0)) << SimulatorLastError();
    EXPECT_TRUE(WaitForCallback());
    EXPECT_TRUE(success);
}

TEST(UnpairLeThread, SleepsFourTimesForATenthOfASecond)
{
    Prepare(Paired("duration-ms = 0"));
    ReplaceImport(GetModuleHandleW(nullptr), "Sleep", NoteSleep);
    SubVorlink object;
    std::thread([&] {
        leThread = GetCurrentThreadId();
        UnpairLeThread(object, tagAddress, Callback);
        leThread = 0; // the thread's own end may sleep too
    }).join();
    EXPECT_THAT(sleeps, ElementsAre(100, 100, 100, 100));
    EXPECT_EQ(calls, 1);
}
