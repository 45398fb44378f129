// The radio's switch, and what falls silent with it.
#pragma once

#include "platform/abi/RadioValues.h"
#include "simulator/neighbourhood/Neighbourhood.h"

namespace simulator
{
    // With the mutex held: there is an adapter, and its radio is on.
    bool IsOnAir(Neighbourhood const& neighbourhood);

    platform::RadioState StateOfRadio();

    // Off, and in any other state but On, pairings end, connections too, and the started watchers as the scenario says.
    // On again, watchers that start from now on find what is in range. False where there is no adapter.
    bool SwitchRadio(platform::RadioState state);

    // By the scenario itself, unless its generation is over.
    void SwitchRadioOff(std::uint64_t generation);
    void SwitchRadioOffLater(std::uint64_t generation, std::int32_t afterMs);
} // namespace simulator
