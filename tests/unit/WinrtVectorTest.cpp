// Vectors and their observers, as the library's sources use them.
#include "pairing/Enumeration.h"
#include "platform/abi/Enumeration.h"
#include "tests/support/CodeOf.h"
#include "tests/support/Endpoints.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using winrt::Windows::Foundation::Collections::CollectionChange;
using winrt::Windows::Foundation::Collections::IIterable;
using winrt::Windows::Foundation::Collections::IObservableVector;
using winrt::Windows::Foundation::Collections::IVector;

namespace
{
    using Devices = IObservableVector<enumeration::DeviceInformation>;

    // Three devices, to fill a vector with.
    struct Three
    {
        Three()
        {
            Load(prompt + Device("A", "00:00:00:00:00:0a") + Device("B", "00:00:00:00:00:0b") +
                 Device("C", "00:00:00:00:00:0c"));
            devices = Watcher().Devices();
        }

        Devices Observable() const
        {
            return winrt::multi_threaded_observable_vector<enumeration::DeviceInformation>({devices.at(0), devices[1]});
        }

        std::vector<enumeration::DeviceInformation> devices;
    };

    platform::IVector<platform::IDeviceInformation*>* RawVector(IVector<enumeration::DeviceInformation> const& values)
    {
        return static_cast<platform::IVector<platform::IDeviceInformation*>*>(winrt::get_abi(values));
    }

    platform::IDeviceInformation* Raw(enumeration::DeviceInformation const& device)
    {
        return static_cast<platform::IDeviceInformation*>(winrt::get_abi(device));
    }

    void* WINAPI AllocateNothing(SIZE_T)
    {
        return nullptr;
    }
} // namespace

TEST(WinrtVector, HoldsTextsAndIsIterable)
{
    IVector<winrt::hstring> const values = winrt::single_threaded_vector<winrt::hstring>({L"a", L"b"});
    EXPECT_EQ(values.Size(), 2u);
    EXPECT_EQ(values.GetAt(1), L"b");
    EXPECT_EQ(CodeOf([&] { static_cast<void>(values.GetAt(2)); }), outOfBounds);

    IIterable<winrt::hstring> const iterable = values;
    auto const iterator = iterable.First();
    EXPECT_TRUE(iterator.HasCurrent());
    EXPECT_EQ(iterator.Current(), L"a");
    EXPECT_TRUE(iterator.MoveNext());
    EXPECT_EQ(iterator.Current(), L"b");
    EXPECT_FALSE(iterator.MoveNext());
    EXPECT_FALSE(iterator.HasCurrent());
    EXPECT_EQ(CodeOf([&] { static_cast<void>(iterator.Current()); }), outOfBounds);
}

TEST(WinrtVector, ChangesUnderAnIteratorAreTold)
{
    auto const values = winrt::single_threaded_vector<winrt::hstring>({L"a"});
    auto const iterator = IIterable<winrt::hstring>(values).First();
    values.Append(L"b");
    EXPECT_EQ(CodeOf([&] { static_cast<void>(iterator.Current()); }), changedState);
}

TEST(WinrtVector, AppendsRemovesAndClears)
{
    auto const values = winrt::single_threaded_vector<winrt::hstring>();
    values.Append(L"a");
    values.Append(L"b");
    values.RemoveAt(0);
    EXPECT_EQ(values.Size(), 1u);
    EXPECT_EQ(values.GetView().GetAt(0), L"b");
    EXPECT_EQ(CodeOf([&] { values.RemoveAt(1); }), outOfBounds);
    values.Clear();
    EXPECT_EQ(values.Size(), 0u);
}

