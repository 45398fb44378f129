// The events of one watcher object, which outlive it while a thread still needs them.
#pragma once

#include "platform/abi/Enumeration.h"
#include "simulator/com/Lifetime.h"
#include "simulator/neighbourhood/Watching.h"
#include "simulator/objects/EventSource.h"

namespace simulator
{
    struct WatcherEvents
    {
        std::shared_ptr<Lifetime> object;
        platform::DeviceInformationKind kind;
        SharedNames shown;  // the properties that its devices have
        std::string name{}; // "#1"

        EventSource<platform::AddedHandler> added{};
        EventSource<platform::UpdateHandler> updated{};
        EventSource<platform::UpdateHandler> removed{};
        EventSource<platform::WatcherHandler> enumerationCompleted{};
        EventSource<platform::WatcherHandler> stopped{};
    };

    // Makes of a report what the program sees.
    void Raise(WatcherEvents& events, std::uint64_t generation, Report const& report);

    // Lets go of the handlers, and of what they hold.
    void Clear(WatcherEvents& events);
} // namespace simulator
