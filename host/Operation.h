#pragma once

#include "host/Failure.h"
#include "host/Library.h"
#include "host/Request.h"

#include <chrono>
#include <functional>
#include <optional>
#include <variant>

namespace host
{
    using Clock = std::chrono::steady_clock;

    struct UnpairReport
    {
        bool success;
    };

    // The operation has returned, and as much time has passed without an answer as one would have needed.
    struct Silence
    {
    };

    // Nothing at all when the time limit passed first.
    using Answer = std::optional<std::variant<PairReport, UnpairReport, Silence, Failure>>;

    enum class Phase
    {
        Finding,
        Working,
    };

    using ProgressCallback = std::function<void(Phase phase, std::chrono::seconds elapsed)>;

    // Asked once, when the operation has returned without an answer: how long to wait on.
    using PatienceCallback = std::function<std::chrono::milliseconds()>;

    // Pairs or unpairs on a thread of its own and waits here, for the operation may block without limit. The time is
    // counted from `start`. Calls `progress` on the caller's thread, at once and then about every second. When the time
    // runs out the thread stays behind: the process has to end without waiting for it. Once a process.
    Answer Perform(VorlinkFactory factory, Request const& request, Clock::time_point start,
                   ProgressCallback const& progress, PatienceCallback const& patience);
} // namespace host
