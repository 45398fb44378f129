// The library under load: rounds until the time is up, and their numbers in one line, also when the process dies.
#pragma once

#include "tests/support/Host.h"
#include "tests/support/ReplacedImport.h"
#include "tests/support/TestSeconds.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <chrono>
#include <cstdio>
#include <mutex>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace test
{
    // What a test counts. A failure is what a sound library never does.
    inline std::atomic<int> rounds = 0;
    inline std::atomic<int> events = 0;
    inline std::atomic<int> failures = 0;

    class Stress : public testing::Test
    {
    protected:
        Stress()
        {
            begin = std::chrono::steady_clock::now();
            SetUnhandledExceptionFilter(DieOfException);
            ReplaceImport(LibraryModule(), "abort", DieOfAbort);
        }

        ~Stress() override
        {
            std::printf("%s\n", Numbers().data());
        }

        // Another round? At least one, however long a busy machine took to begin.
        static bool GoesOn()
        {
            bool const isEarly = std::chrono::steady_clock::now() - begin < TestSeconds(std::chrono::seconds(1));
            return !HasFailure() && (rounds == 0 || isEarly);
        }

        static int Random(int most)
        {
            thread_local std::mt19937 random(std::random_device{}());
            return std::uniform_int_distribution(0, most)(random);
        }

        // Up to as much, so that two threads meet at each of their steps some time.
        static void SpinUpTo(std::chrono::microseconds most)
        {
            auto const end = std::chrono::steady_clock::now() +
                             std::chrono::nanoseconds(Random(static_cast<int>(most.count()) * 1000));
            while (std::chrono::steady_clock::now() < end)
            {
            }
        }

    private:
        static inline std::chrono::steady_clock::time_point begin;

        using Line = std::array<char, 200>;

        static Line Numbers()
        {
            auto const passed = std::chrono::steady_clock::now() - begin;
            Line line{};
            std::snprintf(
                line.data(), line.size(), "%d rounds, %d events, %d failures in %lld ms", rounds.load(), events.load(),
                failures.load(),
                static_cast<long long>(std::chrono::duration_cast<std::chrono::milliseconds>(passed).count()));
            return line;
        }

        // Told from a failure of the test, and from the watchdog's end.
        static constexpr UINT diedCode = 98;

        // Uses nothing that the dying thread may have broken or locked.
        static void Die(char const* reason, unsigned long code)
        {
            Line line{};
            int const length = std::snprintf(line.data(), line.size(), "the process dies of %s 0x%08lx: %s\n", reason,
                                             code, Numbers().data());
            DWORD written = 0;
            WriteFile(GetStdHandle(STD_ERROR_HANDLE), line.data(), static_cast<DWORD>(length), &written, nullptr);
            TerminateProcess(GetCurrentProcess(), diedCode);
        }

        static void Tell(char const* what, DWORD64 address)
        {
            Line line{};
            MEMORY_BASIC_INFORMATION about{};
            VirtualQuery(reinterpret_cast<void const*>(address), &about, sizeof about);
            constexpr DWORD executable = PAGE_EXECUTE | PAGE_EXECUTE_READ | PAGE_EXECUTE_READWRITE;
            if (about.Type != MEM_IMAGE || (about.Protect & executable) == 0)
            {
                return;
            }
            auto const base = reinterpret_cast<DWORD64>(about.AllocationBase);
            int const length =
                std::snprintf(line.data(), line.size(), "%s 0x%llx + 0x%llx\n", what, base, address - base);
            DWORD written = 0;
            WriteFile(GetStdHandle(STD_ERROR_HANDLE), line.data(), static_cast<DWORD>(length), &written, nullptr);
        }

        // For whoever has the images' symbols: what is on the stack of the code that was at it.
        static void TellPlace(CONTEXT const& context)
        {
            constexpr int depth = 400;
            Tell("at", context.Rip);
            auto const* const stack = reinterpret_cast<DWORD64 const*>(context.Rsp);
            auto const* const top =
                reinterpret_cast<DWORD64 const*>(reinterpret_cast<NT_TIB*>(NtCurrentTeb())->StackBase);
            for (auto const* word = stack; word < top && word < stack + depth; ++word)
            {
                Tell("under", *word);
            }
        }

        static LONG WINAPI DieOfException(EXCEPTION_POINTERS* exception)
        {
            TellPlace(*exception->ContextRecord);
            Die("exception", exception->ExceptionRecord->ExceptionCode);
            return EXCEPTION_CONTINUE_SEARCH;
        }

        static void DieOfAbort()
        {
            Die("abort", 0);
        }
    };

    // The detached threads that the library has started since Watch, so that a test can wait for their end.
    class LibraryThreads
    {
    public:
        static void Watch()
        {
            ReplaceImport(LibraryModule(), "CreateThread", Start);
        }

        // False when some have not ended in time.
        static bool WaitForAll(std::chrono::milliseconds limit = patience)
        {
            auto const end = std::chrono::steady_clock::now() + limit;
            std::vector<HANDLE> running;
            for (auto const thread : Take())
            {
                auto const left =
                    std::chrono::duration_cast<std::chrono::milliseconds>(end - std::chrono::steady_clock::now());
                auto const wait = static_cast<DWORD>(std::max<long long>(left.count(), 0));
                if (WaitForSingleObject(thread, wait) == WAIT_OBJECT_0)
                {
                    CloseHandle(thread);
                }
                else
                {
                    running.push_back(thread);
                }
            }
            std::lock_guard const lock(mutex);
            threads.insert(threads.end(), running.begin(), running.end());
            return running.empty();
        }

        // How many have been started and not been waited for.
        static std::size_t Count()
        {
            std::lock_guard const lock(mutex);
            return threads.size();
        }

    private:
        static inline std::mutex mutex;
        static inline std::vector<HANDLE> threads;

        static std::vector<HANDLE> Take()
        {
            std::lock_guard const lock(mutex);
            return std::exchange(threads, {});
        }

        static HANDLE WINAPI Start(SECURITY_ATTRIBUTES* security, SIZE_T stack, LPTHREAD_START_ROUTINE body,
                                   void* argument, DWORD flags, DWORD* id)
        {
            HANDLE const thread = CreateThread(security, stack, body, argument, flags, id);
            HANDLE own = nullptr;
            if (thread && DuplicateHandle(GetCurrentProcess(), thread, GetCurrentProcess(), &own, 0, FALSE,
                                          DUPLICATE_SAME_ACCESS))
            {
                std::lock_guard const lock(mutex);
                threads.push_back(own);
            }
            return thread;
        }
    };
} // namespace test
