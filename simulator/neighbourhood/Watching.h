// What belongs to one watcher object and outlives it while a thread still needs it.
#pragma once

#include "simulator/com/Lifetime.h"
#include "simulator/objects/EventSource.h"
#include "simulator/query/Aqs.h"

namespace simulator
{
    struct Watching
    {
        Query filter;
        std::vector<std::string> shown; // the properties that its devices have
        platform::DeviceInformationKind kind;
        std::string name; // "#1"
        std::shared_ptr<Lifetime> object;

        // Guarded by the neighbourhood's mutex.
        platform::DeviceWatcherStatus status = platform::DeviceWatcherStatus::Created;
        std::uint64_t generation = 0;
        std::shared_ptr<WatcherRun> run{};

        EventSource<platform::AddedHandler> added{};
        EventSource<platform::UpdateHandler> updated{};
        EventSource<platform::UpdateHandler> removed{};
        EventSource<platform::WatcherHandler> enumerationCompleted{};
        EventSource<platform::WatcherHandler> stopped{};
    };
} // namespace simulator
