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
                : target_(std::move(target))
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
                return ++references_;
            }

            ULONG STDMETHODCALLTYPE Release() override
            {
                ULONG const left = --references_;
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
                if (!target_->TryAddRef())
                {
                    return S_OK; // a null result is how an object that is gone shows
                }
                auto const alive = Ref<::IUnknown>::Adopt(target_->object);
                return alive->QueryInterface(id, object);
            }

        private:
            virtual ~WeakReference() = default;

            std::atomic<ULONG> references_{1};
            std::shared_ptr<Lifetime> target_;
            LiveObject live_;
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
