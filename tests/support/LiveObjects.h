// How many of the platform's objects live, once those have gone that are on their way.
#pragma once

#include "simulator/VorlinkSimulator.h"
#include "tests/support/Patience.h"

#include <chrono>
#include <cstdint>
#include <thread>

namespace test
{
    // A callback comes while its caller still holds what it took: waits until no more than `count` objects live.
    inline bool LiveObjectsFallTo(std::uint32_t count)
    {
        auto const end = std::chrono::steady_clock::now() + patience;
        while (SimulatorLiveObjects() > count)
        {
            if (std::chrono::steady_clock::now() > end)
            {
                return false;
            }
            std::this_thread::yield();
        }
        return true;
    }
} // namespace test
