#pragma once

#include "host/Failure.h"
#include "interface/Vorlink.h"

#include <chrono>
#include <functional>
#include <optional>
#include <string>
#include <variant>

namespace host
{
    using Clock = std::chrono::steady_clock;

    struct UnpairReport
    {
        bool success;
    };

    // How far an operation of the library has come.
    struct Progressed
    {
        bool returned = false;
        std::optional<std::variant<PairReport, UnpairReport, Failure>> answer;
    };

    // The three that answer by a callback. Each runs on a thread of its own, for it may block without limit; what its
    // callback says is WaitForProgress's. The thread may stay behind: the process has to end without waiting for it.
    void BeginPairing(Vorlink& vorlink, std::string const& name);
    void BeginUnpairing(Vorlink& vorlink, std::string const& name);
    void BeginPhonePairing(Vorlink& vorlink, std::string const& name);

    // Of the operation that was begun last; waits a moment for news.
    Progressed WaitForProgress();
} // namespace host
