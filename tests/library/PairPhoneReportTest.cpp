// What the host hears of a search for a phone and of the pairing behind it, and when.
#include "tests/library/PhoneSearch.h"
#include "tests/support/KeptLog.h"
#include "tests/support/ReplacedImport.h"

#include <windows.h>

#include <future>

using namespace test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    // The first conversion of a name meets the departure of a device.
    int WINAPI LeavingMeanwhile(UINT page, DWORD flags, LPCWCH text, int length, LPSTR narrow, int size, LPCCH other,
                                LPBOOL used)
    {
        static bool const left = [] {
            EXPECT_TRUE(SimulateDeviceLeaves(idA.c_str())) << SimulatorLastError();
            return WaitIdle();
        }();
        EXPECT_TRUE(left);
        return WideCharToMultiByte(page, flags, text, length, narrow, size, other, used);
    }
} // namespace

TEST(PairPhone, WithNothingKeptReportsBeforeItReturns)
{
    Load(patient);
    MakeLoggingVorlink()->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::ThreadOf(0), GetCurrentThreadId());
    ExpectNothingFound(Host::At(0), "Ana");
    EXPECT_THAT(Log(), ElementsAre(notFound));
    EXPECT_THAT(Trace(), IsEmpty());
}

TEST(PairPhone, RecordsThatNothingWasFoundBeforeItReports)
{
    Load(patient);
    MakeLoggingVorlink()->IosPairedDevicce("Ana", KeepLogThenReport);
    EXPECT_THAT(logAtReport, ElementsAre(notFound));
}

TEST(PairPhone, DoesNotWaitForTheOutcome)
{
    auto const vorlink = Watching(Device("Ana", addressA, pairsOnDemand));
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_TRUE(WaitForCall("Accept("));
    EXPECT_EQ(Host::Count(), 0u);
    EXPECT_THAT(PairingsBegun(), ElementsAre(HasSubstr("(" + idA + ", ")));
    ASSERT_TRUE(SimulatePairingCompletes(idA.c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(Host::WaitFor(1));
    EXPECT_EQ(Host::At(0).paired, 1);
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(Host::Count(), 1u);
}

TEST(PairPhone, OnePairedAlreadyIsReportedAsThePlatformAnswers)
{
    auto const vorlink = Watching(Device("Ana", addressA, "is-paired = true"));
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_TRUE(Host::WaitFor(1));
    EXPECT_EQ(Host::At(0).paired, 0);
    EXPECT_EQ(Text(Host::At(0).addressText), "a4c13800000a");
}

TEST(PairPhone, ALaterPairingByNameTakesOverTheReport)
{
    auto const vorlink = Watching(Device("Ana", addressA, pairsOnDemand));
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_TRUE(WaitForCall("Accept("));
    auto const lookup = std::async(std::launch::async, [] { // waits for an enumeration that the test completes
        MakeVorlink()->PairedDevice("Nobody", OtherHost::Callback);
    });
    EXPECT_TRUE(WaitForCall("! DeviceWatcher.Added(#2, "));
    SimulateEnumerationCompletes();
    ASSERT_TRUE(OtherHost::WaitFor(1));
    ASSERT_TRUE(SimulatePairingCompletes(idA.c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(OtherHost::WaitFor(2));
    EXPECT_EQ(OtherHost::At(1).paired, 1);
    EXPECT_EQ(Text(OtherHost::At(1).name), "Ana") << "a name that was not found is not stored";
    EXPECT_EQ(Host::Count(), 0u);
}

TEST(PairPhone, ErrorOfAnEntryReachesTheHostBehindTheStoredCallback)
{
    auto const vorlink = Watching(Device("Ana", addressA, pairsOnDemand) + Device("Ben", addressB));
    vorlink->IosPairedDevicce("Ana", OtherHost::Callback);
    ASSERT_TRUE(WaitForCall("Accept("));
    ASSERT_TRUE(SimulateFailure("DeviceInformation.get_Name", platformCode));
    EXPECT_EQ(CodeOf([&] { vorlink->IosPairedDevicce("Ben", Host::Callback); }), platformCode);
    EXPECT_EQ(Host::Count(), 0u);
    EXPECT_THAT(PairingsBegun(), SizeIs(1));
    ASSERT_TRUE(SimulatePairingCompletes(idA.c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(Host::WaitFor(1));
    EXPECT_EQ(Text(Host::At(0).name), "Ana");
    EXPECT_EQ(OtherHost::Count(), 0u);
}

TEST(PairPhone, DeviceThatLeavesDuringTheSearchMakesItFailAtTheEnd)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB));
    ReplaceImport(LibraryModule(), "WideCharToMultiByte", LeavingMeanwhile);
    EXPECT_EQ(CodeOf([&] { vorlink->IosPairedDevicce("Nobody", Host::Callback); }), outOfBounds);
    EXPECT_THAT(LogOf(search), ElementsAre(Visited("Ana", "Nobody")));
    EXPECT_EQ(Host::Count(), 0u);
    vorlink->IosPairedDevicce("Nobody", Host::Callback);
    EXPECT_EQ(Host::Count(), 1u) << "the next search gets over it";
}

TEST(PairPhone, NotFoundDoesNotStoreTheName)
{
    auto const vorlink = Watching(Device("Ana", addressA, pairsOnDemand));
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_TRUE(WaitForCall("Accept("));
    vorlink->IosPairedDevicce("Nobody", OtherHost::Callback);
    ASSERT_TRUE(SimulatePairingCompletes(idA.c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(OtherHost::WaitFor(2));
    EXPECT_EQ(Text(OtherHost::At(1).name), "Ana");
}

TEST(PairPhone, ANameOf128BytesRunsOnIntoTheAddressText)
{
    Load(patient);
    std::string const name(200, 'n');
    MakeVorlink()->IosPairedDevicce(name, Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Text(Host::At(0).name), std::string(128, 'n'));
    EXPECT_EQ(Text(Host::At(0).addressText), std::string(72, 'n'));
}

TEST(PairPhone, ANameBeyondTheReportIsCut)
{
    Load(patient);
    MakeVorlink()->IosPairedDevicce(std::string(5000, 'n'), Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Text(Host::At(0).name), std::string(128, 'n'));
    EXPECT_EQ(Text(Host::At(0).addressText), std::string(256, 'n'));
}
