// The two that are compared, as the rows use them: a pairing is begun and brought to its end.
#pragma once

#include "bench/BareClient.h"
#include "bench/Comparison.h"

#include <cstdint>
#include <functional>

namespace bench
{
    using Client = std::function<void(std::int64_t index)>; // finds the endpoint and asks for its pairing

    Client LibraryClient();
    Client PlainClient(BareClient::Reading reading = BareClient::Reading::Nothing);

    struct Course
    {
        Clock::time_point begun;     // the client was called
        Clock::time_point event;     // only while events are stamped
        Clock::time_point request;   // the platform was asked to pair
        Clock::time_point completed; // the platform told the client how it ended
        Clock::time_point reported;  // the client told its host
    };

    // One pairing, which the endpoint refuses: a success would set the library to learn the device's other side.
    Course Pair(Client const& client, std::int64_t index);
} // namespace bench
