// The pairing state on its way to the next process.
#pragma once

#include "simulator/neighbourhood/Neighbourhood.h"

namespace simulator
{
    // With the mutex held: replaces the state file by what holds now, where the environment names one. A file that
    // cannot be written is told on standard error.
    void SavePairingState(Neighbourhood const& neighbourhood);
} // namespace simulator
