// References, texts, errors, handlers, registrations and vectors, as the library's sources use them.
#include "pairing/Enumeration.h"
#include "platform/abi/Enumeration.h"
#include "tests/support/Endpoints.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Trace.h"

#include <gmock/gmock.h>

#include <windows.h>

#include <bit>
#include <new>
#include <stdexcept>
#include <string>

using namespace test;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using winrt::Windows::Foundation::TypedEventHandler;
using winrt::Windows::Foundation::Collections::CollectionChange;
using winrt::Windows::Foundation::Collections::IIterable;
using winrt::Windows::Foundation::Collections::IObservableVector;
using winrt::Windows::Foundation::Collections::IVector;

namespace
{
    constexpr std::int32_t outOfBounds = static_cast<std::int32_t>(0x8000000B);
    constexpr std::int32_t changedState = static_cast<std::int32_t>(0x8000000C);

    template <typename Body>
    std::int32_t CodeOf(Body body)
    {
        try
        {
            body();
        }
        catch (winrt::hresult_error const& error)
        {
            return error.code();
        }
        return 0;
    }

    using AddedHandler = TypedEventHandler<enumeration::DeviceWatcher, enumeration::DeviceInformation>;

    platform::AddedHandler* Raw(AddedHandler const& handler)
    {
        return static_cast<platform::AddedHandler*>(winrt::get_abi(handler));
    }

    HRESULT Query(::IUnknown* object, GUID const& id)
    {
        ::IUnknown* found = nullptr;
        HRESULT const result = object->QueryInterface(id, reinterpret_cast<void**>(&found));
        if (found)
        {
            found->Release();
        }
        return result;
    }
} // namespace

TEST(WinrtHstring, KeepsAText)
{
    winrt::hstring const text(L"Headset");
    winrt::hstring const copy = text;
    EXPECT_EQ(std::wstring_view(copy), L"Headset");
    EXPECT_EQ(copy.size(), 7u);
    EXPECT_STREQ(copy.c_str(), L"Headset");
    EXPECT_EQ(copy, text);
    EXPECT_FALSE(copy == winrt::hstring(L"headset"));
}

TEST(WinrtHstring, EmptyIsNull)
{
    winrt::hstring const text;
    EXPECT_TRUE(text.empty());
    EXPECT_STREQ(text.c_str(), L"");
    EXPECT_EQ(winrt::get_abi(text), nullptr);
    EXPECT_EQ(winrt::get_abi(winrt::hstring(L"")), nullptr);
}

TEST(WinrtError, CarriesTheCodeAndTheSystemsText)
{
    winrt::hresult_error const error(static_cast<winrt::hresult>(E_ACCESSDENIED));
    EXPECT_EQ(error.code(), E_ACCESSDENIED);
    EXPECT_FALSE(error.message().empty());
}

TEST(WinrtError, FailingCodeThrowsAndSuccessDoesNot)
{
    EXPECT_EQ(CodeOf([] { winrt::check_hresult(static_cast<std::int32_t>(0x80070490)); }),
              static_cast<std::int32_t>(0x80070490));
    EXPECT_EQ(CodeOf([] { winrt::check_hresult(S_OK); }), 0);
    EXPECT_EQ(CodeOf([] { winrt::check_hresult(S_FALSE); }), 0);
}

TEST(WinrtError, OutOfMemoryIsTheLanguagesOwn)
{
    EXPECT_THROW(winrt::check_hresult(E_OUTOFMEMORY), std::bad_alloc);
}

TEST(WinrtHandler, AnswersForItsIdentifiersAndForAgility)
{
    AddedHandler const handler([](auto&&, auto&&) {});
    EXPECT_EQ(Query(Raw(handler), platform::iid_of<platform::AddedHandler>), S_OK);
    EXPECT_EQ(Query(Raw(handler), platform::iid_of<::IUnknown>), S_OK);
    EXPECT_EQ(Query(Raw(handler), platform::iid_of<platform::IAgileObject>), S_OK);
    EXPECT_EQ(Query(Raw(handler), platform::iid_of<::IMarshal>), S_OK);
    EXPECT_EQ(Query(Raw(handler), platform::iid_of<platform::UpdateHandler>), E_NOINTERFACE);
    EXPECT_EQ(Query(Raw(handler), platform::iid_of<::IInspectable>), E_NOINTERFACE);
}

TEST(WinrtHandler, MarshalerLeavesTheReferencesBalanced)
{
    AddedHandler const handler([](auto&&, auto&&) {});
    Query(Raw(handler), platform::iid_of<::IMarshal>);
    Raw(handler)->AddRef();
    EXPECT_EQ(Raw(handler)->Release(), 1u);
}

