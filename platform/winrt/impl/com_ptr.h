#pragma once

#include "error.h"
#include "guid.h"

#include <cstddef>
#include <utility>

namespace winrt
{
    // An owning pointer to a binary interface.
    template <typename T>
    struct com_ptr
    {
        com_ptr(std::nullptr_t = nullptr) noexcept {}

        com_ptr(com_ptr const& other) noexcept
            : m_ptr(other.m_ptr)
        {
            if (m_ptr)
            {
                m_ptr->AddRef();
            }
        }

        com_ptr(com_ptr&& other) noexcept
            : m_ptr(std::exchange(other.m_ptr, nullptr))
        {
        }

        com_ptr& operator=(com_ptr other) noexcept
        {
            std::swap(m_ptr, other.m_ptr);
            return *this;
        }

        ~com_ptr()
        {
            if (m_ptr)
            {
                m_ptr->Release();
            }
        }

        explicit operator bool() const noexcept
        {
            return m_ptr != nullptr;
        }

        T* operator->() const noexcept
        {
            return m_ptr;
        }

        T* get() const noexcept
        {
            return m_ptr;
        }

        T** put() noexcept
        {
            *this = nullptr;
            return &m_ptr;
        }

        void** put_void() noexcept
        {
            return reinterpret_cast<void**>(put());
        }

        T* detach() noexcept
        {
            return std::exchange(m_ptr, nullptr);
        }

        void attach(T* value) noexcept
        {
            *put() = value;
        }

        friend bool operator==(com_ptr const& left, com_ptr const& right) noexcept
        {
            return left.m_ptr == right.m_ptr;
        }

    private:
        T* m_ptr = nullptr;
    };
} // namespace winrt
