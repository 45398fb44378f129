// What tests put in the place of the system's functions, by ReplaceImport.
#pragma once

#include <windows.h>

#include <atomic>

namespace test
{
    inline std::atomic<int> threadsStarted = 0;

    // In the place of CreateThread.
    inline HANDLE WINAPI CountThread(SECURITY_ATTRIBUTES* security, SIZE_T stack, LPTHREAD_START_ROUTINE body,
                                     void* argument, DWORD flags, DWORD* id)
    {
        ++threadsStarted;
        return CreateThread(security, stack, body, argument, flags, id);
    }

    // The same; the thread is neither started nor missed by whoever closes its handle.
    inline HANDLE WINAPI PretendThread(SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*, DWORD, DWORD*)
    {
        return CreateEventW(nullptr, TRUE, TRUE, nullptr);
    }

    // The same.
    inline HANDLE WINAPI RefuseThread(SECURITY_ATTRIBUTES*, SIZE_T, LPTHREAD_START_ROUTINE, void*, DWORD, DWORD*)
    {
        SetLastError(ERROR_NOT_ENOUGH_MEMORY);
        return nullptr;
    }

    // In the place of Sleep: waits in as many steps as the library does, of no length.
    inline void WINAPI SleepShortly(DWORD)
    {
        Sleep(0);
    }

    // In the place of WideCharToMultiByte, for a text that does not convert.
    inline int WINAPI ConvertNothing(UINT, DWORD, LPCWCH, int, LPSTR, int, LPCCH, LPBOOL)
    {
        return 0;
    }
} // namespace test
