// Failure codes of the Windows Runtime that not every compiler's winerror.h has.
#pragma once

#include <windows.h>

namespace simulator
{
    constexpr HRESULT Code(unsigned long value) noexcept
    {
        return static_cast<HRESULT>(value);
    }

    inline constexpr HRESULT outOfBounds = Code(0x8000000BUL);               // E_BOUNDS
    inline constexpr HRESULT illegalStateChange = Code(0x8000000DUL);        // E_ILLEGAL_STATE_CHANGE
    inline constexpr HRESULT illegalMethodCall = Code(0x8000000EUL);         // E_ILLEGAL_METHOD_CALL
    inline constexpr HRESULT objectClosed = Code(0x80000013UL);              // RO_E_CLOSED
    inline constexpr HRESULT illegalDelegateAssignment = Code(0x80000018UL); // E_ILLEGAL_DELEGATE_ASSIGNMENT
    inline constexpr HRESULT elementNotFound = Code(0x8002802BUL);           // TYPE_E_ELEMENTNOTFOUND
    inline constexpr HRESULT typeMismatch = Code(0x80028CA0UL);              // TYPE_E_TYPEMISMATCH
    inline constexpr HRESULT classNotAvailable = Code(0x80040111UL);         // CLASS_E_CLASSNOTAVAILABLE
    inline constexpr HRESULT comNotInitialized = Code(0x800401F0UL);         // CO_E_NOTINITIALIZED
    inline constexpr HRESULT disconnected = Code(0x80010108UL);              // RPC_E_DISCONNECTED
} // namespace simulator
