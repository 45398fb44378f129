// Searching once for all devices: what is found, when the search ends, the collection.
#include "tests/simulator/Client.h"

#include <windows.h>

using namespace test;
using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::IsEmpty;

namespace
{
    constexpr auto pending = "enumeration-completes-ms = 'never'";

    using DeviceSearch = SimulatorTest;
} // namespace

TEST_F(DeviceSearch, FindsWhatIsInRange)
{
    EXPECT_THAT(IdsOf(FindAll()), ElementsAre(speaker, mouse));
    EXPECT_THAT(IdsOf(FindAll(pairedOnly)), ElementsAre(mouse));
}

TEST_F(DeviceSearch, GivesDevicesWithThePropertiesAskedFor)
{
    auto const device = DeviceAt(DevicesOf(FindAll(pairedOnly, {"System.Devices.Aep.SignalStrength"})), 0);
    EXPECT_EQ(NameOf(device), "Travel Mouse");
    EXPECT_TRUE(IsPaired(device));
    EXPECT_THAT(KeysOf(device.Get()), Contains("System.Devices.Aep.SignalStrength"));
    DeviceInformationKind kind{};
    EXPECT_EQ(device.As<IDeviceInformation2>()->get_Kind(&kind), S_OK);
    EXPECT_EQ(kind, DeviceInformationKind::AssociationEndpoint);
}

TEST_F(DeviceSearch, TakesEveryOverload)
{
    auto const statics = Statics();
    Com<DevicesOperation> operation;
    EXPECT_EQ(statics->FindAllAsync(operation.Put()), S_OK);
    EXPECT_EQ(statics->FindAllAsyncDeviceClass(0, operation.Put()), S_OK);
    EXPECT_EQ(statics->FindAllAsyncAqsFilter(String(pairedOnly).Get(), operation.Put()), S_OK);
    EXPECT_EQ(statics->FindAllAsyncAqsFilterAndAdditionalProperties(nullptr, nullptr, operation.Put()), S_OK);
    EXPECT_EQ(Statics2()->FindAllAsyncWithKindAqsFilterAndAdditionalProperties(
                  nullptr, nullptr, DeviceInformationKind::AssociationEndpoint, operation.Put()),
              S_OK);
    EXPECT_THAT(IdsOf(operation), ElementsAre(speaker, mouse));
}

TEST_F(DeviceSearch, RefusesNullResults)
{
    auto const statics = Statics();
    EXPECT_EQ(statics->FindAllAsync(nullptr), E_POINTER);
    EXPECT_EQ(statics->FindAllAsyncDeviceClass(0, nullptr), E_POINTER);
    EXPECT_EQ(statics->FindAllAsyncAqsFilter(nullptr, nullptr), E_POINTER);
    EXPECT_EQ(statics->FindAllAsyncAqsFilterAndAdditionalProperties(nullptr, nullptr, nullptr), E_POINTER);
    EXPECT_EQ(Statics2()->FindAllAsyncWithKindAqsFilterAndAdditionalProperties(
                  nullptr, nullptr, DeviceInformationKind::AssociationEndpoint, nullptr),
              E_POINTER);
}

TEST_F(DeviceSearch, RefusesFaultyFiltersAtOnce)
{
    for (auto const* const filter : {"System.ItemNameDisplay", "(", "System.ItemNameDisplay:=", "  ", "\t"})
    {
        Com<DevicesOperation> operation;
        EXPECT_EQ(TryFindAll(filter, {}, operation), E_INVALIDARG) << filter;
        EXPECT_FALSE(operation);
        EXPECT_EQ(Statics()->FindAllAsyncAqsFilter(String(filter).Get(), operation.Put()), E_INVALIDARG) << filter;
    }
}

TEST_F(DeviceSearch, RefusesPropertiesThatDoNotExist)
{
    Com<DevicesOperation> operation;
    EXPECT_EQ(TryFindAll({}, {"System.Devices.Aep.NoSuch"}, operation), elementNotFound);
    EXPECT_EQ(TryFindAll({}, {""}, operation), elementNotFound);
    EXPECT_EQ(TryFindAll({}, {"{not a guid} 12"}, operation), E_INVALIDARG);
    EXPECT_FALSE(operation);
}

TEST_F(DeviceSearch, LastsUntilTheEnumerationCompletes)
{
    Load(Room({}, {}, pending));
    auto const operation = FindAll();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Started);
    SimulateDeviceAppears(lamp);
    SimulateDeviceLeaves(speaker);
    SimulateDeviceChanges(mouse, "System.ItemNameDisplay", "\"Renamed\"");
    ASSERT_TRUE(WaitIdle());
    SimulateEnumerationCompletes();
    EXPECT_THAT(IdsOf(operation), ElementsAre(mouse, lamp));
    EXPECT_EQ(NameOf(DeviceAt(DevicesOf(operation), 0)), "Renamed");
}

