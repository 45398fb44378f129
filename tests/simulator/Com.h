// A counted reference to an object of the platform.
#pragma once

#include "platform/abi/Foundation.h"

#include <gtest/gtest.h>

#include <utility>

namespace test
{
    using namespace platform;

    template <typename T>
    class Com
    {
    public:
        Com() = default;

        explicit Com(T* shared)
            : m_object(shared)
        {
            if (m_object)
            {
                m_object->AddRef();
            }
        }

        Com(Com const& other)
            : Com(other.m_object)
        {
        }

        Com(Com&& other) noexcept
            : m_object(std::exchange(other.m_object, nullptr))
        {
        }

        Com& operator=(Com other) noexcept
        {
            std::swap(m_object, other.m_object);
            return *this;
        }

        ~Com()
        {
            Reset();
        }

        void Reset()
        {
            if (auto* const old = std::exchange(m_object, nullptr))
            {
                old->Release();
            }
        }

        T** Put()
        {
            Reset();
            return &m_object;
        }

        T* Get() const
        {
            return m_object;
        }

        T* operator->() const
        {
            return m_object;
        }

        explicit operator bool() const
        {
            return m_object != nullptr;
        }

        template <typename U>
        Com<U> As() const
        {
            Com<U> other;
            void* found = nullptr;
            EXPECT_HRESULT_SUCCEEDED(m_object->QueryInterface(iid_of<U>, &found));
            *other.Put() = static_cast<U*>(found);
            return other;
        }

        template <typename U>
        bool Answers() const
        {
            return Answers(iid_of<U>);
        }

        bool Answers(GUID const& id) const
        {
            void* found = nullptr;
            if (FAILED(m_object->QueryInterface(id, &found)))
            {
                return false;
            }
            static_cast<::IUnknown*>(found)->Release();
            return true;
        }

    private:
        T* m_object = nullptr;
    };
} // namespace test
