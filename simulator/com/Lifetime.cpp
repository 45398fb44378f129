#include "simulator/com/Lifetime.h"

#include "simulator/com/Ref.h"

#include <new>
#include <utility>

namespace simulator
{
    namespace
    {
        constinit std::atomic<std::uint32_t> liveObjects{0};

        class WeakReference final : public platform::IWeakReference
        {
        public:
            explicit WeakReference(std::shared_ptr<Lifetime> target) noexcept
                : m_target(std::move(target))
            {
            }

            HRESULT STDMETHODCALLTYPE QueryInterface(REFIID id, void** object) override
            {
                if (!object)
                {
                    return E_POINTER;
                }
                *object = nullptr;
                if (id != platform::iid_of<::IUnknown> && id != platform::iid_of<platform::IWeakReference> &&
                    id != platform::iid_of<platform::IAgileObject>)
                {
                    return E_NOINTERFACE;
                }
                *object = this;
                AddRef();
                return S_OK;
            }

            ULONG STDMETHODCALLTYPE AddRef() override
            {
                return ++m_references;
            }

            ULONG STDMETHODCALLTYPE Release() override
            {
                ULONG const left = --m_references;
                if (left == 0)
                {
                    delete this;
                }
                return left;
            }

            HRESULT STDMETHODCALLTYPE Resolve(GUID const& id, void** object) override
            {
                if (!object)
                {
                    return E_POINTER;
                }
                *object = nullptr;
                if (!m_target->TryAddRef())
                {
                    return S_OK; // a null result is how an object that is gone shows
                }
                auto const alive = Ref<::IUnknown>::Adopt(m_target->object);
                return alive->QueryInterface(id, object);
            }

        private:
            virtual ~WeakReference() = default;

            std::atomic<ULONG> m_references{1};
            std::shared_ptr<Lifetime> m_target;
            LiveObject m_live;
        };
    } // namespace

    bool Lifetime::TryAddRef() noexcept
    {
        ULONG count = references;
        while (count != 0 && !references.compare_exchange_weak(count, count + 1))
        {
        }
        return count != 0;
    }

    LiveObject::LiveObject() noexcept
    {
        ++liveObjects;
    }

    LiveObject::~LiveObject()
    {
        --liveObjects;
    }

    std::uint32_t LiveObjects() noexcept
    {
        return liveObjects;
    }

    HRESULT MakeWeakReference(std::shared_ptr<Lifetime> lifetime, platform::IWeakReference** reference)
    {
        if (!reference)
        {
            return E_POINTER;
        }
        *reference = new (std::nothrow) WeakReference(std::move(lifetime));
        return *reference ? S_OK : E_OUTOFMEMORY;
    }
} // namespace simulator