TEST_F(DeviceSearch, IsOverThen)
{
    auto const operation = FindAll();
    auto const devices = DevicesOf(operation);
    SimulateDeviceAppears(lamp);
    ASSERT_TRUE(WaitIdle());
    EXPECT_THAT(IdsOf(operation), ElementsAre(speaker, mouse));
    EXPECT_EQ(DevicesOf(operation).Get(), devices.Get());
}

TEST_F(DeviceSearch, CompletesOnAnotherThread)
{
    Load(Room({}, {}, pending));
    auto const operation = FindAll();
    std::atomic<DWORD> thread = 0;
    std::atomic<AsyncStatus> ended = AsyncStatus::Started;
    EXPECT_EQ(operation->put_Completed(On<DevicesCompletedHandler>([&](auto*, AsyncStatus status) {
                                           thread = GetCurrentThreadId();
                                           ended = status;
                                           return S_OK;
                                       }).Get()),
              S_OK);
    SimulateEnumerationCompletes();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(ended, AsyncStatus::Completed);
    EXPECT_NE(thread, GetCurrentThreadId());
    EXPECT_EQ(ClassNameOf(operation.Get()),
              "Windows.Foundation.IAsyncOperation`1<Windows.Devices.Enumeration.DeviceInformationCollection>");
}

TEST_F(DeviceSearch, IsCanceledOnDemand)
{
    Load(Room({}, {}, pending));
    {
        auto const operation = FindAll();
        std::atomic<AsyncStatus> ended = AsyncStatus::Started;
        operation->put_Completed(On<DevicesCompletedHandler>([&](auto*, AsyncStatus status) {
                                     ended = status;
                                     return S_OK;
                                 }).Get());
        EXPECT_EQ(operation.As<IAsyncInfo>()->Cancel(), S_OK);
        EXPECT_EQ(StatusOf(operation), AsyncStatus::Canceled);
        ASSERT_TRUE(WaitIdle());
        EXPECT_EQ(ended, AsyncStatus::Canceled);
        Com<DeviceCollection> devices;
        EXPECT_EQ(operation->GetResults(devices.Put()), illegalMethodCall);
        SimulateEnumerationCompletes();
        EXPECT_EQ(StatusOf(operation), AsyncStatus::Canceled);
    }
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(SimulatorLiveObjects(), 0u); // the search has ended as well
}

TEST_F(DeviceSearch, IsCanceledByAReset)
{
    Load(Room({}, {}, pending));
    auto const operation = FindAll();
    SimulatorReset();
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Canceled);
    EXPECT_TRUE(WaitIdle());
}

TEST_F(DeviceSearch, FailsWhenItIsAborted)
{
    Load(Room({}, {}, pending));
    auto const operation = FindAll();
    SimulateWatchersAbort();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Error);
    Com<DeviceCollection> devices;
    EXPECT_EQ(operation->GetResults(devices.Put()), E_ABORT);
}

TEST_F(DeviceSearch, FailsWhenItIsAbortedWithoutAWord)
{
    Load(Room({}, {}, std::string(pending) + "\n[platform]\nstopped-after-abort = false"));
    auto const operation = FindAll();
    SimulateWatchersAbort();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(StatusOf(operation), AsyncStatus::Error);
}

TEST_F(DeviceSearch, LooksForTheKindThatTheFilterNames)
{
    constexpr auto endpoints = "System.Devices.DevObjectType:=5 AND ";
    auto const any = std::string("(") + endpoints + pairedOnly + ") OR (" + endpoints + leOnly + ")";
    for (auto const& filter : {endpoints + std::string(pairedOnly), any})
    {
        Com<DevicesOperation> operation;
        ASSERT_EQ(Statics()->FindAllAsyncAqsFilter(String(filter).Get(), operation.Put()), S_OK);
        EXPECT_THAT(IdsOf(operation), ElementsAre(mouse)) << filter;
        ASSERT_EQ(
            Statics()->FindAllAsyncAqsFilterAndAdditionalProperties(String(filter).Get(), nullptr, operation.Put()),
            S_OK);
        EXPECT_THAT(IdsOf(operation), ElementsAre(mouse)) << filter;
    }
}

TEST_F(DeviceSearch, FindsTheSameByManyThreads)
{
    Load(Room({}, "[[device.change]]\nat-ms = 0\nproperty = \"System.ItemNameDisplay\"\nvalue = \"Rat\"\n",
              "event-threads = 4\nenumeration-completes-ms = 20"));
    auto const operation = FindAll();
    while (StatusOf(operation) == AsyncStatus::Started)
    {
        Sleep(1);
    }
    EXPECT_THAT(IdsOf(operation), testing::UnorderedElementsAre(speaker, mouse));
}

