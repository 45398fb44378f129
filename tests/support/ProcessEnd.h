// How processes end, and what they leave.
#pragma once

#include <windows.h>

#include <cstdint>
#include <filesystem>

namespace test
{
    inline bool IsWine()
    {
        return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
    }

    // What the end of a process by RoFailFastWithErrorContext looks like: the exception of an unimplemented
    // function on Wine, a fail-fast on Windows.
    inline bool EndedByFailFast(int code)
    {
        auto const status = static_cast<std::uint32_t>(code);
        return status == 0x80000100 || status == 0xC000027B || status == 0xC0000409;
    }

    // The test's working directory, also in the process that EXPECT_EXIT makes for its statement and that has one
    // of its own otherwise: what the statement leaves here, the test finds. To be called outside the statement.
    inline std::filesystem::path DirectoryOfTheTest()
    {
        constexpr wchar_t variable[] = L"VORLINK_TEST_DIRECTORY";
        wchar_t inherited[MAX_PATH]{};
        if (GetEnvironmentVariableW(variable, inherited, MAX_PATH))
        {
            return inherited;
        }
        auto own = std::filesystem::current_path();
        SetEnvironmentVariableW(variable, own.c_str());
        return own;
    }
} // namespace test
