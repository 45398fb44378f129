#pragma once

#include "host/Interruption.h"
#include "host/Operation.h"
#include "host/Session.h"

#include <chrono>
#include <functional>
#include <string>

namespace host
{
    enum class SearchEnd
    {
        Complete, // the library has ended it by itself
        Enough,   // the name's taker has; the library searches on
        TimeLimit,
        Interrupted, // by Ctrl+C or Ctrl+Break
    };

    // Takes the name of a device that the library has reported, in UTF-8; false when that is enough.
    using NameCallback = std::function<bool(std::string const& name)>;

    using ElapsedCallback = std::function<void(std::chrono::seconds elapsed)>;

    // Has the library search for phones, until `end` at most. Calls both on the caller's thread, `progress` many times
    // a second. Throws what the library does. Once a process.
    SearchEnd SearchPhones(Session& session, Interruption const& interruption, Clock::time_point end,
                           NameCallback const& takeName, ElapsedCallback const& progress);

    // Whether the search, which may go on beside a pairing, has reported a name that imitates records of the log.
    bool HasSeenImitation();
} // namespace host