TEST_F(DeviceSearch, CountsAmongTheWatchersInTheTrace)
{
    auto const operation = FindAll(pairedOnly);
    MakeWatcher();
    EXPECT_THAT(TraceWith("FindAllAsync"), ElementsAre(EndsWith(", [], AssociationEndpoint) -> #1")));
    EXPECT_THAT(TraceWith("CreateWatcher"), ElementsAre(EndsWith(" -> #2")));
    StatusOf(operation);
    EXPECT_THAT(TraceWith("AsyncOperation.get_Status(#1)"), testing::SizeIs(1));
}

TEST_F(DeviceSearch, MayBeForgottenWhileItRuns)
{
    Load(Room({}, {}, pending));
    FindAll();
    SimulateEnumerationCompletes();
    ASSERT_TRUE(WaitIdle());
    EXPECT_EQ(SimulatorLiveObjects(), 0u);
}

TEST_F(DeviceSearch, GivesACollection)
{
    auto const devices = DevicesOf(FindAll());
    EXPECT_EQ(ClassNameOf(devices.Get()), "Windows.Devices.Enumeration.DeviceInformationCollection");
    EXPECT_TRUE(devices.Answers<platform::IAgileObject>());
    UINT32 size = 0;
    EXPECT_EQ(devices->get_Size(&size), S_OK);
    EXPECT_EQ(size, 2u);
    Com<IDeviceInformation> device(DeviceAt(devices, 1));
    EXPECT_EQ(device.Get(), DeviceAt(devices, 1).Get());
    UINT32 index = 9;
    boolean found = false;
    EXPECT_EQ(devices->IndexOf(device.Get(), &index, &found), S_OK);
    EXPECT_TRUE(found);
    EXPECT_EQ(index, 1u);
    EXPECT_EQ(devices->IndexOf(FindDevice(mouse).Get(), &index, &found), S_OK);
    EXPECT_FALSE(found); // the same device, another object
    EXPECT_EQ(devices->GetAt(2, device.Put()), outOfBounds);
    EXPECT_FALSE(device);
    EXPECT_EQ(devices->GetAt(0, nullptr), E_POINTER);
    EXPECT_EQ(devices->get_Size(nullptr), E_POINTER);
    EXPECT_EQ(devices->IndexOf(nullptr, nullptr, &found), E_POINTER);
}

TEST_F(DeviceSearch, GivesManyAtOnce)
{
    auto const devices = DevicesOf(FindAll());
    IDeviceInformation* many[3]{};
    UINT32 count = 0;
    EXPECT_EQ(devices->GetMany(1, 3, many, &count), S_OK);
    ASSERT_EQ(count, 1u);
    EXPECT_EQ(many[0], DeviceAt(devices, 1).Get());
    many[0]->Release();
    EXPECT_EQ(devices->GetMany(2, 3, many, &count), S_OK);
    EXPECT_EQ(count, 0u);
    EXPECT_EQ(devices->GetMany(3, 3, many, &count), outOfBounds);
    EXPECT_EQ(devices->GetMany(0, 3, nullptr, &count), E_POINTER);
}

TEST_F(DeviceSearch, GivesACollectionToWalkThrough)
{
    auto const devices = DevicesOf(FindAll());
    auto const iterable = devices.As<IIterable<IDeviceInformation*>>();
    Com<IIterator<IDeviceInformation*>> iterator;
    ASSERT_EQ(iterable->First(iterator.Put()), S_OK);
    std::vector<std::string> ids;
    boolean more = false;
    for (iterator->get_HasCurrent(&more); more; iterator->MoveNext(&more))
    {
        Com<IDeviceInformation> device;
        ASSERT_EQ(iterator->get_Current(device.Put()), S_OK);
        ids.push_back(IdOf(device.Get()));
    }
    EXPECT_THAT(ids, ElementsAre(speaker, mouse));
    Com<IDeviceInformation> device;
    EXPECT_EQ(iterator->get_Current(device.Put()), outOfBounds);
    ASSERT_EQ(iterable->First(iterator.Put()), S_OK);
    IDeviceInformation* many[3]{};
    UINT32 count = 0;
    EXPECT_EQ(iterator->GetMany(3, many, &count), S_OK);
    ASSERT_EQ(count, 2u);
    many[0]->Release();
    many[1]->Release();
    EXPECT_EQ(iterator->get_HasCurrent(&more), S_OK);
    EXPECT_FALSE(more);
}

TEST_F(DeviceSearch, FindsNothingAmongOtherKindsOfThings)
{
    EXPECT_THAT(IdsOf(FindAll({}, {}, DeviceInformationKind::AssociationEndpointService)), IsEmpty());
}
