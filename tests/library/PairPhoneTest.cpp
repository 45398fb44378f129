// Pairing one of the endpoints that the phone watcher has kept.
#include "tests/library/PhoneHost.h"
#include "tests/support/ReplacedImport.h"

#include <windows.h>

#include <thread>

using namespace test;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    constexpr char atOnce[] = "[device.pairing]\nduration-ms = 0";
    constexpr char onDemand[] = "[device.pairing]\nduration-ms = 'never'";

    std::string Visited(std::string const& name, std::string const& requested)
    {
        return Record(1222, search, "tname is " + name + " param name is " + requested);
    }

    std::string const found = Record(1225, search, "find device ");
    std::string const notFound = Record(1233, search, "Not Found dest  device");

    void ExpectNothingFound(PairReport const& report, std::string const& name)
    {
        EXPECT_EQ(report.address, 0u);
        EXPECT_EQ(report.paired, 0);
        EXPECT_EQ(Text(report.name), name);
        EXPECT_EQ(Text(report.addressText), "");
    }

    // Which endpoints a pairing was asked for.
    std::vector<std::string> PairingsBegun()
    {
        return Trace({"DeviceInformationCustomPairing.PairWithProtectionLevelAsync("});
    }
} // namespace

TEST(PairPhone, WithNothingKeptReportsBeforeItReturns)
{
    Load(patient);
    LoggingVorlink()->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::ThreadOf(0), GetCurrentThreadId());
    ExpectNothingFound(Host::At(0), "Ana");
    EXPECT_THAT(Log(), ElementsAre(notFound));
    EXPECT_THAT(Trace(), IsEmpty());
}

namespace
{
    std::vector<std::string> logAtTheReport;

    void ReadLog(PairReport)
    {
        logAtTheReport = Log();
    }
} // namespace

TEST(PairPhone, RecordsThatNothingWasFoundBeforeItReports)
{
    Load(patient);
    LoggingVorlink()->IosPairedDevicce("Ana", ReadLog);
    EXPECT_THAT(logAtTheReport, ElementsAre(notFound));
}

TEST(PairPhone, VisitsUpToTheMatchAndPairsIt)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB, atOnce) + Device("Cat", addressC));
    SimulatorClearTrace();
    vorlink->IosPairedDevicce("Ben", Host::Callback);
    EXPECT_THAT(LogOf(search), ElementsAre(Visited("Ana", "Ben"), Visited("Ben", "Ben"), found));
    EXPECT_THAT(Trace({"DeviceInformation.get_Name"}),
                ElementsAre("DeviceInformation.get_Name(" + idA + ") -> \"Ana\"",
                            "DeviceInformation.get_Name(" + idB + ") -> \"Ben\""));
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 1);
    EXPECT_EQ(Host::At(0).address, 0xa4c13800000bu);
    EXPECT_EQ(Text(Host::At(0).name), "Ben");
}

TEST(PairPhone, AllAreVisitedWhenNoneMatches)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB));
    vorlink->IosPairedDevicce("Cat", Host::Callback);
    EXPECT_THAT(LogOf(search), ElementsAre(Visited("Ana", "Cat"), Visited("Ben", "Cat"), notFound));
    ASSERT_EQ(Host::Count(), 1u);
    ExpectNothingFound(Host::At(0), "Cat");
    EXPECT_THAT(PairingsBegun(), IsEmpty());
}

TEST(PairPhone, NamesAreComparedByTheByte)
{
    auto const vorlink = Watching(Device("Ana", addressA, atOnce));
    for (auto const* const other : {"ana", "ANA", "Ana ", " Ana", "An", "Anab", ""})
    {
        auto const before = Host::Count();
        vorlink->IosPairedDevicce(other, Host::Callback);
        ASSERT_EQ(Host::Count(), before + 1);
        ExpectNothingFound(Host::At(before), other);
    }
    EXPECT_THAT(PairingsBegun(), IsEmpty());
}

TEST(PairPhone, NamesAreNotNormalised)
{
    auto const vorlink = Watching(Device("Zo\xc3\xab", addressA, atOnce)); // one character
    vorlink->IosPairedDevicce("Zoe\xcc\x88", Host::Callback);              // two
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 0);
    vorlink->IosPairedDevicce("Zo\xc3\xab", Host::Callback);
    ASSERT_EQ(Host::Count(), 2u);
    EXPECT_EQ(Host::At(1).paired, 1);
    EXPECT_EQ(Text(Host::At(1).name), "Zo\xc3\xab");
}

TEST(PairPhone, LongNamesMatchWholeAlone)
{
    auto const vorlink = Watching(Device("A name of more than 14 bytes", addressA, atOnce));
    vorlink->IosPairedDevicce("name of more than 14", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 0);
}

TEST(PairPhone, AnEmptyRequestMatchesTheNamelessAlone)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("", addressB, atOnce));
    vorlink->IosPairedDevicce("", Host::Callback);
    EXPECT_THAT(LogOf(search), ElementsAre(Visited("Ana", ""), Visited("", ""), found));
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).address, 0xa4c13800000bu);
}

