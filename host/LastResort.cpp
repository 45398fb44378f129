#include "host/LastResort.h"

#include "host/Session.h"
#include "host/Terminal.h"

#include <windows.h>

#include <array>
#include <csignal>
#include <cstdio>

namespace host
{
    namespace
    {
        [[noreturn]] void EndAsFailed(char const* cause)
        {
            EndSession();
            PrintError("\nThe platform or the library failed where nothing can catch it (");
            PrintError(cause);
            PrintError(").\nRun again with --log and look at the last records of log.log.\n");
            EndProcess(ExitCode::Failed);
        }

        LONG WINAPI OnUnhandledException(EXCEPTION_POINTERS* exception)
        {
            std::array<char, 32> cause{};
            std::snprintf(cause.data(), cause.size(), "exception 0x%08lX", exception->ExceptionRecord->ExceptionCode);
            EndAsFailed(cause.data());
        }

        void OnAbort(int)
        {
            EndAsFailed("abort");
        }
    } // namespace

    void InstallLastResort()
    {
        SetUnhandledExceptionFilter(OnUnhandledException);
        std::signal(SIGABRT, OnAbort);
    }
} // namespace host
