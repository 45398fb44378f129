#pragma once

#include <chrono>

namespace vorlink
{
    // Returns when `duration` has passed, and looks once a millisecond whether it has. By a clock that neither wraps
    // nor can be set.
    void WaitOut(std::chrono::seconds duration);
} // namespace vorlink
