// The base of every platform object: counting, interfaces, identity, agility, weak references.
#pragma once

#include "simulator/com/Codes.h"
#include "simulator/com/Hstring.h"
#include "simulator/com/Lifetime.h"
#include "simulator/com/Ref.h"

#include <objbase.h>

#include <mutex>

namespace simulator
{
    template <typename First, typename... Rest>
    class Object : public First, public Rest..., public platform::IWeakReferenceSource
    {
    public:
        Object(Object const&) = delete;
        Object& operator=(Object const&) = delete;

        HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) final
        {
            if (!object)
            {
                return E_POINTER;
            }
            *object = nullptr;
            if (IsAgile() && id == platform::iid_of<::IMarshal>)
            {
                return QueryMarshaler(object);
            }
            *object = Find(id);
            if (!*object)
            {
                return E_NOINTERFACE;
            }
            AddRef();
            return S_OK;
        }

        ULONG STDMETHODCALLTYPE AddRef() final
        {
            return ++m_lifetime->references;
        }

        ULONG STDMETHODCALLTYPE Release() final
        {
            ULONG const left = --m_lifetime->references;
            if (left == 0)
            {
                delete this;
            }
            return left;
        }

        HRESULT STDMETHODCALLTYPE GetIids(ULONG* count, IID** ids) final
        {
            if (!count || !ids)
            {
                return E_POINTER;
            }
            constexpr ULONG size = 1 + sizeof...(Rest);
            *count = 0;
            *ids = static_cast<IID*>(CoTaskMemAlloc(size * sizeof(IID)));
            if (!*ids)
            {
                return E_OUTOFMEMORY;
            }
            for (IID const& id : {platform::iid_of<First>, platform::iid_of<Rest>...})
            {
                (*ids)[(*count)++] = id;
            }
            return S_OK;
        }

        HRESULT STDMETHODCALLTYPE GetRuntimeClassName(HSTRING* name) final
        {
            if (!name)
            {
                return E_POINTER;
            }
            *name = nullptr;
            char const* const text = ClassName();
            return text ? MakeHstring(text, name) : illegalMethodCall;
        }

        HRESULT STDMETHODCALLTYPE GetTrustLevel(TrustLevel* level) final
        {
            if (!level)
            {
                return E_POINTER;
            }
            *level = BaseTrust;
            return S_OK;
        }

        HRESULT STDMETHODCALLTYPE GetWeakReference(platform::IWeakReference** reference) final
        {
            return MakeWeakReference(m_lifetime, reference);
        }

    protected:
        Object()
            : m_lifetime(std::make_shared<Lifetime>())
        {
            m_lifetime->object = static_cast<First*>(this);
        }

        virtual ~Object() = default;

        std::shared_ptr<Lifetime> const& ObjectLifetime() const noexcept
        {
            return m_lifetime;
        }

    private:
        // Null for what has no runtime class name: activation factories.
        virtual char const* ClassName() const noexcept = 0;

        // Activation factories are bound to where they were made; they have no weak references either.
        virtual bool IsAgile() const noexcept
        {
            return true;
        }

        // An identifier that only this module knows, by which it recognises an object of its own.
        virtual void* FindOwn(GUID const&) noexcept
        {
            return nullptr;
        }

        template <typename Interface>
        bool Pick(GUID const& id, void*& found) noexcept
        {
            found = id == platform::iid_of<Interface> ? static_cast<Interface*>(this) : nullptr;
            return found != nullptr;
        }

        void* Find(GUID const& id) noexcept
        {
            if (id == platform::iid_of<::IUnknown> || id == platform::iid_of<::IInspectable> ||
                (IsAgile() && id == platform::iid_of<platform::IAgileObject>))
            {
                return static_cast<First*>(this);
            }
            void* found = nullptr;
            if (IsAgile() && Pick<platform::IWeakReferenceSource>(id, found))
            {
                return found;
            }
            if (Pick<First>(id, found) || (Pick<Rest>(id, found) || ...))
            {
                return found;
            }
            return FindOwn(id);
        }

        HRESULT QueryMarshaler(void** object)
        {
            std::call_once(m_marshalerMade, [this] {
                ::IUnknown* marshaler = nullptr;
                CoCreateFreeThreadedMarshaler(static_cast<First*>(this), &marshaler);
                m_marshaler = Ref<::IUnknown>::Adopt(marshaler);
            });
            return m_marshaler ? m_marshaler->QueryInterface(platform::iid_of<::IMarshal>, object) : E_OUTOFMEMORY;
        }

        std::shared_ptr<Lifetime> m_lifetime;
        std::once_flag m_marshalerMade;
        Ref<::IUnknown> m_marshaler;
        LiveObject m_live;
    };
} // namespace simulator
