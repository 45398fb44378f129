// Identifier mode and the taker's odd wake-ups; name mode is tested from outside.
#include "pairing/LibraryState.h"
#include "pairing/SubVorlink.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/Taker.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <vector>

using namespace test;
using namespace vorlink;
using testing::ElementsAre;
using testing::SizeIs;

namespace
{
    // A finished run with the scenario's LE endpoints in the queue.
    void QueueLe(SubVorlink& object, std::string const& devices)
    {
        Load(prompt + devices);
        object.StartDiscovery(true, false);
        ASSERT_TRUE(WaitIdle());
        ASSERT_TRUE(Library().enumerationFinished);
        Library().logEnabled = true;
    }

    std::string const le = "protocols = ['le']\n";

    std::vector<bool> finishedAtRecord;

    // Every record asks for the directory.
    char* NoteRecord(char* buffer, int size)
    {
        finishedAtRecord.push_back(Library().enumerationFinished);
        return GetCurrentDirectoryA(static_cast<DWORD>(size), buffer) ? buffer : nullptr;
    }
} // namespace

TEST(DeviceLookup, IdentifierModeFindsAFragmentAndEndsTheRun)
{
    SubVorlink object;
    QueueLe(object, Device("Tag", tagAddress, le));
    Library().enumerationFinished = false;
    auto const device = object.GetDeviceforName("f4:a5:b6", true);
    ASSERT_TRUE(device);
    EXPECT_EQ(device.Name(), L"Tag");
    EXPECT_TRUE(Library().enumerationFinished);
    auto const id = LeId(tagAddress);
    EXPECT_THAT(Log(),
                ElementsAre(Record(399, lookup, "f4:a5:b6"), Record(416, lookup, id),
                            Record(423, lookup, "tname  is " + id + " ,name is f4:a5:b6 "),
                            Record(425, lookup, "BLE    id is: " + id + "  ,pair status : 1 , isPaired is:  0")));
}

TEST(DeviceLookup, IdentifierModeEndsTheRunBeforeItAsksTheDeviceMore)
{
    SubVorlink object;
    QueueLe(object, Device("Tag", tagAddress, le));
    Library().enumerationFinished = false;
    ASSERT_TRUE(SimulateFailure("DeviceInformationPairing.get_IsPaired", platformCode));
    EXPECT_THROW(object.GetDeviceforName("f4:a5:b6", true), winrt::hresult_error);
    EXPECT_TRUE(Library().enumerationFinished);
}

TEST(DeviceLookup, IdentifierModeEndsTheRunBeforeItRecordsTheMatch)
{
    SubVorlink object;
    QueueLe(object, Device("Tag", tagAddress, le));
    Library().enumerationFinished = false;
    ReplaceImport(GetModuleHandleW(nullptr), "_getcwd", NoteRecord);
    object.GetDeviceforName("f4:a5:b6", true);
    EXPECT_THAT(LogOf(lookup), SizeIs(4));
    EXPECT_THAT(finishedAtRecord, ElementsAre(false, false, true, true));
}

TEST(DeviceLookup, IdentifierWithoutTheMarkerIsSkipped)
{
    SubVorlink object;
    QueueLe(object, Device("Tag", tagAddress, le + "[device.le]\nid = 'Bluetooth#Bluetooth-c1:d2:e3:f4:a5:b6'"));
    EXPECT_EQ(object.GetDeviceforName("f4:a5:b6", true), nullptr);
    EXPECT_THAT(Log(), ElementsAre(Record(399, lookup, "f4:a5:b6"),
                                   Record(416, lookup, "Bluetooth#Bluetooth-c1:d2:e3:f4:a5:b6")));
}

TEST(DeviceLookup, MarkerMayStandAnywhere)
{
    SubVorlink object;
    QueueLe(object, Device("Tag", tagAddress, le + "[device.le]\nid = 'x f4:a5:b6 BluetoothLE#BluetoothLE'"));
    EXPECT_TRUE(object.GetDeviceforName("f4:a5:b6", true));
}

TEST(DeviceLookup, IdentifierModeMindsLetterCase)
{
    SubVorlink object;
    QueueLe(object, Device("Tag", tagAddress, le));
    EXPECT_EQ(object.GetDeviceforName("F4:A5:B6", true), nullptr);
}

TEST(DeviceLookup, FinishedRunWithoutDevicesRecordsTheRequestedTextAlone)
{
    SubVorlink object;
    QueueLe(object, "");
    EXPECT_EQ(object.GetDeviceforName("Speaker", false), nullptr);
    EXPECT_THAT(Log(), ElementsAre(Record(399, lookup, "Speaker")));
}

TEST(DeviceLookup, NameModeDoesNotEndTheRun)
{
    SubVorlink object;
    QueueLe(object, Device("Tag", tagAddress, le));
    Library().enumerationFinished = false;
    ASSERT_TRUE(object.GetDeviceforName("Tag", false));
    EXPECT_FALSE(Library().enumerationFinished);
}

TEST(DeviceLookup, GivesAReferenceOfItsOwnAndKeepsTheLatestDeviceInTheObject)
{
    SubVorlink object;
    QueueLe(object, Device("One", "00:00:00:00:00:01", le) + Device("Two", "00:00:00:00:00:02", le) +
                        Device("Three", "00:00:00:00:00:03", le));
    auto const first = object.GetDeviceforName("One", false);
    ASSERT_TRUE(first);
    EXPECT_EQ(object.GetDeviceforName("Nobody", false), nullptr);
    EXPECT_EQ(first.Name(), L"One");
    Library().enumerationFinished = false;
    auto kept = Waiting([&] { return object.GetDeviceforName("Three", false) != nullptr; });
    WakeTaker();
    EXPECT_TRUE(Result(kept)) << "the last one taken stays";
}

TEST(DeviceLookup, WokenBeforeTheFirstDeviceItAsksAgain)
{
    SubVorlink object;
    auto found = Waiting([&] { return object.GetDeviceforName("Tag", false) != nullptr; });
    WakeTaker();
    FinishDiscovery();
    EXPECT_FALSE(Result(found));
}

TEST(DeviceLookup, WokenWithNothingNewTestsTheDeviceAlreadyHeldAgain)
{
    SubVorlink object;
    QueueLe(object, Device("Tag", tagAddress, le));
    EXPECT_EQ(object.GetDeviceforName("Nobody", false), nullptr);
    Library().enumerationFinished = false;
    SimulatorClearTrace();
    auto found = Waiting([&] { return object.GetDeviceforName("Tag", false) != nullptr; });
    EXPECT_THAT(Trace(), SizeIs(0));
    WakeTaker();
    EXPECT_TRUE(Result(found));
    EXPECT_THAT(Trace({"DeviceInformation.get_Name("}), SizeIs(1));
}