TEST(PairPhone, TheFirstOfTwoOfTheSameNameIsPaired)
{
    auto const vorlink = Watching(Device("Ana", addressA, atOnce) + Device("Ana", addressB, atOnce));
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).address, 0xa4c13800000au);
    EXPECT_THAT(LogOf(search), ElementsAre(Visited("Ana", "Ana"), found));
}

TEST(PairPhone, TheFirstOfOneKeptTwiceIsPaired)
{
    auto const vorlink = Watching(Device("Ana", addressA, atOnce));
    ASSERT_TRUE(SimulateDeviceRepeats(idA.c_str()));
    ASSERT_TRUE(Phones::WaitFor(2));
    ASSERT_TRUE(SimulatorWaitIdle(20'000));
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    EXPECT_THAT(LogOf(search), ElementsAre(Visited("Ana", "Ana"), found));
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 1);
}

TEST(PairPhone, OneWhoseNameCameLateIsFoundByIt)
{
    auto const vorlink = Watching(Device("", addressA, atOnce));
    ASSERT_TRUE(SimulateDeviceChanges(idA.c_str(), "System.ItemNameDisplay", "\"Late\""));
    ASSERT_TRUE(SimulatorWaitIdle(20'000));
    vorlink->IosPairedDevicce("Late", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 1);
}

TEST(PairPhone, SearchesWhatAStoppedWatcherHasLeft)
{
    auto const vorlink = Watching(Device("Ana", addressA, atOnce));
    ASSERT_FALSE(vorlink->StartIosWatcher(Phones::Callback));
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 1);
}

TEST(PairPhone, PairsNothingThatUninitializeHasForgotten)
{
    auto const vorlink = Watching(Device("Ana", addressA, atOnce));
    vorlink->Uninitialize();
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    ExpectNothingFound(Host::At(0), "Ana");
}

TEST(PairPhone, DoesNotWaitForTheOutcome)
{
    auto const vorlink = Watching(Device("Ana", addressA, onDemand));
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_TRUE(WaitForCall("Accept("));
    EXPECT_EQ(Host::Count(), 0u);
    EXPECT_THAT(PairingsBegun(), ElementsAre(HasSubstr("(" + idA + ", ")));
    ASSERT_TRUE(SimulatePairingCompletes(idA.c_str(), 0)) << SimulatorLastError();
    ASSERT_TRUE(Host::WaitFor(1));
    EXPECT_EQ(Host::At(0).paired, 1);
    ASSERT_TRUE(SimulatorWaitIdle(20'000));
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
    auto const vorlink = Watching(Device("Ana", addressA, onDemand));
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_TRUE(WaitForCall("Accept("));
    std::thread([&] { // its lookup waits for an enumeration that the test completes
        MakeVorlink()->PairedDevice("Nobody", OtherHost::Callback);
    })
        .detach();
    ASSERT_TRUE(WaitForCall("! DeviceWatcher.Added(#2, "));
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
    auto const vorlink = Watching(Device("Ana", addressA, onDemand) + Device("Ben", addressB));
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

namespace
{
    // The first conversion of a name meets the departure of a device.
    int WINAPI LeavingMeanwhile(UINT page, DWORD flags, LPCWCH text, int length, LPSTR narrow, int size, LPCCH other,
                                LPBOOL used)
    {
        static bool const left = [] {
            EXPECT_TRUE(SimulateDeviceLeaves(idA.c_str())) << SimulatorLastError();
            return SimulatorWaitIdle(20'000) != 0;
        }();
        EXPECT_TRUE(left);
        return WideCharToMultiByte(page, flags, text, length, narrow, size, other, used);
    }
} // namespace

TEST(PairPhone, DeviceThatLeavesDuringTheSearchMakesItFailAtTheEnd)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB));
    ReplaceImport(LibraryModule(), "WideCharToMultiByte", &LeavingMeanwhile);
    constexpr auto outOfBounds = static_cast<std::int32_t>(0x8000000B);
    EXPECT_EQ(CodeOf([&] { vorlink->IosPairedDevicce("Nobody", Host::Callback); }), outOfBounds);
    EXPECT_THAT(LogOf(search), ElementsAre(Visited("Ana", "Nobody")));
    EXPECT_EQ(Host::Count(), 0u);
    vorlink->IosPairedDevicce("Nobody", Host::Callback);
    EXPECT_EQ(Host::Count(), 1u) << "the next search gets over it";
}

TEST(PairPhone, ConversionsInNamesAreNotInterpreted)
{
    auto const vorlink = Watching(Device("%s%n%d", addressA));
    vorlink->IosPairedDevicce("%n%s", Host::Callback);
    EXPECT_THAT(LogOf(search), ElementsAre(Visited("%s%n%d", "%n%s"), notFound));
}

TEST(PairPhone, NotFoundDoesNotStoreTheName)
{
    auto const vorlink = Watching(Device("Ana", addressA, onDemand));
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
