// Errors that end the process through the platform's fail-fast, and the code that it is handed.
#pragma once

#include "tests/support/Host.h"
#include "tests/support/ReplacedImport.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <cstdint>
#include <cstring>
#include <stdexcept>

namespace test
{
    inline constexpr char failFast[] = "RoFailFastWithErrorContext";

    // In the place of the platform's, which does not tell the code to whoever reads the process's own.
    inline void WINAPI EndWithTheErrorsCode(HRESULT code)
    {
        TerminateProcess(GetCurrentProcess(), static_cast<UINT>(code));
    }

    inline FARPROC WINAPI FindFailFast(HMODULE module, char const* function)
    {
        if (!IS_INTRESOURCE(function) && std::strcmp(function, failFast) == 0)
        {
            return reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&EndWithTheErrorsCode));
        }
        return GetProcAddress(module, function);
    }

    inline void StandInForFailFast()
    {
        try
        {
            ReplaceImport(LibraryModule(), failFast, EndWithTheErrorsCode);
        }
        catch (std::runtime_error const&) // built with C++/WinRT itself, which looks it up when it needs it
        {
            ReplaceImport(LibraryModule(), "GetProcAddress", FindFailFast);
        }
    }

    // A process that has not ended by then ends with a code of its own.
    inline void OutliveTheError()
    {
        Sleep(10'000);
        TerminateProcess(GetCurrentProcess(), 6);
    }

    // A callback that ends the process with a code of its own.
    template <typename... Arguments>
    void MustNotReport(Arguments...)
    {
        TerminateProcess(GetCurrentProcess(), 5);
    }

    // Runs `body` in a process of its own, which the library has to end by a fail-fast with this code.
    template <typename Body>
    void ExpectFailFast(std::int32_t code, Body body)
    {
        EXPECT_EXIT(
            {
                StandInForFailFast();
                body();
                OutliveTheError();
            },
            testing::ExitedWithCode(code), "");
    }
} // namespace test
