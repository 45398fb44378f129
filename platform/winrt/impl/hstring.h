#pragma once

#include "error.h"

#include <winstring.h>

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

namespace winrt
{
    struct hstring;

    void* get_abi(hstring const& object) noexcept;
    void** put_abi(hstring& object) noexcept;
    void* detach_abi(hstring& object) noexcept;

    // An owned, immutable, reference-counted UTF-16 text. Null is the empty text.
    struct hstring
    {
        using value_type = wchar_t;
        using size_type = std::uint32_t;

        hstring() noexcept = default;

        explicit hstring(std::wstring_view value)
        {
            check_hresult(WindowsCreateString(value.data(), static_cast<UINT32>(value.size()), &m_handle));
        }

        hstring(std::nullptr_t) = delete;

        hstring(wchar_t const* value)
            : hstring(std::wstring_view(value))
        {
        }

        hstring(hstring const& other)
        {
            check_hresult(WindowsDuplicateString(other.m_handle, &m_handle));
        }

        hstring(hstring&& other) noexcept
            : m_handle(std::exchange(other.m_handle, nullptr))
        {
        }

        hstring& operator=(hstring other) noexcept
        {
            std::swap(m_handle, other.m_handle);
            return *this;
        }

        ~hstring()
        {
            WindowsDeleteString(m_handle);
        }

        operator std::wstring_view() const noexcept
        {
            UINT32 length = 0;
            wchar_t const* text = WindowsGetStringRawBuffer(m_handle, &length);
            return {text, length};
        }

        wchar_t const* c_str() const noexcept
        {
            return WindowsGetStringRawBuffer(m_handle, nullptr);
        }

        wchar_t const* data() const noexcept
        {
            return c_str();
        }

        size_type size() const noexcept
        {
            return WindowsGetStringLen(m_handle);
        }

        bool empty() const noexcept
        {
            return size() == 0;
        }

        friend bool operator==(hstring const& left, hstring const& right) noexcept
        {
            return std::wstring_view(left) == std::wstring_view(right);
        }

        friend void* get_abi(hstring const& object) noexcept;
        friend void** put_abi(hstring& object) noexcept;
        friend void* detach_abi(hstring& object) noexcept;

    private:
        HSTRING m_handle = nullptr;
    };

    inline void* get_abi(hstring const& object) noexcept
    {
        return object.m_handle;
    }

    inline void** put_abi(hstring& object) noexcept
    {
        object = hstring();
        return reinterpret_cast<void**>(&object.m_handle);
    }

    inline void* detach_abi(hstring& object) noexcept
    {
        return std::exchange(object.m_handle, nullptr);
    }

    // In UTF-8.
    inline std::string to_string(std::wstring_view value)
    {
        auto const units = static_cast<int>(value.size());
        int const size = WideCharToMultiByte(CP_UTF8, 0, value.data(), units, nullptr, 0, nullptr, nullptr);
        std::string result(static_cast<std::size_t>(size), '\0');
        WideCharToMultiByte(CP_UTF8, 0, value.data(), units, result.data(), size, nullptr, nullptr);
        return result;
    }

    namespace param
    {
        // A text passed into the platform for the time of a call, without a copy.
        struct hstring
        {
            hstring(winrt::hstring const& value) noexcept
                : m_handle(static_cast<HSTRING>(get_abi(value)))
            {
            }

            hstring(wchar_t const* value)
            {
                auto const length = static_cast<UINT32>(std::wstring_view(value).size());
                check_hresult(WindowsCreateStringReference(value, length, &m_header, &m_handle));
            }

            hstring(hstring const&) = delete;
            hstring& operator=(hstring const&) = delete;

            friend void* get_abi(hstring const& object) noexcept
            {
                return object.m_handle;
            }

        private:
            HSTRING_HEADER m_header{};
            HSTRING m_handle = nullptr;
        };
    } // namespace param
} // namespace winrt
