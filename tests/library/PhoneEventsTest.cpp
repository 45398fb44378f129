// What the phone watcher makes of the platform's events: whom it reports, what it keeps.
#include "tests/library/PhoneHost.h"
#include "tests/support/ReplacedImport.h"

#include <windows.h>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

namespace
{
    int WINAPI NoCharacters(UINT, DWORD, LPCWCH, int, LPSTR, int, LPCCH, LPBOOL)
    {
        return 0;
    }

    void Rename(std::string const& id, char const* name)
    {
        ASSERT_TRUE(SimulateDeviceChanges(id.c_str(), "System.ItemNameDisplay", name)) << SimulatorLastError();
        ASSERT_TRUE(SimulatorWaitIdle(20'000));
    }

    void Leave(std::string const& id)
    {
        ASSERT_TRUE(SimulateDeviceLeaves(id.c_str())) << SimulatorLastError();
        ASSERT_TRUE(SimulatorWaitIdle(20'000));
    }

    void Repeat(std::string const& id)
    {
        ASSERT_TRUE(SimulateDeviceRepeats(id.c_str())) << SimulatorLastError();
        ASSERT_TRUE(SimulatorWaitIdle(20'000));
    }
} // namespace

TEST(PhoneAdded, IsReportedWithItsLengthOnThePlatformsThread)
{
    Watching(Device("Phones", addressA));
    ASSERT_THAT(Phones::Names(), ElementsAre(L"Phones"));
    EXPECT_EQ(Phones::At(0).length, 6u);
    EXPECT_NE(Phones::At(0).thread, GetCurrentThreadId());
    EXPECT_THAT(Log(), ElementsAre(AddedRecord("Phones")));
}

TEST(PhoneAdded, IsReadInOrder)
{
    Watching(Device("Ana", addressA));
    EXPECT_THAT(Trace({"DeviceInformation.get_", "DeviceInformationPairing."}),
                ElementsAre("DeviceInformation.get_Name(" + idA + ") -> \"Ana\"",
                            "DeviceInformation.get_Pairing(" + idA + ")",
                            "DeviceInformationPairing.get_IsPaired(" + idA + ") -> false",
                            "DeviceInformation.get_Pairing(" + idA + ")",
                            "DeviceInformationPairing.get_CanPair(" + idA + ") -> true",
                            "DeviceInformation.get_Name(" + idA + ") -> \"Ana\""));
}

TEST(PhoneAdded, PairedIsKeptUnreportedAndNotAskedWhetherItCanPair)
{
    auto const vorlink = Watching(Device("Ana", addressA, "is-paired = true"));
    EXPECT_THAT(Phones::Names(), IsEmpty());
    EXPECT_FALSE(LogExists());
    EXPECT_THAT(Trace({"DeviceInformationPairing."}),
                ElementsAre("DeviceInformationPairing.get_IsPaired(" + idA + ") -> true"));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ana"));
}

TEST(PhoneAdded, ThatCannotPairIsKeptUnreported)
{
    auto const vorlink = Watching(Device("Ana", addressA, "can-pair = false\nunfiltered = true"));
    EXPECT_THAT(Phones::Names(), IsEmpty());
    EXPECT_FALSE(LogExists());
    EXPECT_THAT(Trace({"DeviceInformation.get_Name"}), SizeIs(1)) << "read again for a report alone";
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ana"));
}

TEST(PhoneAdded, WithoutANameIsKeptUnreported)
{
    auto const vorlink = Watching(Device("", addressA) + Device("Ben", addressB));
    EXPECT_THAT(Phones::Names(), ElementsAre(L"Ben"));
    EXPECT_THAT(Log(), ElementsAre(AddedRecord("Ben")));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("", "Ben"));
}

TEST(PhoneAdded, OutsideTheFilterIsNeverSeen)
{
    auto const vorlink =
        Watching(Device("Ana", addressA, "can-pair = false") + Device("Ben", addressB, "protocols = ['le']"));
    EXPECT_THAT(Phones::Names(), IsEmpty());
    EXPECT_THAT(Kept(*vorlink), IsEmpty());
}

TEST(PhoneAdded, TwiceIsReportedAndKeptTwice)
{
    auto const vorlink = Watching(Device("Ana", addressA));
    Repeat(idA);
    EXPECT_THAT(Phones::Names(), ElementsAre(L"Ana", L"Ana"));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ana", "Ana"));
}

TEST(PhoneAdded, LengthCountsUtf16UnitsAndTheRecordIsUtf8)
{
    std::string const name = "Zo\xc3\xab\xe2\x80\x99s \xe7\x94\xb5\xe8\xaf\x9d"; // 8 characters, 15 bytes
    Watching(Device(name, addressA));
    ASSERT_THAT(Phones::Names(), ElementsAre(L"Zo\u00eb\u2019s \u7535\u8bdd"));
    EXPECT_EQ(Phones::At(0).length, 8u);
    EXPECT_THAT(Log(), ElementsAre(AddedRecord(name)));
}

TEST(PhoneAdded, SixLettersOutsideTheBasicPlaneAreTwelveUnits)
{
    std::string name;
    for (char last = '\x80'; last < '\x86'; ++last)
    {
        name += std::string("\xf0\x9d\x93") + last; // U+1D4C0 and the five letters behind it
    }
    Watching(Device(name, addressA));
    ASSERT_THAT(Phones::Names(), ElementsAre(L"\U0001D4C0\U0001D4C1\U0001D4C2\U0001D4C3\U0001D4C4\U0001D4C5"));
    EXPECT_EQ(Phones::At(0).length, 12u);
    EXPECT_THAT(Log(), ElementsAre(AddedRecord(name)));
}

TEST(PhoneAdded, NameThatDoesNotConvertIsRecordedEmptyAndReportedWhole)
{
    ReplaceImport(LibraryModule(), "WideCharToMultiByte", &NoCharacters);
    Watching(Device("Ana", addressA));
    EXPECT_THAT(Phones::Names(), ElementsAre(L"Ana"));
    EXPECT_THAT(Log(), ElementsAre(AddedRecord("")));
}

TEST(PhoneAdded, InFlightWhenTheWatcherStopsIsStillKeptAndGoesToTheLatestCallback)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB, "appears-ms = 'never'"));
    HoldArrival(idB);
    EXPECT_FALSE(vorlink->StartIosWatcher(OtherPhones::Callback));
    SimulatorReleaseEvents();
    ASSERT_TRUE(OtherPhones::WaitFor(1));
    ASSERT_TRUE(SimulatorWaitIdle(20'000));
    EXPECT_THAT(Phones::Names(), ElementsAre(L"Ana"));
    EXPECT_THAT(OtherPhones::Names(), ElementsAre(L"Ben"));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ana", "Ben"));
    EXPECT_THAT(Log()[1], StopRecord(1));
}

TEST(PhoneAdded, WithConversionsInItsNameIsNotInterpreted)
{
    auto const vorlink = Watching(Device("%s%n%d%%", addressA));
    EXPECT_THAT(Phones::Names(), ElementsAre(L"%s%n%d%%"));
    EXPECT_THAT(Log(), ElementsAre(AddedRecord("%s%n%d%%")));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("%s%n%d%%"));
}

TEST(PhoneUpdated, BringsTheKeptEndpointUpToDateUnreported)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("", addressB) + Device("Cat", addressC));
    Rename(idB, "\"Late\"");
    EXPECT_THAT(Phones::Names(), ElementsAre(L"Ana", L"Cat"));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ana", "Late", "Cat"));
}

TEST(PhoneUpdated, ChangesTheFirstOfTwoAndLooksNoFurther)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB));
    Repeat(idA);
    SimulatorClearTrace();
    Rename(idA, "\"New\"");
    EXPECT_THAT(Trace({"DeviceInformation.get_Id", "DeviceInformation.Update"}), SizeIs(2));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("New", "Ben", "Ana"));
}

