// What is believed of the library's log, and what is not.
#include "host/Evidence.h"

#include <gmock/gmock.h>

#include <string>

using namespace host;
using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
    constexpr char lookup[] = "SubVorlink::GetDeviceforName";
    constexpr char unpairing[] = "SubVorlink::UnpairedCurrent";
    constexpr char leUnpairing[] = "SubVorlink::UnpairBleDevice";
    constexpr char ceremony[] = "SubVorlink::PairingDevice";

    Record Of(char const* function, int line, std::string const& message)
    {
        return {"2026-11-21 12:00:00 000", 0, line, function, message};
    }

    constexpr char state[] =
        "CLassic id is: Bluetooth#Bluetooth00:1a:7d:da:71:13-a4:c1:38:5e:22:0f  ,pair status : 1 , "
        "isPaired is:  0";

    using Records = std::vector<Record>;

    // A search for "TV" that has found `name`.
    Records FoundTv(std::string const& name)
    {
        return {Of(unpairing, 1145, "Entery unpaired  name-> TV"),
                Of(lookup, 399, "TV"),
                Of(lookup, 416, "Other"),
                Of(lookup, 416, name),
                Of(lookup, 435, "tname  is " + name + " ,name is TV "),
                Of(lookup, 437, state)};
    }
} // namespace

TEST(Evidence, ASearchTellsTheDevicesOwnNameAndAddress)
{
    for (std::string const name : {"TV", "TV Soundbar", "TV ,name is TV ", "T\nV", "TV\u202E"})
    {
        auto const search = ReadSearch(FoundTv(name), "TV");
        ASSERT_EQ(search.state, SearchState::Found) << name;
        EXPECT_EQ(search.match.name, name);
        EXPECT_EQ(search.match.address, "a4:c1:38:5e:22:0f");
        EXPECT_FALSE(search.match.isPaired);
    }
}

TEST(Evidence, ASearchByALongNameHasLinesOfItsOwn)
{
    Records const records = {Of(lookup, 416, "A"), Of(lookup, 444, "tname  is A ,name is A "), Of(lookup, 446, state)};
    EXPECT_EQ(ReadSearch(records, "A").state, SearchState::Found);
}

TEST(Evidence, ASearchThatLookedAtOthersAloneFoundNothing)
{
    Records const records = {Of(lookup, 399, "TV"), Of(lookup, 416, "Other")};
    EXPECT_EQ(ReadSearch(records, "TV").state, SearchState::Nothing);
    EXPECT_THAT(SeenNames(records, "TV"), ElementsAre("Other"));
}

TEST(Evidence, WithoutALogNothingIsKnown)
{
    EXPECT_EQ(ReadSearch(Records{}, "TV").state, SearchState::Unclear);
}

TEST(Evidence, ANameLikeAMessageIsNoMessage)
{
    for (auto const* const name : {"CLassic id is: ", state, "tname  is TV ,name is TV ", "TV\nCLassic id is: x"})
    {
        EXPECT_EQ(ReadSearch(Records{Of(lookup, 399, "TV"), Of(lookup, 416, name)}, "TV").state, SearchState::Nothing)
            << name;
    }
}

TEST(Evidence, AFindWithoutItsCandidateIsUnclear)
{
    // What a name with line feeds can make of one record.
    EXPECT_EQ(ReadSearch(Records{Of(lookup, 416, "x"), Of(lookup, 437, state)}, "TV").state, SearchState::Unclear);
    EXPECT_EQ(
        ReadSearch(Records{Of(lookup, 416, "x"), Of(lookup, 435, "tname  is TV ,name is TV "), Of(lookup, 437, state)},
                   "TV")
            .state,
        SearchState::Unclear);
    EXPECT_EQ(ReadSearch(Records{Of(lookup, 416, "TV"), Of(lookup, 435, "tname  is TV ,name is Other "),
                                 Of(lookup, 437, state)},
                         "TV")
                  .state,
              SearchState::Unclear);
}

TEST(Evidence, AFindIsMadeOfRecordsOfOneKindOfSearch)
{
    Records const mixed = {Of(lookup, 416, "TV"), Of(lookup, 435, "tname  is TV ,name is TV "), Of(lookup, 446, state)};
    EXPECT_EQ(ReadSearch(mixed, "TV").state, SearchState::Unclear);
}

TEST(Evidence, TheLeSidesSearchIsNoSearchByName)
{
    auto records = FoundTv("TV");
    records.push_back(Of(leUnpairing, 1039, "ble   destStr is TV "));
    records.push_back(Of(lookup, 416, "BluetoothLE#BluetoothLE"));
    EXPECT_EQ(ReadSearch(records, "TV").state, SearchState::Found);
    EXPECT_THAT(SeenNames(records, "TV"), ElementsAre("Other", "TV"));
}

TEST(Evidence, TheStatusStandsBehindTheSearch)
{
    auto records = FoundTv("TV");
    EXPECT_EQ(PairingStatus(records), std::nullopt);
    records.push_back(Of(ceremony, 818, "181149781336591     paired success\n"));
    EXPECT_EQ(PairingStatus(records), std::nullopt);
    records.push_back(Of(ceremony, 825, "DevicePairingResultStatus::AlreadyPaired"));
    EXPECT_EQ(PairingStatus(records), "AlreadyPaired");
}

