// What the statics accept when a watcher is made.
#include "tests/simulator/Client.h"

#include <windows.h>
#include <objbase.h>

using namespace test;
using testing::ElementsAre;

namespace
{
    using WatcherCreation = SimulatorTest;
} // namespace

TEST_F(WatcherCreation, TakesEveryOverload)
{
    auto const statics = Statics();
    Com<IDeviceWatcher> watcher;
    EXPECT_EQ(statics->CreateWatcher(watcher.Put()), S_OK);
    EXPECT_EQ(statics->CreateWatcherDeviceClass(0, watcher.Put()), S_OK);
    EXPECT_EQ(statics->CreateWatcherAqsFilter(String(pairedOnly).Get(), watcher.Put()), S_OK);
    EXPECT_EQ(statics->CreateWatcherAqsFilterAndAdditionalProperties(nullptr, nullptr, watcher.Put()), S_OK);
    EXPECT_EQ(Statics2()->CreateWatcherWithKindAqsFilterAndAdditionalProperties(
                  nullptr, nullptr, DeviceInformationKind::AssociationEndpoint, watcher.Put()),
              S_OK);
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Created);
}

TEST_F(WatcherCreation, RefusesNullResults)
{
    auto const statics = Statics();
    EXPECT_EQ(statics->CreateWatcher(nullptr), E_POINTER);
    EXPECT_EQ(statics->CreateWatcherDeviceClass(0, nullptr), E_POINTER);
    EXPECT_EQ(statics->CreateWatcherAqsFilter(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(statics->CreateWatcherAqsFilterAndAdditionalProperties(nullptr, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(Statics2()->CreateWatcherWithKindAqsFilterAndAdditionalProperties(
                  nullptr, nullptr, DeviceInformationKind::AssociationEndpoint, nullptr),
              E_POINTER);
}

TEST_F(WatcherCreation, RefusesMalformedFilters)
{
    for (auto const* const filter :
         {"System.ItemNameDisplay", "System.ItemNameDisplay:=", "(", "AND", "System.Devices.Aep.IsPaired:=12 12 ("})
    {
        Com<IDeviceWatcher> watcher;
        EXPECT_EQ(TryMakeWatcher(filter, {}, watcher), E_INVALIDARG) << filter;
        EXPECT_FALSE(watcher);
        EXPECT_EQ(Statics()->CreateWatcherAqsFilter(String(filter).Get(), watcher.Put()), E_INVALIDARG) << filter;
    }
}

TEST_F(WatcherCreation, RefusesPropertiesThatDoNotExist)
{
    Com<IDeviceWatcher> watcher;
    EXPECT_EQ(TryMakeWatcher({}, {"System.Devices.Aep.IsConnected", "System.Devices.Aep.NoSuch"}, watcher),
              elementNotFound);
    EXPECT_EQ(TryMakeWatcher({}, {""}, watcher), elementNotFound);
    EXPECT_EQ(TryMakeWatcher({}, {"  "}, watcher), elementNotFound);
    EXPECT_EQ(TryMakeWatcher({}, {"{not a guid} 12"}, watcher), E_INVALIDARG);
    EXPECT_EQ(TryMakeWatcher({}, {"{A35996AB-11CF-4935-8B61-A6761081ECDF} x"}, watcher), E_INVALIDARG);
    EXPECT_EQ(TryMakeWatcher({}, {"{A35996AB-11CF-4935-8B61-A6761081ECDF} 12"}, watcher), S_OK);
    EXPECT_EQ(TryMakeWatcher({}, {"system.devices.aep.ISCONNECTED"}, watcher), elementNotFound);
}

TEST_F(WatcherCreation, LetsABlankFilterFailOnlyAtStart)
{
    auto const watcher = MakeWatcher("   ");
    EXPECT_EQ(watcher->Start(), E_INVALIDARG);
    EXPECT_EQ(StatusOf(watcher), DeviceWatcherStatus::Created);
}

TEST_F(WatcherCreation, GivesAnAgileObjectOfTheRightClass)
{
    auto const watcher = MakeWatcher();
    EXPECT_EQ(ClassNameOf(watcher.Get()), "Windows.Devices.Enumeration.DeviceWatcher");
    EXPECT_TRUE(watcher.Answers<platform::IAgileObject>());
    EXPECT_TRUE(watcher.Answers<::IMarshal>());
    EXPECT_TRUE(watcher.Answers<IDeviceWatcher2>());
    EXPECT_FALSE(watcher.Answers<IDeviceInformation>());
    TrustLevel level = FullTrust;
    EXPECT_HRESULT_SUCCEEDED(watcher->GetTrustLevel(&level));
    EXPECT_EQ(level, BaseTrust);
}

TEST_F(WatcherCreation, GivesAnObjectThatMarshalsAsItself)
{
    auto const watcher = MakeWatcher();
    IStream* stream = nullptr;
    ASSERT_HRESULT_SUCCEEDED(CoMarshalInterThreadInterfaceInStream(iid_of<IDeviceWatcher>, watcher.Get(), &stream));
    Com<IDeviceWatcher> other;
    ASSERT_HRESULT_SUCCEEDED(
        CoGetInterfaceAndReleaseStream(stream, iid_of<IDeviceWatcher>, reinterpret_cast<void**>(other.Put())));
    EXPECT_EQ(other.Get(), watcher.Get());
}

TEST_F(WatcherCreation, ListsItsInterfacesAndNoOthers)
{
    auto const watcher = MakeWatcher();
    ULONG count = 0;
    IID* ids = nullptr;
    ASSERT_HRESULT_SUCCEEDED(watcher->GetIids(&count, &ids));
    std::vector<IID> const listed(ids, ids + count);
    CoTaskMemFree(ids);
    EXPECT_THAT(listed, ElementsAre(iid_of<IDeviceWatcher>, iid_of<IDeviceWatcher2>));
    for (auto const& id : listed)
    {
        EXPECT_TRUE(watcher.Answers(id));
    }
}
