// What the phone watcher makes of arrivals: whom it reports, what it keeps.
#include "tests/library/PhoneHost.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/StandIns.h"

#include <windows.h>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

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
    ReplaceImport(LibraryModule(), "WideCharToMultiByte", ConvertNothing);
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
    ASSERT_TRUE(WaitIdle());
    EXPECT_THAT(Phones::Names(), ElementsAre(L"Ana"));
    EXPECT_THAT(OtherPhones::Names(), ElementsAre(L"Ben"));
    EXPECT_THAT(Kept(*vorlink), ElementsAre("Ana", "Ben"));
    EXPECT_THAT(Log()[1], StopRecord(1));
}
