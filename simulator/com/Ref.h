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
            : m_object(object)
        {
            if (m_object)
            {
                m_object->AddRef();
            }
        }

        // Takes over a reference that the caller holds.
        static Ref Adopt(T* object) noexcept
        {
            Ref ref;
            ref.m_object = object;
            return ref;
        }

        Ref(Ref const& other) noexcept
            : Ref(other.m_object)
        {
        }

        Ref(Ref&& other) noexcept
            : m_object(std::exchange(other.m_object, nullptr))
        {
        }

        Ref& operator=(Ref other) noexcept
        {
            std::swap(m_object, other.m_object);
            return *this;
        }

        ~Ref()
        {
            if (m_object)
            {
                m_object->Release();
            }
        }

        T* Get() const noexcept
        {
            return m_object;
        }

        T* operator->() const noexcept
        {
            return m_object;
        }

        explicit operator bool() const noexcept
        {
            return m_object != nullptr;
        }

        // Hands the reference over to a caller across the boundary.
        T* Detach() noexcept
        {
            return std::exchange(m_object, nullptr);
        }

    private:
        T* m_object = nullptr;
    };

    template <typename T, typename... Arguments>
    Ref<T> Make(Arguments&&... arguments)
    {
        return Ref<T>::Adopt(new T(std::forward<Arguments>(arguments)...));
    }
} // namespace simulator
