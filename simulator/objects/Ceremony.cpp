#include "simulator/objects/Ceremony.h"

#include "simulator/neighbourhood/Operation.h"
#include "simulator/neighbourhood/Refusal.h"
#include "simulator/neighbourhood/Thread.h"
#include "simulator/objects/PairingRequest.h"
#include "simulator/objects/Results.h"

namespace simulator
{
    namespace
    {
        using platform::DevicePairingKinds;
        using platform::DevicePairingProtectionLevel;
        using platform::DevicePairingResultStatus;
        using platform::DeviceUnpairingResultStatus;

        constexpr auto isPaired = "System.Devices.Aep.IsPaired";

        template <typename Status>
        constexpr std::int32_t Number(Status status) noexcept
        {
            return static_cast<std::int32_t>(status);
        }

        // Asks the program: raises the event, then waits until its handlers and their deferrals are done.
        // An outcome means that this ends the ceremony.
        std::optional<Outcome> AskProgram(std::shared_ptr<Operation> const& operation, CustomPairing& custom,
                                          Ceremony const& ceremony)
        {
            auto& neighbourhood = TheNeighbourhood();
            auto const kind = static_cast<DevicePairingKinds>(ceremony.kind);
            bool const showsPin = kind == DevicePairingKinds::DisplayPin || kind == DevicePairingKinds::ConfirmPinMatch;
            auto const request =
                Make<PairingRequest>(operation, custom.Device(), kind, showsPin ? ceremony.pin : std::string());
            Raise(
                custom.PairingRequested(), operation->generation, "DeviceInformationCustomPairing.PairingRequested",
                operation->id + ", " + Text(kind), [&] { return Ref<CustomPairing>(&custom); },
                [&] { return request; });

            std::unique_lock lock(neighbourhood.mutex);
            auto const done = [&] { return operation->deferrals == 0 || operation->cancelled || operation->forced; };
            if (!done())
            {
                operation->busy = false;
                neighbourhood.changed.notify_all();
                neighbourhood.changed.wait(lock, done);
                operation->busy = true;
            }
            operation->answerable = false;
            if (operation->cancelled)
            {
                return Outcome{.cancelled = true};
            }
            if (operation->deferrals != 0)
            {
                return *operation->forced;
            }
            if (!operation->accepted)
            {
                return Outcome{.status = Number(DevicePairingResultStatus::RejectedByHandler)};
            }
            if (kind == DevicePairingKinds::ProvidePin && operation->pin != ceremony.pin)
            {
                return Outcome{.status = Number(DevicePairingResultStatus::AuthenticationFailure)};
            }
            return std::nullopt;
        }

        // The device's state follows before anyone learns the outcome, and the endpoint is free again.
        void Conclude(Operation& operation, bool took, Happening const& happening)
        {
            auto& neighbourhood = TheNeighbourhood();
            std::lock_guard const lock(neighbourhood.mutex);
            operation.ended = true;
            if (took && operation.generation == neighbourhood.generation)
            {
                Happen(neighbourhood, happening);
            }
        }

        template <typename Async, typename MakeResult>
        void Deliver(Ref<Async> async, Outcome const& outcome, MakeResult makeResult)
        {
            if (outcome.cancelled)
            {
                async->MarkCancelled();
            }
            else if (FAILED(outcome.failure))
            {
                async->Fail(outcome.failure);
            }
            else
            {
                async->Complete(makeResult());
            }
            async->FireCompleted();
        }

        // With the mutex held.
        template <typename Async>
        Ref<Async> MakeAsync(std::shared_ptr<Operation> const& operation)
        {
            auto async = Make<Async>(operation->id, [operation] {
                auto& neighbourhood = TheNeighbourhood();
                {
                    std::lock_guard const lock(neighbourhood.mutex);
                    operation->cancelled = true;
                }
                neighbourhood.changed.notify_all();
            });
            operation->cancel = [async] { async->MarkCancelled(); };
            return async;
        }

        // A caller that gets its answer at once gets it before its call returns, except when that would have
        // to wait for the program itself.
        void WaitUnlessProgramIsAwaited(Operation const& operation)
        {
            auto& neighbourhood = TheNeighbourhood();
            std::unique_lock lock(neighbourhood.mutex);
            neighbourhood.changed.wait(lock, [&] { return operation.over || !operation.busy || neighbourhood.held; });
        }