TEST(PhoneUpdated, UnknownChangesNothing)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB));
    vorlink->Uninitialize();
    Repeat(idB);
    Rename(idA, "\"New\"");
    EXPECT_THAT(Trace({"! DeviceWatcher.Updated"}), SizeIs(1));
    EXPECT_THAT(Trace({"DeviceInformation.Update"}), IsEmpty());
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ben"));
}

TEST(PhoneRemoved, IsForgotten)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB) + Device("Cat", addressC));
    Leave(idB);
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ana", "Cat"));
}

TEST(PhoneRemoved, OfTwoTheFirstIsForgotten)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB));
    Repeat(idA);
    Rename(idA, "\"First\"");
    ASSERT_THAT(Kept(*vorlink), ElementsAre("First", "Ben", "Ana"));
    Leave(idA);
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ben", "Ana"));
}

TEST(PhoneRemoved, UnknownChangesNothing)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB));
    vorlink->Uninitialize();
    Repeat(idB);
    Leave(idA);
    EXPECT_THAT(Trace({"! DeviceWatcher.Removed"}), SizeIs(1));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ben"));
}

TEST(PhoneRemoved, InFlightWhenTheWatcherStopsIsForgotten)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("Ben", addressB));
    SimulatorHoldEvents();
    ASSERT_TRUE(SimulateDeviceLeaves(idA.c_str()));
    ASSERT_TRUE(WaitForCall(("! DeviceWatcher.Removed(#1, " + idA + ")").c_str()));
    EXPECT_FALSE(vorlink->StartIosWatcher(Phones::Callback));
    SimulatorReleaseEvents();
    ASSERT_TRUE(SimulatorWaitIdle(20'000));
    EXPECT_THAT(LogOf("StopIosWatcher"), ElementsAre(StopRecord(2)));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ben"));
}
