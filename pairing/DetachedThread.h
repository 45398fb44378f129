#pragma once

#include <windows.h>

#include <memory>
#include <system_error>
#include <type_traits>
#include <utility>

namespace vorlink
{
    struct ModuleRelease
    {
        using pointer = HMODULE;
        void operator()(HMODULE module) const noexcept
        {
            FreeLibrary(module);
        }
    };

    // A reference that keeps this library's code loaded.
    using ModuleReference = std::unique_ptr<std::remove_pointer_t<HMODULE>, ModuleRelease>;

    ModuleReference ReferToThisModule() noexcept;

    template <typename Body>
    struct DetachedStart
    {
        ModuleReference module;
        Body body;

        static DWORD WINAPI Run(void* argument) noexcept
        {
            std::unique_ptr<DetachedStart> start(static_cast<DetachedStart*>(argument));
            start->body();
            HMODULE const module = start->module.release();
            start.reset(); // nothing of it may be left to do when the code goes
            FreeLibraryAndExitThread(module, 0);
        }
    };

    // Runs `body` on a thread of its own, which nobody joins. The library's code stays loaded until it has
    // ended, whatever the host unloads meanwhile. Throws std::system_error (resource_unavailable_try_again)
    // when no thread can be started.
    //
    // Not a std::thread: what that holds for its body is let go of behind the body's end, in code that would
    // be gone by then; and where the compiler's runtime detaches a thread that is just ending, it may lose the next
    // one.
    template <typename Body>
    void StartDetached(Body body)
    {
        auto start = std::make_unique<DetachedStart<Body>>(ReferToThisModule(), std::move(body));
        HANDLE const thread = CreateThread(nullptr, 0, &DetachedStart<Body>::Run, start.get(), 0, nullptr);
        if (!thread)
        {
            throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again)); // as std::thread
        }
        (void)start.release(); // the thread's now
        CloseHandle(thread);
    }
} // namespace vorlink
