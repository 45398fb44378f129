#pragma once

namespace vorlink
{
    // A thread's body: 3 seconds after its start, ends the run that is current then, which need not be the
    // run that started it.
    void DiscoveryTimer();
} // namespace vorlink
