// The simulator's threads: nobody joins them, and they wait for further work until the process ends.
#pragma once

#include <functional>

namespace simulator
{
    // On Windows it runs in the multithreaded apartment, where the platform raises its events.
    void OnOwnThread(std::function<void()> work);
} // namespace simulator
