// Which of the endpoints that the phone watcher has kept is paired.
#include "tests/library/PhoneSearch.h"

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;

TEST(PairPhone, VisitsUpToTheMatchAndPairsIt)
{
    auto const vorlink =
        Watching(Device("Ana", addressA) + Device("Ben", addressB, pairsAtOnce) + Device("Cat", addressC));
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
    auto const vorlink = Watching(Device("Ana", addressA, pairsAtOnce));
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
    auto const vorlink = Watching(Device("Zo\xc3\xab", addressA, pairsAtOnce)); // one character
    vorlink->IosPairedDevicce("Zoe\xcc\x88", Host::Callback);                   // two
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 0);
    vorlink->IosPairedDevicce("Zo\xc3\xab", Host::Callback);
    ASSERT_EQ(Host::Count(), 2u);
    EXPECT_EQ(Host::At(1).paired, 1);
    EXPECT_EQ(Text(Host::At(1).name), "Zo\xc3\xab");
}

TEST(PairPhone, LongNamesMatchWholeAlone)
{
    auto const vorlink = Watching(Device("A name of more than 14 bytes", addressA, pairsAtOnce));
    vorlink->IosPairedDevicce("name of more than 14", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 0);
}

TEST(PairPhone, AnEmptyRequestMatchesTheNamelessAlone)
{
    auto const vorlink = Watching(Device("Ana", addressA) + Device("", addressB, pairsAtOnce));
    vorlink->IosPairedDevicce("", Host::Callback);
    EXPECT_THAT(LogOf(search), ElementsAre(Visited("Ana", ""), Visited("", ""), found));
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).address, 0xa4c13800000bu);
}

TEST(PairPhone, TheFirstOfTwoOfTheSameNameIsPaired)
{
    auto const vorlink = Watching(Device("Ana", addressA, pairsAtOnce) + Device("Ana", addressB, pairsAtOnce));
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).address, 0xa4c13800000au);
    EXPECT_THAT(LogOf(search), ElementsAre(Visited("Ana", "Ana"), found));
}

TEST(PairPhone, TheFirstOfOneKeptTwiceIsPaired)
{
    auto const vorlink = Watching(Device("Ana", addressA, pairsAtOnce));
    ASSERT_TRUE(SimulateDeviceRepeats(idA.c_str()));
    ASSERT_TRUE(Phones::WaitFor(2));
    ASSERT_TRUE(WaitIdle());
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    EXPECT_THAT(LogOf(search), ElementsAre(Visited("Ana", "Ana"), found));
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 1);
}

TEST(PairPhone, OneWhoseNameCameLateIsFoundByIt)
{
    auto const vorlink = Watching(Device("", addressA, pairsAtOnce));
    ASSERT_TRUE(SimulateDeviceChanges(idA.c_str(), "System.ItemNameDisplay", "\"Late\""));
    ASSERT_TRUE(WaitIdle());
    vorlink->IosPairedDevicce("Late", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 1);
}

TEST(PairPhone, SearchesWhatAStoppedWatcherHasLeft)
{
    auto const vorlink = Watching(Device("Ana", addressA, pairsAtOnce));
    ASSERT_FALSE(vorlink->StartIosWatcher(Phones::Callback));
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    EXPECT_EQ(Host::At(0).paired, 1);
}

TEST(PairPhone, PairsNothingThatUninitializeHasForgotten)
{
    auto const vorlink = Watching(Device("Ana", addressA, pairsAtOnce));
    vorlink->Uninitialize();
    vorlink->IosPairedDevicce("Ana", Host::Callback);
    ASSERT_EQ(Host::Count(), 1u);
    ExpectNothingFound(Host::At(0), "Ana");
}
