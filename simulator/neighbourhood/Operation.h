// A pairing, an unpairing or an errand that is under way: where it stands, what it waits for. An errand is whatever
// else the platform does in its own time, looking up a device say.
#pragma once

#include "simulator/neighbourhood/Neighbourhood.h"

#include <functional>

namespace simulator
{
    // How an operation ends: with a status, unless it fails or is cancelled.
    struct Outcome
    {
        std::int32_t status = 0;
        std::int32_t failure = 0; // a negative HRESULT
        bool cancelled = false;
    };

    bool Succeeded(Outcome const& outcome, std::int32_t status);

    // Guarded by the neighbourhood's mutex; driven by a thread of its own.
    struct Operation
    {
        std::uint64_t generation = 0;
        std::string id;
        bool unpairing = false;
        bool occupies = true;         // the endpoint: not what was refused before the endpoint was asked, nor an errand
        std::function<void()> cancel; // told by a reset, ahead of the end

        bool busy = true;   // false while it waits: for its time, a deferral, a verb
        bool ended = false; // the endpoint is free again
        bool over = false;  // and the caller knows
        bool cancelled = false;
        std::optional<Clock::time_point> due;
        std::optional<Outcome> forced; // by a verb, or by the errand's work

        // The program's answer to the request. Deferrals count while they are open.
        bool answerable = false;
        bool accepted = false;
        std::string pin;
        std::uint32_t deferrals = 0;
    };

    bool IsIdle(Operation const& operation, Clock::time_point now);

    // The operation that occupies an endpoint, with the mutex held; null when it is free.
    std::shared_ptr<Operation> Occupying(Neighbourhood const& neighbourhood, std::string_view id);

    std::shared_ptr<Operation> MakePairing(std::string const& id);
    std::shared_ptr<Operation> MakeUnpairing(std::string const& id);
    std::shared_ptr<Operation> MakeErrand();

    // With the mutex held: the neighbourhood knows it from now on.
    void Register(Neighbourhood& neighbourhood, std::shared_ptr<Operation> const& operation);

    // Takes it off the neighbourhood's list, at the very end: whoever waits for idleness finds nothing left.
    void Deregister(std::shared_ptr<Operation> const& operation);

    // Waits for the operation's time to pass, or for a verb or a cancellation to come first.
    Outcome AwaitOutcome(Operation& operation, std::int32_t status, std::int32_t durationMs);

    // Waits until the program has answered and its deferrals are done, or its time for that is up. Null when nothing
    // but the answer counts.
    std::optional<Outcome> AwaitAnswer(Operation& operation, std::int32_t withinMs);

    // By the program. An answer that comes too late, or a second one, changes nothing.
    void Cancel(Operation& operation);
    void Accept(Operation& operation, std::string pin);
    bool Defer(Operation& operation); // false: too late
    void EndDeferral(Operation& operation);

    // By whoever does the errand's work, which may be done at any time. Only the first outcome counts.
    void FinishErrand(Operation& operation, Outcome outcome = {});

    // From a verb: false when the endpoint has no such operation.
    bool ForceOutcome(std::string_view id, bool unpairing, Outcome outcome);
} // namespace simulator
