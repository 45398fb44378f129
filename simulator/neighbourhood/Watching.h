// One watcher of a program: what it looks for, where it stands, who hears of what it sees.
#pragma once

#include "platform/abi/EnumerationValues.h"
#include "simulator/neighbourhood/Neighbourhood.h"
#include "simulator/query/Aqs.h"

#include <functional>

namespace simulator
{
    struct Report
    {
        enum class Event
        {
            None,
            Added,
            Updated,
            Removed,
            EnumerationCompleted,
            Stopped,
        };
        Event event = Event::None;
        std::string id{};       // the device's: the endpoint's, where it is one
        SharedProperties all{}; // Added
        Properties changed{};   // Updated: of those that the watcher shows
        bool late = false;      // after the enumeration: for those who hear of Added, Updated and Removed
        bool quiet = false;     // the program does not hear of it
    };

    // Called on threads of the simulator, with no lock held. Reports of an earlier generation come to nothing.
    using Listener = std::function<void(std::uint64_t generation, Report const& report)>;

    struct Watching
    {
        Query filter;
        SharedNames shown; // the properties that its devices have
        platform::DeviceInformationKind kind;
        Listener listener;

        // Guarded by the neighbourhood's mutex.
        std::uint32_t number = 0; // the first one made has 1
        platform::DeviceWatcherStatus status = platform::DeviceWatcherStatus::Created;
        std::uint64_t generation = 0;
        std::shared_ptr<WatcherRun> run{};
    };

    // From a new watcher's construction to the moment that the program lets go of it, which it may do on any thread
    // and while the watcher runs.
    void Enter(Watching& watching);
    void Leave(Watching& watching);

    platform::DeviceWatcherStatus StatusOf(Watching const& watching);

    enum class WatchAnswer
    {
        Done,
        WrongStatus, // for a start, or a stop, to make sense
        Outdated,    // it belongs to a neighbourhood that is no more
        BlankFilter, // accepted until the watcher is to start
    };

    WatchAnswer Start(std::shared_ptr<Watching> const& watching);
    WatchAnswer Stop(Watching& watching);
} // namespace simulator