TEST(WinrtObservableVector, BehavesAsAVector)
{
    Three const three;
    auto const values = three.Observable();
    IVector<enumeration::DeviceInformation> const vector = values;
    auto const iterator = IIterable<enumeration::DeviceInformation>(values).First();
    EXPECT_EQ(iterator.Current(), three.devices[0]);
    values.Append(three.devices[2]);
    EXPECT_EQ(CodeOf([&] { static_cast<void>(iterator.Current()); }), changedState);
    values.RemoveAt(1);
    EXPECT_EQ(vector.Size(), 2u);
    EXPECT_EQ(values.GetAt(1), three.devices[2]);
    EXPECT_EQ(values.GetView().GetAt(0), three.devices[0]);
    EXPECT_EQ(CodeOf([&] { static_cast<void>(values.GetAt(2)); }), outOfBounds);
    EXPECT_EQ(CodeOf([&] { values.RemoveAt(2); }), outOfBounds);
    values.Clear();
    EXPECT_EQ(values.Size(), 0u);
}

TEST(WinrtObservableVector, TellsOfEachChangeOnceItIsMade)
{
    Three const three;
    auto const values = three.Observable();
    auto* const vector = RawVector(values);
    std::vector<std::string> changes;
    values.VectorChanged([&](Devices const& sender, auto const& args) {
        EXPECT_EQ(sender, values);
        changes.push_back(std::to_string(static_cast<int>(args.CollectionChange())) + " at " +
                          std::to_string(args.Index()) + " of " + std::to_string(sender.Size()));
    });
    platform::IDeviceInformation* const replacement[]{Raw(three.devices[0])};
    values.Append(three.devices[2]);
    vector->InsertAt(0, Raw(three.devices[2]));
    vector->SetAt(1, Raw(three.devices[2]));
    values.RemoveAt(1);
    vector->RemoveAtEnd();
    vector->ReplaceAll(1, const_cast<platform::IDeviceInformation**>(replacement));
    values.Clear();
    EXPECT_EQ(vector->RemoveAtEnd(), outOfBounds); // changes nothing
    EXPECT_THAT(changes, ElementsAre("1 at 2 of 3", "1 at 0 of 4", "3 at 1 of 4", "2 at 1 of 3", "2 at 2 of 2",
                                     "0 at 0 of 1", "0 at 0 of 0"));
}

TEST(WinrtObservableVector, TellsEveryObserverUntilItIsRemoved)
{
    Three const three;
    auto const values = three.Observable();
    int failing = 0;
    int counting = 0;
    auto const token = values.VectorChanged([&](auto&&...) {
        ++failing;
        winrt::check_hresult(E_ACCESSDENIED);
    });
    values.VectorChanged([&](auto&&...) { ++counting; });
    values.RemoveAt(0);
    values.VectorChanged(token);
    values.VectorChanged(token); // names nothing any more
    values.RemoveAt(0);
    EXPECT_EQ(failing, 1);
    EXPECT_EQ(counting, 2);
}

TEST(WinrtObservableVector, ObserverMayChangeItAndRemoveItself)
{
    Three const three;
    auto const values = three.Observable();
    winrt::event_token token;
    token = values.VectorChanged([&](Devices const& sender, auto const& args) {
        EXPECT_EQ(args.CollectionChange(), CollectionChange::Reset);
        sender.VectorChanged(token);
        sender.Append(three.devices[0]);
    });
    values.Clear();
    EXPECT_EQ(values.Size(), 1u);
}

TEST(WinrtVector, IsFoundInAtTheBinaryLevel)
{
    Three const three;
    auto const values = three.Observable();
    auto* const vector = RawVector(values);
    UINT32 index = 7;
    boolean found = 0;
    EXPECT_EQ(vector->IndexOf(Raw(three.devices[1]), &index, &found), S_OK);
    EXPECT_EQ(index, 1u);
    EXPECT_EQ(found, 1);
    EXPECT_EQ(vector->IndexOf(Raw(three.devices[2]), &index, &found), S_OK);
    EXPECT_EQ(index, 0u);
    EXPECT_EQ(found, 0);
}

