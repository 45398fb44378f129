// The file that VORLINK_SIMULATOR_STATE names, by which the pairing state goes from one process to the next. Several
// may use it at once. What is wrong with it is told on standard error.
#pragma once

#include "simulator/scenario/PairingState.h"

namespace simulator
{
    // A faulty file leaves the endpoints as the scenario has them, and so does one that is not there.
    void ApplyStateFile(Scenario& scenario);

    // Whether a file is named at all. To say how everything is costs as much as there is, at every change.
    bool HasStateFile();

    // Notes one endpoint as it is now. The others stay as the file has them, where it names them: they may be another
    // process's. A faulty file is left as it is.
    void ChangeStateFile(std::string const& id, PairingState const& now);
} // namespace simulator
