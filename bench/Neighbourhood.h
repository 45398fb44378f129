// The simulated neighbourhood that both clients look into.
#pragma once

#include <cstdint>
#include <string>

namespace bench
{
    // As many Classic endpoints, all in range, that agree to a pairing when they are told to.
    void LoadNeighbourhood(std::int64_t count);

    // The same, but the last one comes into range when a watcher has been running for a while, and enumeration never
    // completes.
    void LoadWaitingNeighbourhood(std::int64_t count);

    std::string NameOf(std::int64_t index);
    std::string IdentifierOf(std::int64_t index);

    // No watcher runs and no event is under way when this returns, and nothing of them is kept.
    void Settle();

    // Waits until what is under way has been delivered; throws when it takes too long.
    void WaitForEvents();
} // namespace bench
