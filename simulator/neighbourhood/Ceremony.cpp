#include "simulator/neighbourhood/Ceremony.h"

#include "simulator/neighbourhood/RadioSwitch.h"
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
        std::optional<Outcome> AskProgram(std::shared_ptr<Operation> const& operation,
                                          OperationListener const& listener, Ceremony const& ceremony,
                                          Choices const& choices)
        {
            auto const kind = static_cast<DevicePairingKinds>(ceremony.kind);
            bool const showsPin = kind == DevicePairingKinds::DisplayPin || kind == DevicePairingKinds::ConfirmPinMatch;
            auto const ask = [asking = listener.ask, kind, pin = showsPin ? ceremony.pin : std::string()] {
                asking(kind, pin);
            };
            if (ceremony.answerWithinMs == never)
            {
                ask();
            }
            else // a device that does not wait for ever does not wait for the handler's return either
            {
                Defer(*operation);
                OnOwnThread([operation, ask] {
                    ask();
                    EndDeferral(*operation);
                });
            }
            if (auto const outcome = AwaitAnswer(*operation, ceremony.answerWithinMs))
            {
                return outcome;
            }
            if (!operation->accepted)
            {
                return Outcome{.status = Number(DevicePairingResultStatus::RejectedByHandler)};
            }
            if (kind == DevicePairingKinds::ProvidePin && operation->pin != ceremony.pin)
            {
                return Outcome{.status = choices.wrongPinStatus};
            }
            return std::nullopt;
        }

        // The device's own word, unless it has left meanwhile. A verb's stands.
        Outcome AwaitDevice(Operation& operation, Ceremony const& ceremony)
        {
            auto const outcome = AwaitOutcome(operation, ceremony.status, ceremony.durationMs);
            auto& neighbourhood = TheNeighbourhood();
            std::lock_guard const lock(neighbourhood.mutex);
            auto const* const neighbour = FindNeighbour(neighbourhood, operation.id);
            if (operation.forced || outcome.cancelled)
            {
                return outcome;
            }
            if (neighbour && !IsInRange(*neighbour))
            {
                return {.status = neighbourhood.scenario.choices.outOfRangeStatus};
            }
            return {.status = outcome.status, .failure = ceremony.failure};
        }

        // The values of a device that has become paired, or no longer is. With the mutex held.
        std::vector<std::pair<std::string, Value>> ValuesOf(Neighbourhood& neighbourhood, std::string const& id,
                                                            bool paired)
        {
            auto const* const neighbour = FindNeighbour(neighbourhood, id);
            return neighbour ? PairingValues(neighbour->endpoint, neighbourhood.scenario.choices, paired)
                             : std::vector<std::pair<std::string, Value>>();
        }

        // The device's state follows before anyone learns the outcome, and the endpoint is free again.
        void Conclude(Operation& operation, bool took, bool paired, std::optional<bool> inRange)
        {
            auto& neighbourhood = TheNeighbourhood();
            std::lock_guard const lock(neighbourhood.mutex);
            operation.ended = true;
            if (took && operation.generation == neighbourhood.generation)
            {
                Happen(neighbourhood, {operation.id, inRange, ValuesOf(neighbourhood, operation.id, paired)});
            }
        }

        // The system takes its time to notice.
        void LetGoLater(std::string const& id, std::optional<bool> inRange, std::int32_t staleMs)
        {
            auto const letGo = [id, inRange](Outcome const& outcome, DevicePairingProtectionLevel) {
                auto& neighbourhood = TheNeighbourhood();
                std::lock_guard const lock(neighbourhood.mutex);
                if (!outcome.cancelled)
                {
                    Happen(neighbourhood, {id, inRange, ValuesOf(neighbourhood, id, false)});
                }
            };
            StartErrand(MakeErrand(), staleMs, {.end = letGo});
        }

        // A caller that gets its answer at once gets it before its call returns, except when that would have
        // to wait for the program itself: a handler may well wait for the caller.
        void WaitUnlessProgramIsAwaited(Operation const& operation)
        {
            auto& neighbourhood = TheNeighbourhood();
            std::unique_lock lock(neighbourhood.mutex);
            constexpr std::chrono::seconds longest(1);
            neighbourhood.changed.wait_for(lock, longest,
                                           [&] { return operation.over || !operation.busy || neighbourhood.held; });
        }

        void RunPairing(std::shared_ptr<Operation> const& operation, OperationListener const& listener,
                        std::optional<Outcome> outcome, Ceremony const& ceremony, Choices const& choices)
        {
            if (!outcome && listener.ask)
            {
                outcome = AskProgram(operation, listener, ceremony, choices);
            }
            if (!outcome)
            {
                if (ceremony.radioOff)
                {
                    SwitchRadioOff(operation->generation);
                }
                outcome = AwaitDevice(*operation, ceremony);
            }
            bool const paired = Succeeded(*outcome, Number(DevicePairingResultStatus::Paired));
            Conclude(*operation, paired, true, std::nullopt);
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
            Conclude(operation, unpaired && unpairing.staleMs == 0, false, inRange);
            if (unpaired && unpairing.staleMs > 0)
            {
                LetGoLater(operation.id, inRange, unpairing.staleMs);
            }
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
        auto const choices = neighbourhood.scenario.choices;
        operation->answerable = true;
        operation->occupies = !refusal;
        Begin(neighbourhood, operation, listener);
        lock.unlock();

        OnThreadOf(operation, std::move(listener),
                   [operation, refusal, ceremony, choices](Operation&, OperationListener const& told) {
                       RunPairing(operation, told, refusal, ceremony, choices);
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