TEST(WinrtHandler, ExceptionsBecomeCodes)
{
    EXPECT_EQ(Raw(AddedHandler([](auto&&, auto&&) {}))->Invoke(nullptr, nullptr), S_OK);
    EXPECT_EQ(Raw(AddedHandler([](auto&&, auto&&) { winrt::check_hresult(E_ACCESSDENIED); }))->Invoke(nullptr, nullptr),
              E_ACCESSDENIED);
    EXPECT_EQ(Raw(AddedHandler([](auto&&, auto&&) { throw std::bad_alloc(); }))->Invoke(nullptr, nullptr),
              E_OUTOFMEMORY);
    EXPECT_EQ(Raw(AddedHandler([](auto&&, auto&&) { throw std::invalid_argument("x"); }))->Invoke(nullptr, nullptr),
              E_INVALIDARG);
    EXPECT_EQ(Raw(AddedHandler([](auto&&, auto&&) { throw std::out_of_range("x"); }))->Invoke(nullptr, nullptr),
              outOfBounds);
    EXPECT_EQ(Raw(AddedHandler([](auto&&, auto&&) { throw std::runtime_error("x"); }))->Invoke(nullptr, nullptr),
              E_FAIL);
}

TEST(WinrtRevoker, HoldsItsSourceWeakly)
{
    Load(patient);
    enumeration::DeviceWatcher::Added_revoker revoker;
    auto const before = SimulatorLiveObjects();
    {
        Watcher watcher;
        revoker = watcher.Sender().Added(winrt::auto_revoke, [](auto&&, auto&&) {});
        EXPECT_TRUE(revoker);
    }
    EXPECT_TRUE(SimulatorWaitIdle(20'000));
    EXPECT_LE(SimulatorLiveObjects(), before + 1) << "at most the weak reference is left";
    SimulatorClearTrace();
    revoker.revoke();
    EXPECT_THAT(Trace({"DeviceWatcher.remove_"}), IsEmpty());
    EXPECT_FALSE(revoker);
}

TEST(WinrtRevoker, RevokesOnceWhenToldAndNotAgainAtItsEnd)
{
    Load(patient);
    Watcher watcher;
    SimulatorClearTrace();
    {
        auto revoker = watcher.Sender().Added(winrt::auto_revoke, [](auto&&, auto&&) {});
        revoker.revoke();
        EXPECT_THAT(Trace({"DeviceWatcher.remove_Added"}), SizeIs(1));
    }
    EXPECT_THAT(Trace({"DeviceWatcher.remove_Added"}), SizeIs(1));
}

TEST(WinrtRevoker, NewRegistrationInTheSlotRevokesTheOldOne)
{
    Load(patient);
    Watcher watcher;
    SimulatorClearTrace();
    auto revoker = watcher.Sender().Added(winrt::auto_revoke, [](auto&&, auto&&) {});
    revoker = watcher.Sender().Added(winrt::auto_revoke, [](auto&&, auto&&) {});
    EXPECT_THAT(Trace({"DeviceWatcher.remove_Added"}), SizeIs(1));
    EXPECT_TRUE(revoker);
}

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
} // namespace

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

TEST(WinrtVector, IsAgileAtTheBinaryLevel)
{
    auto const values = winrt::single_threaded_vector<winrt::hstring>({L"a"});
    auto* const object = static_cast<::IUnknown*>(winrt::get_abi(values));
    EXPECT_EQ(Query(object, platform::iid_of<platform::IVector<HSTRING>>), S_OK);
    EXPECT_EQ(Query(object, platform::iid_of<platform::IIterable<HSTRING>>), S_OK);
    EXPECT_EQ(Query(object, platform::iid_of<::IInspectable>), S_OK);
    EXPECT_EQ(Query(object, platform::iid_of<platform::IAgileObject>), S_OK);
    EXPECT_EQ(Query(object, platform::iid_of<::IMarshal>), S_OK);
}

TEST(WinrtReference, EqualityIsIdentity)
{
    Load(prompt + Device("Headset", "a4:c1:38:5e:22:0f"));
    Watcher watcher;
    auto const device = watcher.Devices().at(0);
    auto const copy = device;
    EXPECT_EQ(device, copy);
    EXPECT_FALSE(device == nullptr);
    EXPECT_EQ(device.as<winrt::Windows::Foundation::IInspectable>(), device);
}

TEST(WinrtIdentifiers, AreThePlatforms)
{
    EXPECT_EQ(std::bit_cast<GUID>(winrt::guid_of<enumeration::DeviceWatcher>()),
              platform::iid_of<platform::IDeviceWatcher>);
    EXPECT_EQ(std::bit_cast<GUID>(winrt::guid_of<enumeration::DeviceInformation>()),
              platform::iid_of<platform::IDeviceInformation>);
    EXPECT_EQ(std::bit_cast<GUID>(winrt::guid_of<AddedHandler>()), platform::iid_of<platform::AddedHandler>);
    EXPECT_EQ(std::bit_cast<GUID>(winrt::guid_of<IIterable<winrt::hstring>>()),
              platform::iid_of<platform::IIterable<HSTRING>>);
}
