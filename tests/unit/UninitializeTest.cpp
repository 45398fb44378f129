// What Uninitialize asks of the list of endpoints, which is a platform object like any other.
#include "pairing/LibraryState.h"
#include "pairing/SubVorlink.h"
#include "tests/support/FakeList.h"

#include <gmock/gmock.h>

using namespace test;
using testing::ElementsAre;

TEST(Uninitialize, EmptyListIsNotCleared)
{
    FakeList list(0);
    ListInPlace const inPlace(list);
    EXPECT_TRUE(vorlink::SubVorlink().Uninitialize());
    EXPECT_THAT(list.calls, ElementsAre("get_Size"));
}

TEST(Uninitialize, ListThatHoldsEndpointsIsCleared)
{
    FakeList list(3);
    ListInPlace const inPlace(list);
    EXPECT_TRUE(vorlink::SubVorlink().Uninitialize());
    EXPECT_THAT(list.calls, ElementsAre("get_Size", "Clear"));
}

TEST(Uninitialize, FailureOfTheListReachesTheHostBehindTheEmptiedStore)
{
    FakeList list(3);
    list.failing = "Clear";
    ListInPlace const inPlace(list);
    vorlink::Library().leDataMap.emplace("Tag", "C1D2E3F4A5B6");
    EXPECT_THROW(vorlink::SubVorlink().Uninitialize(), winrt::hresult_error);
    EXPECT_TRUE(vorlink::Library().leDataMap.empty());
}

TEST(Uninitialize, TheLibrarysOwnListIsThereFromTheStartAndEmpty)
{
    ASSERT_TRUE(vorlink::Library().IosDeviceList);
    EXPECT_EQ(vorlink::Library().IosDeviceList.Size(), 0u);
}