TEST(Evidence, AStatusThatADevicesNameHasWrittenIsNone)
{
    Records const before = {Of(lookup, 416, "x"), Of(ceremony, 796, "DevicePairingResultStatus::Paired")};
    auto records = before;
    for (auto const& record : FoundTv("TV"))
    {
        records.push_back(record);
    }
    EXPECT_EQ(PairingStatus(records), std::nullopt);
    records.push_back(Of(ceremony, 890, "DevicePairingResultStatus::Failed"));
    EXPECT_EQ(PairingStatus(records), "Failed");
}

TEST(Evidence, AStatusThatThePlatformDoesNotHaveIsNone)
{
    EXPECT_EQ(PairingStatus(Records{Of(ceremony, 890, "DevicePairingResultStatus::Fine")}), std::nullopt);
    EXPECT_EQ(PairingStatus(Records{Of("OnDeviceAdded", 890, "DevicePairingResultStatus::Failed")}), std::nullopt);
}

TEST(Evidence, TheLeSideIsFollowedStepByStep)
{
    auto records = FoundTv("TV");
    EXPECT_EQ(ReadLeUnpairing(records, "TV").side, LeSide::Unknown);
    records.push_back(Of(unpairing, 1177, "device Id -> C1D2"));
    EXPECT_EQ(ReadLeUnpairing(records, "TV").side, LeSide::Pending);
    EXPECT_EQ(ReadLeUnpairing(records, "TV").text, "C1D2");
    auto const with = [&](char const* function, int line, char const* message) {
        auto more = records;
        more.push_back(Of(function, line, message));
        return ReadLeUnpairing(more, "TV");
    };
    EXPECT_EQ(with(unpairing, 1180, "ble data is bad ").side, LeSide::NotKnown);
    EXPECT_EQ(with(leUnpairing, 1071, "unpaired device failed").side, LeSide::NotFound);
    EXPECT_EQ(with(leUnpairing, 1083, "unpaired device success").side, LeSide::Unpaired);
    EXPECT_EQ(with(leUnpairing, 1089, "unpaired device failed").side, LeSide::Refused);
    EXPECT_EQ(with(leUnpairing, 1101, "exception -> no radio").side, LeSide::Failed);
    EXPECT_EQ(with(leUnpairing, 1101, "exception -> no radio").text, "no radio");
}

TEST(Evidence, OfALearningTheListedAndTheNewAreTold)
{
    EXPECT_FALSE(ReadLearning(Records{}).begun);
    Records records = {Of("ReadLine", 488, "Readline entry")};
    EXPECT_TRUE(ReadLearning(records).begun);
    EXPECT_FALSE(ReadLearning(records).listingRead);
    for (auto const& record :
         {Of("ReadLine", 503, "file exist"), Of("ReadLine", 514, "find instance ID  is: BTHLE\\Dev_1"),
          Of("ReadLine", 524, "find instance vectors[2]  is: A1"),
          Of("ReadLine", 524, "find instance vectors[2]  is: B2"), Of("ReadLine", 527, "add new succes  B2")})
    {
        records.push_back(record);
    }
    auto const learning = ReadLearning(records);
    EXPECT_TRUE(learning.listingRead);
    EXPECT_THAT(learning.listed, ElementsAre("A1", "B2"));
    EXPECT_THAT(learning.taken, ElementsAre("B2"));
}

TEST(Evidence, ThePhoneSearchEndsWithItsOwnRecord)
{
    EXPECT_TRUE(HasPhoneSearchEnded(Records{Of("StopIosWatcher", 87, "entry StopIosWatcher  3 ")}));
    EXPECT_FALSE(
        HasPhoneSearchEnded(Records{Of("OnDeviceAdded", 111, "OnDeviceAdded    name = entry StopIosWatcher  3 ")}));
}

TEST(Evidence, AddressesAreComparedByTheirDigits)
{
    EXPECT_TRUE(IsSameAddress("C1D2E3F4A5B6", "c1:d2:e3:f4:a5:b6"));
    EXPECT_FALSE(IsSameAddress("C1D2E3F4A5B6", "c1:d2:e3:f4:a5:b7"));
    EXPECT_FALSE(IsSameAddress("", ""));
    EXPECT_EQ(AddressInId("Bluetooth#Bluetooth00:1a:7d:da:71:13-a4:c1:38:5e:22:0f"), "a4:c1:38:5e:22:0f");
    EXPECT_EQ(AddressInId("nothing of the kind"), "");
    EXPECT_TRUE(IsAddress("a4:c1:38:5e:22:0f") && IsAddress("A4-C1-38-5E-22-0F") && IsAddress("a4c1385e220f"));
    EXPECT_FALSE(IsAddress("a4:c1:38:5e:22") || IsAddress("Kitchen Speaker") || IsAddress(""));
}

TEST(Evidence, WhatStandsBeforeTheMatchIsNoLeSide)
{
    Records records = {Of(lookup, 416, "x"), Of(unpairing, 1177, "device Id -> C1"),
                       Of(leUnpairing, 1101, "exception -> boo")};
    for (auto const& record : FoundTv("TV"))
    {
        records.push_back(record);
    }
    EXPECT_EQ(ReadLeUnpairing(records, "TV").side, LeSide::Unknown);
    EXPECT_EQ(ReadSearch(records, "TV").state, SearchState::Found) << "an LE record of a name ends no search";
}
