// Texts, errors, handlers and references, as the library's sources use them.
#include "pairing/Enumeration.h"
#include "platform/abi/Enumeration.h"
#include "tests/support/CodeOf.h"
#include "tests/support/Endpoints.h"
#include "tests/support/FakeObject.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/Trace.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <bit>
#include <new>
#include <stdexcept>
#include <string_view>

using namespace test;
using winrt::Windows::Foundation::TypedEventHandler;
using winrt::Windows::Foundation::Collections::IIterable;

namespace
{
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

TEST(WinrtHstring, BecomesUtf8)
{
    EXPECT_EQ(winrt::to_string(L"Zo\u00EB \U0001F50A"), "Zo\xC3\xAB \xF0\x9F\x94\x8A");
    EXPECT_EQ(winrt::to_string(winrt::hstring()), "");
}

TEST(WinrtError, CarriesTheCodeAndTheSystemsText)
{
    winrt::hresult_error const error(static_cast<winrt::hresult>(E_ACCESSDENIED));
    EXPECT_EQ(error.code(), E_ACCESSDENIED);
    EXPECT_FALSE(error.message().empty());
}

TEST(WinrtError, FailingCodeThrowsAndSuccessDoesNot)
{
    EXPECT_EQ(CodeOf([] { winrt::check_hresult(platformCode); }), platformCode);
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

namespace
{
    using MakeMarshaler = HRESULT WINAPI(::IUnknown*, ::IUnknown**);

    MakeMarshaler* SystemsMakeMarshaler()
    {
        auto const found = GetProcAddress(GetModuleHandleW(L"ole32.dll"), "CoCreateFreeThreadedMarshaler");
        return reinterpret_cast<MakeMarshaler*>(reinterpret_cast<void*>(found));
    }

    HRESULT WINAPI MakeNoMarshaler(::IUnknown*, ::IUnknown**)
    {
        return E_OUTOFMEMORY;
    }

    FakeObject<::IInspectable> marshalerTooMany;

    // As when another thread asks for the marshaler meanwhile.
    HRESULT WINAPI MakeOneMarshalerTooMany(::IUnknown* outer, ::IUnknown** marshaler)
    {
        ReplaceImport(GetModuleHandleW(nullptr), "CoCreateFreeThreadedMarshaler", SystemsMakeMarshaler());
        EXPECT_EQ(Query(outer, platform::iid_of<::IMarshal>), S_OK);
        marshalerTooMany.AddRef();
        *marshaler = &marshalerTooMany;
        return S_OK;
    }
} // namespace

TEST(WinrtHandler, MarshalerThatCannotBeMadeIsToldByItsCode)
{
    AddedHandler const handler([](auto&&, auto&&) {});
    ReplaceImport(GetModuleHandleW(nullptr), "CoCreateFreeThreadedMarshaler", MakeNoMarshaler);
    EXPECT_EQ(Query(Raw(handler), platform::iid_of<::IMarshal>), E_OUTOFMEMORY);
}

TEST(WinrtHandler, OfTwoMarshalersMadeAtATimeTheFirstStays)
{
    AddedHandler const handler([](auto&&, auto&&) {});
    auto const before = marshalerTooMany.References();
    ReplaceImport(GetModuleHandleW(nullptr), "CoCreateFreeThreadedMarshaler", MakeOneMarshalerTooMany);
    EXPECT_EQ(Query(Raw(handler), platform::iid_of<::IMarshal>), S_OK);
    EXPECT_EQ(marshalerTooMany.References(), before);
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
