#include "simulator/neighbourhood/Ceremony.h"

#include "simulator/neighbourhood/Thread.h"

namespace simulator
{
    namespace
    {
        using platform::DevicePairingKinds;
        using platform::DevicePairingProtectionLevel;
        using platform::DevicePairingResultStatus;
        using platform::DeviceUnpairingResultStatus;

        template <typename Status>
        constexpr std::int32_t Number(Status status) noexcept
        {
            return static_cast<std::int32_t>(status);
        }

        // An outcome means that this ends the ceremony.
        std::optional<Outcome> AskProgram(Operation& operation, OperationListener const& listener,
                                          Ceremony const& ceremony)
        {
            auto const kind = static_cast<DevicePairingKinds>(ceremony.kind);
            bool const showsPin = kind == DevicePairingKinds::DisplayPin || kind == DevicePairingKinds::ConfirmPinMatch;
            listener.ask(kind, showsPin ? ceremony.pin : std::string());
            if (auto const outcome = AwaitAnswer(operation))
            {
                return outcome;
            }
            if (!operation.accepted)
            {
                return Outcome{.status = Number(DevicePairingResultStatus::RejectedByHandler)};
            }
            if (kind == DevicePairingKinds::ProvidePin && operation.pin != ceremony.pin)
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

        // A caller that gets its answer at once gets it before its call returns, except when that would have
        // to wait for the program itself.
        void WaitUnlessProgramIsAwaited(Operation const& operation)
        {
            auto& neighbourhood = TheNeighbourhood();
            std::unique_lock lock(neighbourhood.mutex);
            neighbourhood.changed.wait(lock, [&] { return operation.over || !operation.busy || neighbourhood.held; });
        }

        void RunPairing(Operation& operation, OperationListener const& listener, std::optional<Outcome> outcome,
                        Ceremony const& ceremony)
        {
            if (!outcome && listener.ask)
            {
                outcome = AskProgram(operation, listener, ceremony);
            }
            if (!outcome)
            {
                outcome = AwaitOutcome(operation, ceremony.status, ceremony.durationMs);
            }
            bool const paired = Succeeded(*outcome, Number(DevicePairingResultStatus::Paired));
            Conclude(operation, paired, {operation.id, std::nullopt, {{std::string(isPairedProperty), true}}});
            listener.end(*outcome, paired ? static_cast<DevicePairingProtectionLevel>(ceremony.maxProtection)
                                          : DevicePairingProtectionLevel::None);
        }

        void RunUnpairing(Operation& operation, OperationListener const& listener, std::optional<Outcome> outcome,
                          Unpairing const& unpairing)
        {
            if (!outcome)
            {
                outcome = AwaitOutcome(operation, unpairing.status, unpairing.durationMs);
            }
            bool const unpaired = Succeeded(*outcome, Number(DeviceUnpairingResultStatus::Unpaired));
            auto const inRange = unpairing.effect == UnpairEffect::Removed ? std::optional<bool>(false) : std::nullopt;
            Conclude(operation, unpaired, {operation.id, inRange, {{std::string(isPairedProperty), false}}});
            listener.end(*outcome, DevicePairingProtectionLevel::None);
        }

        template <typename Status>
        std::optional<Outcome> AsOutcome(std::optional<Status> refusal)
        {
            return refusal ? std::optional<Outcome>({.status = Number(*refusal)}) : std::nullopt;
        }

        // With the mutex held.
        void Begin(Neighbourhood& neighbourhood, std::shared_ptr<Operation> const& operation,
                   OperationListener const& listener)
        {
            operation->cancel = listener.cancel;
            Register(neighbourhood, operation);
        }

        // What the listener holds is let go of before the operation counts as over.
        template <typename Run>
        void OnThreadOf(std::shared_ptr<Operation> const& operation, OperationListener listener, Run run)
        {
            OnOwnThread([operation, listener = std::move(listener), run = std::move(run)]() mutable {
                run(*operation, std::exchange(listener, {}));
                Deregister(operation);
            });
        }
    } // namespace

    void StartPairing(std::shared_ptr<Operation> const& operation, PairingOrder const& order,
                      OperationListener listener)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::unique_lock lock(neighbourhood.mutex);
        auto const refusal = AsOutcome(PairRefusal(neighbourhood, operation->id, order));
        auto const* const neighbour = FindNeighbour(neighbourhood, operation->id);
        auto const ceremony = neighbour ? neighbour->endpoint.pairing : Ceremony{};
        operation->answerable = true;
        operation->occupies = !refusal;
        Begin(neighbourhood, operation, listener);
        lock.unlock();

        OnThreadOf(operation, std::move(listener), [refusal, ceremony](Operation& own, OperationListener const& told) {
            RunPairing(own, told, refusal, ceremony);
        });
        if (ceremony.durationMs == 0)
        {
            WaitUnlessProgramIsAwaited(*operation);
        }
    }

    void StartUnpairing(std::shared_ptr<Operation> const& operation, OperationListener listener)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::unique_lock lock(neighbourhood.mutex);
        auto const refusal = AsOutcome(UnpairRefusal(neighbourhood, operation->id));
        auto const* const neighbour = FindNeighbour(neighbourhood, operation->id);
        auto const unpairing = neighbour ? neighbour->endpoint.unpairing : Unpairing{};
        operation->occupies = !refusal;
        Begin(neighbourhood, operation, listener);
        lock.unlock();

        OnThreadOf(operation, std::move(listener), [refusal, unpairing](Operation& own, OperationListener const& told) {
            RunUnpairing(own, told, refusal, unpairing);
        });
        if (unpairing.durationMs == 0)
        {
            WaitUnlessProgramIsAwaited(*operation);
        }
    }

    void StartErrand(std::shared_ptr<Operation> const& operation, std::int32_t durationMs, OperationListener listener)
    {
        auto& neighbourhood = TheNeighbourhood();
        {
            std::lock_guard const lock(neighbourhood.mutex);
            Begin(neighbourhood, operation, listener);
        }
        OnThreadOf(operation, std::move(listener), [durationMs](Operation& own, OperationListener const& told) {
            told.end(AwaitOutcome(own, 0, durationMs), DevicePairingProtectionLevel::None);
        });
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
