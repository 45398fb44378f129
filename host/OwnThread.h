#pragma once

#include <functional>

namespace host
{
    // Runs `body` on a thread of its own, which nobody waits for: it may stay behind when the process ends.
    void StartOwnThread(std::function<void()> body);
} // namespace host
