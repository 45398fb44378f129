// How many of the platform's objects live, once those have gone that are on their way.
#pragma once

#include "simulator/VorlinkSimulator.h"
#include "tests/support/Patience.h"

#include <cstdint>

namespace test
{
    // A callback comes while its caller still holds what it took: waits until no more than `count` objects live.
    inline bool LiveObjectsFallTo(std::uint32_t count)
    {
        return WaitUntil([count] { return SimulatorLiveObjects() <= count; });
    }
} // namespace test
