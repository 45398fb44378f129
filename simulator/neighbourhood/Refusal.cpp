#include "simulator/neighbourhood/Refusal.h"

#include "simulator/neighbourhood/Operation.h"
#include "simulator/neighbourhood/RadioSwitch.h"

namespace simulator
{
    using platform::DevicePairingKinds;
    using platform::DevicePairingResultStatus;
    using platform::DeviceUnpairingResultStatus;

    namespace
    {
        bool CanAnswer(PairingOrder const& order, std::uint32_t kind)
        {
            return order.answers ? (static_cast<std::uint32_t>(*order.answers) & kind) != 0
                                 : kind == static_cast<std::uint32_t>(DevicePairingKinds::ConfirmOnly);
        }
    } // namespace

    std::optional<DevicePairingResultStatus> PairRefusal(Neighbourhood& neighbourhood, std::string const& id,
                                                         PairingOrder const& order)
    {
        auto const* const neighbour = FindNeighbour(neighbourhood, id);
        if (!neighbour)
        {
            return DevicePairingResultStatus::Failed;
        }
        auto const& endpoint = neighbour->endpoint;
        struct Check
        {
            bool refused;
            DevicePairingResultStatus status;
        };
        Check const checks[] = {
            {Occupying(neighbourhood, id) != nullptr, DevicePairingResultStatus::OperationAlreadyInProgress},
            {endpoint.pairing.promptOpen, DevicePairingResultStatus::OperationAlreadyInProgress},
            {IsTrue(endpoint.properties, isPairedProperty), DevicePairingResultStatus::AlreadyPaired},
            {!IsOnAir(neighbourhood), static_cast<DevicePairingResultStatus>(neighbourhood.scenario.radio.offPairing)},
            {!IsTrue(endpoint.properties, canPairProperty), DevicePairingResultStatus::NotReadyToPair},
            {!IsInRange(*neighbour),
             static_cast<DevicePairingResultStatus>(neighbourhood.scenario.choices.outOfRangeStatus)},
            {!CanAnswer(order, endpoint.pairing.kind), DevicePairingResultStatus::RequiredHandlerNotRegistered},
            {static_cast<std::int32_t>(order.least) > endpoint.pairing.maxProtection,
             DevicePairingResultStatus::ProtectionLevelCouldNotBeMet},
        };
        for (auto const& [refused, status] : checks)
        {
            if (refused)
            {
                return status;
            }
        }
        return std::nullopt;
    }

    std::optional<DeviceUnpairingResultStatus> UnpairRefusal(Neighbourhood& neighbourhood, std::string const& id)
    {
        auto const* const neighbour = FindNeighbour(neighbourhood, id);
        if (!neighbour)
        {
            return DeviceUnpairingResultStatus::Failed;
        }
        if (Occupying(neighbourhood, id) || neighbour->endpoint.pairing.promptOpen)
        {
            return DeviceUnpairingResultStatus::OperationAlreadyInProgress;
        }
        if (!IsTrue(neighbour->endpoint.properties, isPairedProperty))
        {
            return DeviceUnpairingResultStatus::AlreadyUnpaired;
        }
        return std::nullopt;
    }
} // namespace simulator
