// A list of endpoints that records what is asked of it, and fails on demand.
#pragma once

#include "pairing/LibraryState.h"
#include "platform/abi/Enumeration.h"
#include "tests/support/Codes.h"
#include "tests/support/FakeObject.h"

#include <string>
#include <vector>

namespace test
{
    class FakeList final : public FakeObject<platform::IObservableVector<platform::IDeviceInformation*>,
                                             platform::IVector<platform::IDeviceInformation*>>
    {
    public:
        using Element = platform::IDeviceInformation*;

        explicit FakeList(UINT32 size)
            : m_size(size)
        {
        }

        winrt::Windows::Foundation::Collections::IObservableVector<vorlink::enumeration::DeviceInformation> Projected()
        {
            AddRef();
            return {static_cast<platform::IObservableVector<Element>*>(this), winrt::take_ownership_from_abi};
        }

        std::vector<std::string> calls;
        std::string failing;                                      // the call that fails
        vorlink::enumeration::DeviceInformation element{nullptr}; // stands at every index
        HRESULT failure = platformCode;

        HRESULT STDMETHODCALLTYPE add_VectorChanged(platform::VectorChangedEventHandler<Element>*,
                                                    EventRegistrationToken*) override
        {
            return Note("add_VectorChanged", E_NOTIMPL);
        }
        HRESULT STDMETHODCALLTYPE remove_VectorChanged(EventRegistrationToken) override
        {
            return Note("remove_VectorChanged", E_NOTIMPL);
        }
        HRESULT STDMETHODCALLTYPE get_Size(UINT32* size) override
        {
            *size = m_size;
            return Note("get_Size", S_OK);
        }
        HRESULT STDMETHODCALLTYPE Clear() override
        {
            return Note("Clear", S_OK);
        }
        HRESULT STDMETHODCALLTYPE GetAt(UINT32, Element* value) override
        {
            auto copy = element;
            *value = static_cast<Element>(winrt::detach_abi(copy));
            return Note("GetAt", S_OK);
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
            return Note("RemoveAt", S_OK);
        }
        HRESULT STDMETHODCALLTYPE Append(Element) override
        {
            return Note("Append", S_OK);
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
            return failing == call ? failure : result;
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
        ListInPlace(ListInPlace const&) = delete;
        ListInPlace& operator=(ListInPlace const&) = delete;
    };
} // namespace test
