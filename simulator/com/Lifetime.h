// The reference count of an object, kept apart from it so that weak references may outlive the object.
#pragma once

#include "platform/abi/Foundation.h"

#include <atomic>
#include <cstdint>
#include <memory>

namespace simulator
{
    struct Lifetime
    {
        std::atomic<ULONG> references{1};
        ::IUnknown* object = nullptr;

        // Fails once the last reference is gone: nothing brings a dying object back.
        bool TryAddRef() noexcept;
    };

    // Counts itself among the live objects of the module.
    class LiveObject
    {
    public:
        LiveObject() noexcept;
        LiveObject(LiveObject const&) = delete;
        LiveObject& operator=(LiveObject const&) = delete;
        ~LiveObject();
    };

    std::uint32_t LiveObjects() noexcept;

    HRESULT MakeWeakReference(std::shared_ptr<Lifetime> lifetime, platform::IWeakReference** reference);
} // namespace simulator
