#include "simulator/neighbourhood/Refusal.h"

#include "simulator/neighbourhood/Operation.h"

namespace simulator
{
    using platform::DevicePairingKinds;
    using platform::DevicePairingResultStatus;
    using platform::DeviceUnpairingResultStatus;

    namespace
    {
        constexpr auto isPaired = "System.Devices.Aep.IsPaired";
        constexpr auto canPair = "System.Devices.Aep.CanPair";

        bool CanAnswer(PairingOrder const& order, std::uint32_t kind)
        {
            if (!order.custom)
            {
                return kind == static_cast<std::uint32_t>(DevicePairingKinds::ConfirmOnly);
            }
            return (static_cast<std::uint32_t>(order.offered) & kind) != 0 &&
                   !order.custom->PairingRequested().IsEmpty();
        }
    } // namespace

    std::optional<DevicePairingResultStatus> PairRefusal(Neighbourhood& neighbourhood, PairingOrder const& order)
    {
        auto const* const neighbour = FindNeighbour(neighbourhood, order.id);
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
            {Occupying(neighbourhood, order.id) != nullptr, DevicePairingResultStatus::OperationAlreadyInProgress},
            {IsTrue(endpoint.properties, isPaired), DevicePairingResultStatus::AlreadyPaired},
            {!IsTrue(endpoint.properties, canPair), DevicePairingResultStatus::NotReadyToPair},
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
        if (Occupying(neighbourhood, id))
        {
            return DeviceUnpairingResultStatus::OperationAlreadyInProgress;
        }
        if (!IsTrue(neighbour->endpoint.properties, isPaired))
        {
            return DeviceUnpairingResultStatus::AlreadyUnpaired;
        }
        return std::nullopt;
    }
} // namespace simulator
