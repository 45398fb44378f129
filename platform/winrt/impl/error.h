#pragma once

#include <windows.h>
#include <winstring.h>

#include <cstdint>
#include <cstdlib>
#include <exception>
#include <new>
#include <stdexcept>
#include <string>
#include <string_view>

// Not declared by every toolchain's headers; exported by every Windows from 8.1 on.
extern "C" void WINAPI RoFailFastWithErrorContext(HRESULT code);

namespace winrt
{
    struct hstring;

    namespace impl
    {
        // Not among every toolchain's codes.
        inline constexpr HRESULT error_out_of_bounds = static_cast<HRESULT>(0x8000000B);
        inline constexpr HRESULT error_changed_state = static_cast<HRESULT>(0x8000000C);
    } // namespace impl

    struct hresult
    {
        std::int32_t value = 0;

        constexpr hresult() noexcept = default;
        constexpr hresult(std::int32_t code) noexcept
            : value(code)
        {
        }
        constexpr operator std::int32_t() const noexcept
        {
            return value;
        }
    };

    // The platform's error. Every failing call of a projected type throws it. It lies in memory as C++/WinRT's
    // does, for it crosses from the library to a host that may be built with the other one.
    struct hresult_error
    {
        explicit hresult_error(hresult code) noexcept
            : m_code(code)
        {
        }

        hresult code() const noexcept
        {
            return m_code;
        }

        hstring message() const noexcept;

        hresult to_abi() const noexcept
        {
            return m_code;
        }

    private:
        [[maybe_unused]] void* m_debugText = nullptr; // what only the other one ever has
        [[maybe_unused]] std::uint32_t m_debugMark = 0xAABBCCDD;
        hresult m_code;
        [[maybe_unused]] void* m_errorInfo = nullptr; // what only the other one ever has
    };
    static_assert(sizeof(hresult_error) == 24);

    [[noreturn]] inline void throw_hresult(hresult code)
    {
        if (code == E_OUTOFMEMORY)
        {
            throw std::bad_alloc();
        }
        throw hresult_error(code);
    }

    inline void check_hresult(hresult code)
    {
        if (code < 0)
        {
            throw_hresult(code);
        }
    }

    // The code of the exception being handled.
    inline hresult to_hresult() noexcept
    {
        try
        {
            throw;
        }
        catch (hresult_error const& error)
        {
            return error.to_abi();
        }
        catch (std::bad_alloc const&)
        {
            return E_OUTOFMEMORY;
        }
        catch (std::out_of_range const&)
        {
            return impl::error_out_of_bounds;
        }
        catch (std::invalid_argument const&)
        {
            return E_INVALIDARG;
        }
        catch (std::exception const&)
        {
            return E_FAIL;
        }
    }

    // Ends the process because of the exception being handled.
    [[noreturn]] inline void terminate() noexcept
    {
        RoFailFastWithErrorContext(to_hresult());
        std::abort();
    }
} // namespace winrt

#include "hstring.h"

namespace winrt
{
    // The system's text for the code, empty when it has none.
    inline hstring hresult_error::message() const noexcept
    {
        wchar_t* buffer = nullptr;
        DWORD const size = FormatMessageW(
            FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS, nullptr,
            static_cast<DWORD>(m_code.value), 0, reinterpret_cast<wchar_t*>(&buffer), 0, nullptr);
        std::wstring_view text(buffer, size);
        while (!text.empty() && (text.back() == L'\r' || text.back() == L'\n' || text.back() == L' '))
        {
            text.remove_suffix(1);
        }
        hstring result(text);
        LocalFree(buffer);
        return result;
    }
} // namespace winrt
