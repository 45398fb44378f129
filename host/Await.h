#pragma once

#include "host/Interruption.h"
#include "host/Operation.h"
#include "host/Progress.h"
#include "host/Session.h"

#include <functional>
#include <string>

namespace host
{
    enum class Ending
    {
        Answered,
        Silent, // it has returned, and nothing will come any more
        TimeLimit,
        Interrupted,
    };

    struct Awaited
    {
        Ending ending;
        Progressed progressed;
    };

    struct Waiting
    {
        Clock::time_point start;
        Clock::time_point end;
        std::string finding; // "Looking for a device"
        std::string working; // "Pairing a device"
    };

    // Waits for the answer of the operation that was begun last, and keeps the session's log read. `isSilent`: whether
    // an operation that has returned without an answer will never give one.
    Awaited Await(Session& session, Interruption const& interruption, Waiting const& waiting, Progress& progress,
                  std::function<bool()> const& isSilent);

    // Waits up to two seconds for what the library logs after it has reported.
    void AwaitRecords(Session& session, std::function<bool()> const& areThere);
} // namespace host
