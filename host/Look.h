#pragma once

#include "host/Interruption.h"
#include "host/Operation.h"
#include "host/Progress.h"
#include "host/Surroundings.h"

#include <functional>
#include <optional>
#include <string>

namespace host
{
    // The first device, in the order of the platform's reports, that fits; nothing when the search is complete, the
    // time is up or the user has enough. Ctrl+C ends it within a moment.
    std::optional<Seen> LookFor(Surroundings& surroundings, std::function<bool(Seen const&)> const& fits,
                                Clock::time_point end, Interruption const& interruption, Progress& progress,
                                std::string const& doing);
} // namespace host
