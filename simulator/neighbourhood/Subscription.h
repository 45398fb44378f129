// One listener to what becomes of an endpoint, or of the radio, at once for everyone: what a device object stands on.
#pragma once

#include "simulator/neighbourhood/Neighbourhood.h"

#include <deque>
#include <functional>

namespace simulator
{
    inline constexpr std::string_view radioSubject = "radio"; // no endpoint has it for its identifier

    struct Subscription
    {
        std::string subject; // an endpoint's identifier, or the above

        // Called with what has changed, one happening after the other, on threads of the simulator with no lock held.
        std::function<void(std::uint64_t generation, Happening const& happening)> hear;

        // Guarded by the neighbourhood's mutex.
        std::uint64_t generation = 0;
        std::deque<Happening> untold{};
        bool busy = false;
    };

    // From here on it hears, until it is unsubscribed or the neighbourhood restarts. A call that is under way may
    // outlast either.
    void Subscribe(std::shared_ptr<Subscription> const& subscription);
    void Unsubscribe(std::shared_ptr<Subscription> const& subscription);

    // With the mutex held.
    void TellSubscribers(Neighbourhood& neighbourhood, Happening const& happening);
    void DropSubscriptions(Neighbourhood& neighbourhood);
} // namespace simulator
