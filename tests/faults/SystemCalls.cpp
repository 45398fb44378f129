#include "tests/faults/SystemCalls.h"

#include "tests/support/Host.h"
#include "tests/support/ReplacedImport.h"

#include <windows.h>
#include <direct.h>

#include <atomic>
#include <cstdio>

namespace test
{
    namespace
    {
        std::atomic<int> left{-1};
        std::atomic<bool> hasFailed{false};

        bool Fails()
        {
            bool const fails = left-- == 0;
            hasFailed = hasFailed || fails;
            return fails;
        }

        HANDLE WINAPI FailingCreateThread(LPSECURITY_ATTRIBUTES attributes, SIZE_T stack, LPTHREAD_START_ROUTINE start,
                                          LPVOID argument, DWORD flags, LPDWORD id)
        {
            return Fails() ? nullptr : CreateThread(attributes, stack, start, argument, flags, id);
        }

        std::FILE* FailingFopen(char const* name, char const* mode)
        {
            return Fails() ? nullptr : std::fopen(name, mode);
        }

        char* FailingGetcwd(char* buffer, int size)
        {
            return Fails() ? nullptr : _getcwd(buffer, size);
        }

        struct SystemCall
        {
            std::string_view name;
            void (*replace)();
        };

        constexpr SystemCall systemCalls[] = {
            {"CreateThread", [] { ReplaceImport(LibraryModule(), "CreateThread", FailingCreateThread); }},
            {"fopen", [] { ReplaceImport(LibraryModule(), "fopen", FailingFopen); }},
            {"_getcwd", [] { ReplaceImport(LibraryModule(), "_getcwd", FailingGetcwd); }},
        };
    } // namespace

    bool IsSystemCall(std::string_view call)
    {
        return call.find('.') == std::string_view::npos;
    }

    void FailSystemCall(std::string_view call, unsigned passes)
    {
        left = static_cast<int>(passes);
        for (auto const& one : systemCalls)
        {
            if (one.name == call)
            {
                one.replace();
            }
        }
    }

    bool HasFailedSystemCall()
    {
        return hasFailed;
    }
} // namespace test
