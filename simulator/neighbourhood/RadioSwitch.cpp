#include "simulator/neighbourhood/RadioSwitch.h"

#include "simulator/neighbourhood/Ceremony.h"
#include "simulator/neighbourhood/Facet.h"
#include "simulator/neighbourhood/Operation.h"
#include "simulator/neighbourhood/Subscription.h"
#include "simulator/neighbourhood/WatcherRun.h"

namespace simulator
{
    using platform::RadioState;

    namespace
    {
        void EndPairings(Neighbourhood& neighbourhood)
        {
            for (auto const& operation : neighbourhood.operations)
            {
                if (operation->occupies && !operation->unpairing && !operation->ended && !operation->forced)
                {
                    operation->forced = Outcome{.status = neighbourhood.scenario.radio.offPairing};
                }
            }
        }

        void EndConnections(Neighbourhood& neighbourhood)
        {
            for (auto const& neighbour : neighbourhood.neighbours)
            {
                if (IsTrue(neighbour.endpoint.properties, isConnectedProperty))
                {
                    Happen(neighbourhood,
                           {neighbour.endpoint.id, std::nullopt, {{std::string(isConnectedProperty), false}}});
                }
            }
        }

        void GoOffAir(Neighbourhood& neighbourhood)
        {
            for (auto const& run : neighbourhood.runs)
            {
                if (NeedsPairing(run->watching->kind))
                {
                    continue; // the device tree needs no radio
                }
                neighbourhood.scenario.radio.offAborts ? Abort(*run) : Silence(*run);
            }
            EndPairings(neighbourhood);
            EndConnections(neighbourhood);
        }

        // With the mutex held.
        bool Switch(Neighbourhood& neighbourhood, RadioState state)
        {
            auto& scenario = neighbourhood.scenario;
            if (!scenario.adapter.present)
            {
                return false;
            }
            bool const wasOnAir = IsOnAir(neighbourhood);
            auto const before = std::exchange(scenario.radio.state, static_cast<std::int32_t>(state));
            if (before == scenario.radio.state)
            {
                return true;
            }
            if (wasOnAir)
            {
                GoOffAir(neighbourhood);
            }
            TellSubscribers(neighbourhood, {.id = std::string(radioSubject)});
            neighbourhood.changed.notify_all();
            return true;
        }
    } // namespace

    bool IsOnAir(Neighbourhood const& neighbourhood)
    {
        auto const& scenario = neighbourhood.scenario;
        return scenario.adapter.present && scenario.radio.state == static_cast<std::int32_t>(RadioState::On);
    }

    RadioState StateOfRadio()
    {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        return static_cast<RadioState>(neighbourhood.scenario.radio.state);
    }

    bool SwitchRadio(RadioState state)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        return Switch(neighbourhood, state);
    }

    void SwitchRadioOff(std::uint64_t generation)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        // What the system has disabled stays so.
        if (generation == neighbourhood.generation && IsOnAir(neighbourhood))
        {
            Switch(neighbourhood, RadioState::Off);
        }
    }

    void SwitchRadioOffLater(std::uint64_t generation, std::int32_t afterMs)
    {
        StartErrand(MakeErrand(), afterMs,
                    {.end = [generation](Outcome const&, platform::DevicePairingProtectionLevel) {
                        SwitchRadioOff(generation);
                    }});
    }
} // namespace simulator
