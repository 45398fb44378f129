// The simulated neighbourhood: the endpoints, who watches them, what is under way. What a program holds stands on
// it; whoever watches or pairs hands in a function, and is told in the neighbourhood's own words what has happened.
#pragma once

#include "simulator/scenario/Scenario.h"

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace simulator
{
    struct WatcherRun;
    struct Operation;
    struct Subscription;

    using Clock = std::chrono::steady_clock;

    // An endpoint as it is now. A watcher's own times decide whether it is in range until a verb does.
    struct Neighbour
    {
        Endpoint endpoint;
        std::optional<bool> inRange;
        std::optional<bool> sensed{}; // by the watcher that saw it come or go last
    };

    // Something that happens to an endpoint, at once for everyone or in its time for one watcher.
    struct Happening
    {
        std::string id;
        std::optional<bool> inRange{};
        std::vector<std::pair<std::string, Value>> values{};
        bool remembered = false; // it is not in range: the platform knows it from before
        bool again = false;      // whoever has reported it reports it as added once more
    };

    // One mutex guards all of it, and every Watching, WatcherRun and Operation besides. It is never held while a
    // function that was handed in runs. `changed` tells of everything that anyone may wait for.
    struct Neighbourhood
    {
        std::mutex mutex;
        std::condition_variable changed;
        std::uint64_t generation = 1; // counts resets: what an earlier generation began raises nothing more
        std::string fault;            // why the first scenario could not be loaded
        bool held = false;
        std::uint32_t watchersMade = 0;
        Scenario scenario{};               // its endpoints have become the neighbours
        std::vector<Neighbour> neighbours; // in the scenario's order; none comes or goes before a restart
        std::unordered_map<std::string_view, Neighbour*> neighboursById;
        std::vector<std::shared_ptr<WatcherRun>> runs;
        std::vector<std::shared_ptr<Operation>> operations;
        std::unordered_multimap<std::string, std::shared_ptr<Subscription>> subscriptions; // by subject
        std::size_t telling = 0; // of these are being told something
    };

    // Made at first use, with the first scenario; never destroyed.
    Neighbourhood& TheNeighbourhood();

    bool IsInRange(Neighbour const& neighbour);

    Neighbour* FindNeighbour(Neighbourhood& neighbourhood, std::string_view id);

    // With the mutex held: changes the endpoint, and every started watcher hears of it.
    void Happen(Neighbourhood& neighbourhood, Happening const& happening);

    // Everything back to the beginning of a scenario, or of the first one.
    void Restart(Scenario scenario);
    void RestartWithFirstScenario();

    void HoldEvents(bool hold);
    bool WaitIdle(std::chrono::milliseconds limit);

    // Waits while events are held, and for as long as they take; false when the generation is over.
    bool PassGate(std::uint64_t generation);
} // namespace simulator
