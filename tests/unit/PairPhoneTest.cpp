// What IosPairedDevicce leaves in the library's state, and what becomes of a list that changes under its search.
#include "pairing/LibraryState.h"
#include "pairing/SubVorlink.h"
#include "tests/support/CodeOf.h"
#include "tests/support/Endpoints.h"
#include "tests/support/FakeList.h"
#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/StandIns.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <windows.h>

using namespace test;
using namespace vorlink;
using testing::ElementsAre;

namespace
{
    // The endpoints of a scenario, kept as by the phone watcher.
    void Keep(std::string const& devices)
    {
        Load(prompt + devices);
        Watcher watcher;
        for (auto const& device : watcher.Devices())
        {
            Library().IosDeviceList.Append(device);
        }
        Library().logEnabled = true;
    }
} // namespace

TEST(PairPhoneState, StoresCallbackAndNameOfAMatch)
{
    Keep(Device("Ana", "a4:c1:38:5e:22:0f", pairsAtOnce));
    Library().destDeviceName.Write("before");
    SubVorlink().IosPairedDevicce("Ana", Host::Callback);
    EXPECT_EQ(Library().pairResultCallback, Host::Callback);
    EXPECT_EQ(Library().destDeviceName.Read(), "Ana");
}

TEST(PairPhoneState, StoresTheCallbackAloneWhereNothingMatches)
{
    Keep(Device("Ana", "a4:c1:38:5e:22:0f"));
    Library().destDeviceName.Write("before");
    SubVorlink().IosPairedDevicce("Ben", Host::Callback);
    EXPECT_EQ(Library().pairResultCallback, Host::Callback);
    EXPECT_EQ(Library().destDeviceName.Read(), "before");
    ASSERT_EQ(Host::Count(), 1u);
}

TEST(PairPhoneState, TakesNoMutex)
{
    Keep(Device("Ana", "a4:c1:38:5e:22:0f"));
    std::lock_guard const mutex(Library().IosDeviceListMutex);
    SubVorlink().IosPairedDevicce("Ben", Host::Callback); // would never return
    EXPECT_EQ(Host::Count(), 1u);
}

TEST(PairPhoneState, NameThatDoesNotConvertMatchesAnEmptyRequestAlone)
{
    Keep(Device("Ana", "a4:c1:38:5e:22:0f", pairsAtOnce));
    ReplaceImport(GetModuleHandleW(nullptr), "WideCharToMultiByte", ConvertNothing);
    SubVorlink().IosPairedDevicce("Ana", Host::Callback);
    EXPECT_THAT(LogOf(search), ElementsAre(Record(1222, search, "tname is  param name is Ana"),
                                           Record(1233, search, "Not Found dest  device")));
    SubVorlink().IosPairedDevicce("", Host::Callback);
    EXPECT_THAT(LogOf(search).back(), Record(1225, search, "find device "));
}

// The list's own error, as when an entry goes while the search is under way.
TEST(PairPhoneState, ErrorOfTheListReachesTheHostBehindTheStoredCallback)
{
    for (auto const* const failing : {"get_Size", "GetAt"})
    {
        FakeList list(2);
        list.failing = failing;
        ListInPlace const inPlace(list);
        Library().pairResultCallback = OtherHost::Callback;
        EXPECT_EQ(CodeOf([] { SubVorlink().IosPairedDevicce("Ana", Host::Callback); }), list.failure) << failing;
        EXPECT_EQ(list.calls.back(), failing);
        EXPECT_EQ(Library().pairResultCallback, Host::Callback);
        EXPECT_EQ(Host::Count(), 0u);
    }
}

TEST(PairPhoneState, SizeIsReadOnce)
{
    Load(prompt + Device("Ana", "a4:c1:38:5e:22:0f"));
    Watcher watcher;
    FakeList list(3);
    list.element = watcher.Devices().at(0);
    ListInPlace const inPlace(list);
    SubVorlink().IosPairedDevicce("Ben", Host::Callback);
    EXPECT_THAT(list.calls, ElementsAre("get_Size", "GetAt", "GetAt", "GetAt"));
}
