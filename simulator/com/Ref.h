// A counted reference to a COM object.
#pragma once

#include "platform/abi/Foundation.h"

#include <utility>

namespace simulator
{
    template <typename T>
    class Ref
    {
    public:
        Ref() noexcept = default;

        // Shares: the object gets one more reference.
        explicit Ref(T* object) noexcept
            : object_(object)
        {
            if (object_)
            {
                object_->AddRef();
            }
        }

        // Takes over a reference that the caller holds.
        static Ref Adopt(T* object) noexcept
        {
            Ref ref;
            ref.object_ = object;
            return ref;
        }

        Ref(Ref const& other) noexcept
            : Ref(other.object_)
        {
        }

        Ref(Ref&& other) noexcept
            : object_(std::exchange(other.object_, nullptr))
        {
        }

        Ref& operator=(Ref other) noexcept
        {
            std::swap(object_, other.object_);
            return *this;
        }

        ~Ref()
        {
            if (object_)
            {
                object_->Release();
            }
        }

        T* Get() const noexcept
        {
            return object_;
        }

        T* operator->() const noexcept
        {
            return object_;
        }

        explicit operator bool() const noexcept
        {
            return object_ != nullptr;
        }

        // Hands the reference over to a caller across the boundary.
        T* Detach() noexcept
        {
            return std::exchange(object_, nullptr);
        }

    private:
        T* object_ = nullptr;
    };

    template <typename T, typename... Arguments>
    Ref<T> Make(Arguments&&... arguments)
    {
        return Ref<T>::Adopt(new T(std::forward<Arguments>(arguments)...));
    }
} // namespace simulator
