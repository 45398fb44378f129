// What Uninitialize asks of the list of endpoints, which is a platform object like any other.
#include "pairing/LibraryState.h"
#include "pairing/SubVorlink.h"
#include "platform/abi/enumeration.h"
#include "tests/support/fake_object.h"

#include <gmock/gmock.h>

#include <string>
#include <vector>

using testing::ElementsAre;

namespace
{
    using Element = platform::IDeviceInformation*;

    class FakeList final : public test::FakeObject<platform::IVector<Element>>
    {
    public:
        explicit FakeList(UINT32 size)
            : m_size(size)
        {
        }

        winrt::Windows::Foundation::Collections::IVector<vorlink::enumeration::DeviceInformation> Projected()
        {
            AddRef();
            return {static_cast<platform::IVector<Element>*>(this), winrt::take_ownership_from_abi};
        }

        std::vector<std::string> calls;
        HRESULT clearing = S_OK;

        HRESULT STDMETHODCALLTYPE get_Size(UINT32* size) override
        {
            *size = m_size;
            return Note("get_Size", S_OK);
        }
        HRESULT STDMETHODCALLTYPE Clear() override
        {
            return Note("Clear", clearing);
        }
        HRESULT STDMETHODCALLTYPE GetAt(UINT32, Element*) override
        {
            return Note("GetAt", E_NOTIMPL);
        }
        HRESULT STDMETHODCALLTYPE GetView(platform::IVectorView<Element>**) override
        {
            return Note("GetView", E_NOTIMPL);
        }
        HRESULT STDMETHODCALLTYPE IndexOf(Element, UINT32*, boolean*) override
        {
            return Note("IndexOf", E_NOTIMPL);
        }
        HRESULT STDMETHODCALLTYPE SetAt(UINT32, Element) override
        {
            return Note("SetAt", E_NOTIMPL);
        }
        HRESULT STDMETHODCALLTYPE InsertAt(UINT32, Element) override
        {
            return Note("InsertAt", E_NOTIMPL);
        }
        HRESULT STDMETHODCALLTYPE RemoveAt(UINT32) override
        {
            return Note("RemoveAt", E_NOTIMPL);
        }
        HRESULT STDMETHODCALLTYPE Append(Element) override
        {
            return Note("Append", E_NOTIMPL);
        }
        HRESULT STDMETHODCALLTYPE RemoveAtEnd() override
        {
            return Note("RemoveAtEnd", E_NOTIMPL);
        }
        HRESULT STDMETHODCALLTYPE GetMany(UINT32, UINT32, Element*, UINT32*) override
        {
            return Note("GetMany", E_NOTIMPL);
        }
        HRESULT STDMETHODCALLTYPE ReplaceAll(UINT32, Element*) override
        {
            return Note("ReplaceAll", E_NOTIMPL);
        }

    private:
        HRESULT Note(char const* call, HRESULT result)
        {
            calls.emplace_back(call);
            return result;
        }

        UINT32 m_size;
    };

    // The library lets go of the list before the test's stack does.
    struct ListInPlace
    {
        explicit ListInPlace(FakeList& list)
        {
            vorlink::Library().IosDeviceList = list.Projected();
        }
        ~ListInPlace()
        {
            vorlink::Library().IosDeviceList = nullptr;
        }
    };
} // namespace

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
    list.clearing = static_cast<HRESULT>(0x80070490);
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