        void RunPairing(std::shared_ptr<Operation> const& operation, Ref<PairingOperation> async,
                        Ref<CustomPairing> custom, std::optional<Outcome> outcome, Ceremony const& ceremony)
        {
            if (!outcome && custom)
            {
                outcome = AskProgram(operation, *custom.Get(), ceremony);
            }
            if (!outcome)
            {
                outcome = AwaitOutcome(*operation, ceremony.status, ceremony.durationMs);
            }
            bool const paired = !outcome->cancelled && SUCCEEDED(outcome->failure) &&
                                outcome->status == Number(DevicePairingResultStatus::Paired);
            Conclude(*operation, paired, {operation->id, std::nullopt, {{isPaired, true}}});
            Deliver(std::move(async), *outcome, [&] {
                auto const used = paired ? static_cast<DevicePairingProtectionLevel>(ceremony.maxProtection)
                                         : DevicePairingProtectionLevel::None;
                return MakePairingResult(operation->id, outcome->status, used);
            });
        }

        void RunUnpairing(std::shared_ptr<Operation> const& operation, Ref<UnpairingOperation> async,
                          std::optional<Outcome> outcome, Unpairing const& unpairing)
        {
            if (!outcome)
            {
                outcome = AwaitOutcome(*operation, unpairing.status, unpairing.durationMs);
            }
            bool const unpaired = !outcome->cancelled && SUCCEEDED(outcome->failure) &&
                                  outcome->status == Number(DeviceUnpairingResultStatus::Unpaired);
            auto const inRange = unpairing.effect == UnpairEffect::Removed ? std::optional<bool>(false) : std::nullopt;
            Conclude(*operation, unpaired, {operation->id, inRange, {{isPaired, false}}});
            Deliver(std::move(async), *outcome, [&] { return MakeUnpairingResult(operation->id, outcome->status); });
        }

        template <typename Status>
        std::optional<Outcome> AsOutcome(std::optional<Status> refusal)
        {
            return refusal ? std::optional<Outcome>({.status = Number(*refusal)}) : std::nullopt;
        }
    } // namespace

    Ref<PairingOperation> Pair(PairingOrder order)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::unique_lock lock(neighbourhood.mutex);
        auto const refusal = AsOutcome(PairRefusal(neighbourhood, order));
        auto const* const neighbour = FindNeighbour(neighbourhood, order.id);
        auto const ceremony = neighbour ? neighbour->endpoint.pairing : Ceremony{};
        auto const operation = Register(neighbourhood, order.id, false);
        operation->rejected = refusal.has_value();
        operation->answerable = true;
        auto async = MakeAsync<PairingOperation>(operation);
        lock.unlock();

        OnOwnThread([=, custom = std::move(order.custom)]() mutable {
            RunPairing(operation, std::move(async), std::move(custom), refusal, ceremony);
            Deregister(operation);
        });
        if (ceremony.durationMs == 0)
        {
            WaitUnlessProgramIsAwaited(*operation);
        }
        return async;
    }

    Ref<UnpairingOperation> Unpair(std::string const& id)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::unique_lock lock(neighbourhood.mutex);
        auto const refusal = AsOutcome(UnpairRefusal(neighbourhood, id));
        auto const* const neighbour = FindNeighbour(neighbourhood, id);
        auto const unpairing = neighbour ? neighbour->endpoint.unpairing : Unpairing{};
        auto const operation = Register(neighbourhood, id, true);
        operation->rejected = refusal.has_value();
        auto async = MakeAsync<UnpairingOperation>(operation);
        lock.unlock();

        OnOwnThread([=]() mutable {
            RunUnpairing(operation, std::move(async), refusal, unpairing);
            Deregister(operation);
        });
        if (unpairing.durationMs == 0)
        {
            WaitUnlessProgramIsAwaited(*operation);
        }
        return async;
    }

    DevicePairingProtectionLevel HighestProtection(std::string const& id)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        auto const* const neighbour = FindNeighbour(neighbourhood, id);
        return neighbour ? static_cast<DevicePairingProtectionLevel>(neighbour->endpoint.pairing.maxProtection)
                         : DevicePairingProtectionLevel::None;
    }
} // namespace simulator