TEST(WinrtVector, IsReadInPartsAtTheBinaryLevel)
{
    Three const three;
    auto const values = three.Observable();
    auto const iterator = IIterable<enumeration::DeviceInformation>(values).First();
    auto* const rawIterator =
        static_cast<platform::IIterator<platform::IDeviceInformation*>*>(winrt::get_abi(iterator));

    // As many as were read, each with a reference of its own.
    auto const read = [](auto&& part) {
        platform::IDeviceInformation* devices[3]{};
        UINT32 count = 7;
        EXPECT_EQ(part(devices, &count), S_OK);
        std::vector<platform::IDeviceInformation*> const result(devices, devices + count);
        for (auto* const device : result)
        {
            device->Release();
        }
        return result;
    };
    auto const vectorPart = [&](UINT32 start, UINT32 capacity) {
        return read(
            [&](auto* devices, auto* count) { return RawVector(values)->GetMany(start, capacity, devices, count); });
    };
    auto const nextPart = [&](UINT32 capacity) {
        return read([&](auto* devices, auto* count) { return rawIterator->GetMany(capacity, devices, count); });
    };
    auto* const first = Raw(three.devices[0]);
    auto* const second = Raw(three.devices[1]);
    EXPECT_THAT(vectorPart(0, 3), ElementsAre(first, second));
    EXPECT_THAT(vectorPart(1, 1), ElementsAre(second));
    EXPECT_THAT(vectorPart(2, 1), IsEmpty());
    UINT32 count = 0;
    EXPECT_EQ(RawVector(values)->GetMany(3, 1, nullptr, &count), outOfBounds);
    EXPECT_THAT(nextPart(1), ElementsAre(first));
    EXPECT_THAT(nextPart(3), ElementsAre(second));
    EXPECT_THAT(nextPart(1), IsEmpty());
}

TEST(WinrtVector, TellsWhatItIsAtTheBinaryLevel)
{
    auto const values = winrt::single_threaded_vector<winrt::hstring>({L"a"});
    auto* const object = static_cast<::IInspectable*>(winrt::get_abi(values));
    ULONG count = 0;
    GUID* ids = nullptr;
    ASSERT_EQ(object->GetIids(&count, &ids), S_OK);
    EXPECT_THAT(std::vector<GUID>(ids, ids + count), ElementsAre(platform::iid_of<platform::IVector<HSTRING>>,
                                                                 platform::iid_of<platform::IVectorView<HSTRING>>,
                                                                 platform::iid_of<platform::IIterable<HSTRING>>));
    CoTaskMemFree(ids);
    auto name = reinterpret_cast<HSTRING>(object);
    EXPECT_EQ(object->GetRuntimeClassName(&name), S_OK);
    EXPECT_EQ(name, nullptr);
    auto level = FullTrust;
    EXPECT_EQ(object->GetTrustLevel(&level), S_OK);
    EXPECT_EQ(level, BaseTrust);
    EXPECT_EQ(object->QueryInterface(platform::iid_of<::IUnknown>, nullptr), E_POINTER);
}

TEST(WinrtVector, HasNoIdentifiersToTellWithoutMemory)
{
    auto const values = winrt::single_threaded_vector<winrt::hstring>();
    ReplaceImport(GetModuleHandleW(nullptr), "CoTaskMemAlloc", AllocateNothing);
    ULONG count = 7;
    GUID* ids = nullptr;
    EXPECT_EQ(static_cast<::IInspectable*>(winrt::get_abi(values))->GetIids(&count, &ids), E_OUTOFMEMORY);
    EXPECT_EQ(count, 0u);
}

TEST(WinrtVector, PutsNothingBeyondItsEnd)
{
    Three const three;
    auto const values = three.Observable();
    EXPECT_EQ(RawVector(values)->InsertAt(3, Raw(three.devices[2])), outOfBounds);
    EXPECT_EQ(RawVector(values)->SetAt(2, Raw(three.devices[2])), outOfBounds);
    EXPECT_EQ(values.Size(), 2u);
}
