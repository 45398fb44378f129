// What every object of a platform played by a test stands on, at the binary level. It lives on the test's stack.
#pragma once

#include "platform/abi/Foundation.h"

#include <atomic>

namespace test
{
    template <typename... Interfaces>
    class FakeObject : public Interfaces...
    {
    public:
        HRESULT STDMETHODCALLTYPE QueryInterface(GUID const& id, void** object) override
        {
            *object = nullptr;
            if (id == platform::iid_of<::IUnknown> || id == platform::iid_of<::IInspectable> ||
                id == platform::iid_of<platform::IAgileObject>)
            {
                *object = First<Interfaces...>();
            }
            ((id == platform::iid_of<Interfaces> ? void(*object = static_cast<Interfaces*>(this)) : void()), ...);
            if (!*object)
            {
                return E_NOINTERFACE;
            }
            AddRef();
            return S_OK;
        }

        ULONG STDMETHODCALLTYPE AddRef() override
        {
            return ++m_references;
        }

        ULONG STDMETHODCALLTYPE Release() override
        {
            return --m_references;
        }

        HRESULT STDMETHODCALLTYPE GetIids(ULONG*, GUID**) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE GetRuntimeClassName(HSTRING*) override
        {
            return E_NOTIMPL;
        }
        HRESULT STDMETHODCALLTYPE GetTrustLevel(TrustLevel*) override
        {
            return E_NOTIMPL;
        }

        ULONG References() const
        {
            return m_references;
        }

    private:
        template <typename Interface, typename...>
        Interface* First()
        {
            return static_cast<Interface*>(this);
        }

        std::atomic<ULONG> m_references = 1;
    };
} // namespace test
