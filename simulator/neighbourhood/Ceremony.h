// Pairing and unpairing as they happen, from the request to the outcome.
#pragma once

#include "simulator/neighbourhood/Operation.h"
#include "simulator/neighbourhood/Refusal.h"

namespace simulator
{
    // What an operation tells whoever began it. Called with no lock held: `cancel` by a reset, ahead of the end and
    // perhaps while another runs, `end` on the operation's own thread, `ask` there or on a further one.
    struct OperationListener
    {
        std::function<void()> cancel{};

        // The device's state follows the outcome already.
        std::function<void(Outcome const& outcome, platform::DevicePairingProtectionLevel used)> end;

        // The device asks: Accept() or Defer() before this returns. Without it nobody need be asked.
        std::function<void(platform::DevicePairingKinds kind, std::string const& pin)> ask{};
    };

    // The operation is over when they return for an endpoint that answers at once (a duration of 0), unless
    // the program's handler keeps it waiting.
    void StartPairing(std::shared_ptr<Operation> const& operation, PairingOrder const& order,
                      OperationListener listener);
    void StartUnpairing(std::shared_ptr<Operation> const& operation, OperationListener listener);

    // Ends on a thread of its own when its time has passed or it is finished, and perhaps before this returns.
    void StartErrand(std::shared_ptr<Operation> const& operation, std::int32_t durationMs, OperationListener listener);

    platform::DevicePairingProtectionLevel HighestProtection(std::string const& id);
} // namespace simulator
