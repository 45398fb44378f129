#include "host/OwnThread.h"

#include <windows.h>

#include <memory>
#include <system_error>
#include <utility>

namespace host
{
    namespace
    {
        using Body = std::function<void()>;

        DWORD WINAPI Run(void* argument) noexcept
        {
            std::unique_ptr<Body> const body(static_cast<Body*>(argument));
            (*body)();
            return 0;
        }
    } // namespace

    // Not std::thread::detach: where this compiler's runtime detaches a thread that is just ending, it may lose the
    // next one, which then never runs.
    void StartOwnThread(Body body)
    {
        auto kept = std::make_unique<Body>(std::move(body));
        HANDLE const thread = CreateThread(nullptr, 0, Run, kept.get(), 0, nullptr);
        if (!thread)
        {
            throw std::system_error(std::make_error_code(std::errc::resource_unavailable_try_again));
        }
        (void)kept.release(); // the thread's now
        CloseHandle(thread);
    }
} // namespace host
