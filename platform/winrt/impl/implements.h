#pragma once

#include "error.h"
#include "guid.h"

#include <atomic>
#include <tuple>

namespace winrt::impl
{
    // A reference-counted, agile object behind the given binary interfaces. Created with one reference.
    // Agile: callable from any thread, and marshalled as a plain pointer by the free-threaded marshaler.
    template <typename... Interfaces>
    class agile_object : public Interfaces...
    {
    public:
        agile_object() noexcept = default;
        agile_object(agile_object const&) = delete;
        agile_object& operator=(agile_object const&) = delete;

        HRESULT STDMETHODCALLTYPE QueryInterface(GUID const& id, void** object) noexcept override
        {
            if (!object)
            {
                return E_POINTER;
            }
            *object = find(id);
            if (*object)
            {
                AddRef();
                return S_OK;
            }
            if (id == platform::iid_of<::IMarshal>)
            {
                return query_marshaler(object);
            }
            return E_NOINTERFACE;
        }

        ULONG STDMETHODCALLTYPE AddRef() noexcept override
        {
            return ++m_references;
        }

        ULONG STDMETHODCALLTYPE Release() noexcept override
        {
            ULONG const remaining = --m_references;
            if (remaining == 0)
            {
                delete this;
            }
            return remaining;
        }

    protected:
        virtual ~agile_object()
        {
            if (auto* marshaler = m_marshaler.load())
            {
                marshaler->Release();
            }
        }

        using first_interface = std::tuple_element_t<0, std::tuple<Interfaces...>>;

        ::IUnknown* identity() noexcept
        {
            return static_cast<first_interface*>(this);
        }

        virtual void* find(GUID const& id) noexcept
        {
            void* found = nullptr;
            if (id == platform::iid_of<::IUnknown> || id == platform::iid_of<platform::IAgileObject>)
            {
                found = identity();
            }
            ((id == platform::iid_of<Interfaces> ? void(found = static_cast<Interfaces*>(this)) : void()), ...);
            return found;
        }

    private:
        // The system's marshaler is aggregated at the first demand: this object owns it, and it counts its
        // references on this object.
        HRESULT query_marshaler(void** object) noexcept
        {
            if (!m_marshaler.load())
            {
                ::IUnknown* created = nullptr;
                HRESULT const result = CoCreateFreeThreadedMarshaler(identity(), &created);
                if (result < 0)
                {
                    return result;
                }
                ::IUnknown* expected = nullptr;
                if (!m_marshaler.compare_exchange_strong(expected, created))
                {
                    created->Release();
                }
            }
            return m_marshaler.load()->QueryInterface(platform::iid_of<::IMarshal>, object);
        }

        std::atomic<ULONG> m_references{1};
        std::atomic<::IUnknown*> m_marshaler{nullptr};
    };

    // The same for a full runtime object, all of whose interfaces derive from IInspectable.
    template <typename... Interfaces>
    class inspectable_object : public agile_object<Interfaces...>
    {
    public:
        HRESULT STDMETHODCALLTYPE GetIids(ULONG* count, GUID** ids) noexcept override
        {
            *count = sizeof...(Interfaces);
            *ids = static_cast<GUID*>(CoTaskMemAlloc(sizeof(GUID) * sizeof...(Interfaces)));
            if (!*ids)
            {
                *count = 0;
                return E_OUTOFMEMORY;
            }
            GUID* next = *ids;
            ((*next++ = platform::iid_of<Interfaces>), ...);
            return S_OK;
        }

        HRESULT STDMETHODCALLTYPE GetRuntimeClassName(HSTRING* name) noexcept override
        {
            *name = nullptr;
            return S_OK;
        }

        HRESULT STDMETHODCALLTYPE GetTrustLevel(TrustLevel* level) noexcept override
        {
            *level = BaseTrust;
            return S_OK;
        }

    protected:
        void* find(GUID const& id) noexcept override
        {
            if (id == platform::iid_of<::IInspectable>)
            {
                return this->identity();
            }
            return agile_object<Interfaces...>::find(id);
        }
    };
} // namespace winrt::impl
