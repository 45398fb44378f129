#include "simulator/neighbourhood/Neighbourhood.h"

#include "simulator/neighbourhood/Operation.h"
#include "simulator/neighbourhood/RadioSwitch.h"
#include "simulator/neighbourhood/Subscription.h"
#include "simulator/neighbourhood/WatcherRun.h"
#include "simulator/scenario/FirstScenario.h"
#include "simulator/scenario/StateFile.h"

#include <algorithm>
#include <functional>

namespace simulator
{
    namespace
    {
        void Populate(Neighbourhood& neighbourhood, Scenario scenario)
        {
            neighbourhood.neighboursById.clear();
            neighbourhood.neighbours.clear();
            for (auto& endpoint : scenario.endpoints)
            {
                if (endpoint.appearsAtMs == 0)
                {
                    endpoint.properties.insert_or_assign(std::string(lastSeenProperty), Now());
                }
                neighbourhood.neighbours.push_back({std::move(endpoint), std::nullopt, std::nullopt});
            }
            for (auto& neighbour : neighbourhood.neighbours)
            {
                neighbourhood.neighboursById.insert({neighbour.endpoint.id, &neighbour});
            }
            scenario.endpoints = {};
            neighbourhood.scenario = std::move(scenario);
            for (auto& neighbour : neighbourhood.neighbours)
            {
                auto& properties = neighbour.endpoint.properties;
                if (!IsOnAir(neighbourhood) && IsTrue(properties, isConnectedProperty))
                {
                    properties[std::string(isConnectedProperty)] = false;
                }
            }
        }

        void PopulateFirst(Neighbourhood& neighbourhood, FirstScenario first)
        {
            neighbourhood.fault = std::move(first.fault);
            Populate(neighbourhood, std::move(first.scenario));
        }

        // Ends what is under way. What it returns cancels the operations, and is to be called with no lock held.
        std::vector<std::function<void()>> CutOff(Neighbourhood& neighbourhood)
        {
            ++neighbourhood.generation;
            neighbourhood.held = false;
            neighbourhood.watchersMade = 0;
            for (auto const& run : neighbourhood.runs)
            {
                CutOff(*run);
            }
            DropSubscriptions(neighbourhood);
            std::vector<std::function<void()>> cancellations;
            for (auto const& operation : neighbourhood.operations)
            {
                operation->cancelled = true;
                cancellations.push_back(operation->cancel);
            }
            return cancellations;
        }

        PairingState StateOf(Neighbourhood const& neighbourhood)
        {
            PairingState state;
            for (auto const& neighbour : neighbourhood.neighbours)
            {
                state[neighbour.endpoint.id] = IsTrue(neighbour.endpoint.properties, isPairedProperty);
            }
            return state;
        }

        template <typename Refill>
        void RestartBy(Refill refill)
        {
            auto& neighbourhood = TheNeighbourhood();
            std::vector<std::function<void()>> cancellations;
            {
                std::lock_guard const lock(neighbourhood.mutex);
                cancellations = CutOff(neighbourhood);
                refill(neighbourhood);
            }
            neighbourhood.changed.notify_all();
            for (auto const& cancel : cancellations)
            {
                if (cancel)
                {
                    cancel();
                }
            }
        }

        bool IsIdle(Neighbourhood const& neighbourhood)
        {
            auto const now = Clock::now();
            auto const& runs = neighbourhood.runs;
            auto const& operations = neighbourhood.operations;
            return neighbourhood.telling == 0 &&
                   std::all_of(runs.begin(), runs.end(), [&](auto const& run) { return IsIdle(*run, now); }) &&
                   std::all_of(operations.begin(), operations.end(),
                               [&](auto const& operation) { return IsIdle(*operation, now); });
        }
    } // namespace

    Neighbourhood& TheNeighbourhood()
    {
        static auto& neighbourhood = *[] {
            auto* const made = new Neighbourhood;
            PopulateFirst(*made, LoadFirstScenario());
            return made;
        }();
        return neighbourhood;
    }

    bool IsInRange(Neighbour const& neighbour)
    {
        return neighbour.inRange.value_or(neighbour.sensed.value_or(neighbour.endpoint.appearsAtMs == 0));
    }

    Neighbour* FindNeighbour(Neighbourhood& neighbourhood, std::string_view id)
    {
        auto const found = neighbourhood.neighboursById.find(id);
        return found == neighbourhood.neighboursById.end() ? nullptr : found->second;
    }

    void Happen(Neighbourhood& neighbourhood, Happening const& happening)
    {
        auto* const neighbour = FindNeighbour(neighbourhood, happening.id);
        if (!neighbour)
        {
            return;
        }
        if (happening.inRange)
        {
            neighbour->inRange = happening.inRange;
        }
        if (neighbour->inRange.value_or(neighbour->endpoint.appearsAtMs != never))
        {
            neighbour->endpoint.properties.insert_or_assign(std::string(lastSeenProperty), Now());
        }
        bool pairingChanged = false;
        Happening changed{.id = happening.id};
        for (auto const& [property, value] : happening.values)
        {
            auto& [name, known] = *neighbour->endpoint.properties.try_emplace(property).first;
            pairingChanged = pairingChanged || name == isPairedProperty;
            if (known != value)
            {
                known = value;
                changed.values.emplace_back(name, value);
            }
        }
        TellSubscribers(neighbourhood, changed);
        if (pairingChanged && HasStateFile())
        {
            ChangeStateFile(happening.id, StateOf(neighbourhood));
        }
        auto heard = happening;
        if (!IsOnAir(neighbourhood))
        {
            bool const paired = IsTrue(neighbour->endpoint.properties, isPairedProperty);
            heard.inRange = happening.inRange == false && !paired ? happening.inRange : std::nullopt;
            heard.again = false;
        }
        for (auto const& run : neighbourhood.runs)
        {
            Tell(*run, heard);
        }
        neighbourhood.changed.notify_all();
    }

    void Restart(Scenario scenario)
    {
        RestartBy([&](Neighbourhood& neighbourhood) {
            neighbourhood.fault.clear();
            Populate(neighbourhood, std::move(scenario));
        });
    }

    void RestartWithFirstScenario()
    {
        auto first = LoadFirstScenario();
        RestartBy([&](Neighbourhood& neighbourhood) { PopulateFirst(neighbourhood, std::move(first)); });
    }

    void HoldEvents(bool hold)
    {
        auto& neighbourhood = TheNeighbourhood();
        {
            std::lock_guard const lock(neighbourhood.mutex);
            neighbourhood.held = hold;
        }
        neighbourhood.changed.notify_all();
    }

    bool WaitIdle(std::chrono::milliseconds limit)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::unique_lock lock(neighbourhood.mutex);
        return neighbourhood.changed.wait_for(lock, limit, [&] { return IsIdle(neighbourhood); });
    }

    bool PassGate(std::uint64_t generation)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::unique_lock lock(neighbourhood.mutex);
        auto const isOver = [&] { return generation != neighbourhood.generation; };
        neighbourhood.changed.wait(lock, [&] { return !neighbourhood.held || isOver(); });
        if (auto const delay = neighbourhood.scenario.choices.eventDelayMs; delay > 0)
        {
            neighbourhood.changed.wait_for(lock, std::chrono::milliseconds(delay), isOver);
        }
        return generation == neighbourhood.generation;
    }
} // namespace simulator
