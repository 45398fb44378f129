// When the platform's own calls and events come by. Taken at the simulator's methods, for whichever client is measured.
#pragma once

#include "bench/Comparison.h"

namespace bench
{
    struct Stamps
    {
        Clock::time_point event;     // the latest Added, as it is handed to its handler
        Clock::time_point request;   // the latest PairAsync, as it is called
        Clock::time_point completed; // the latest completion of one, as it is handed to its handler
    };

    // The methods are replaced by the first call, which needs a scenario with an endpoint in range. Events are stamped
    // only while `Events` lives: that goes between the platform and a handler.
    Stamps const& TheStamps();

    class Events
    {
    public:
        Events();
        Events(Events const&) = delete;
        Events& operator=(Events const&) = delete;
        ~Events();
    };
} // namespace bench
