#include "simulator/objects/PairingOperations.h"

#include "simulator/neighbourhood/Ceremony.h"
#include "simulator/objects/PairingRequest.h"
#include "simulator/objects/Results.h"

namespace simulator
{
    namespace
    {
        using platform::DevicePairingKinds;
        using platform::DevicePairingProtectionLevel;

        template <typename Async, typename MakeResult>
        void Deliver(Async& async, Outcome const& outcome, MakeResult makeResult)
        {
            if (outcome.cancelled)
            {
                async.MarkCancelled();
            }
            else if (FAILED(outcome.failure))
            {
                async.Fail(outcome.failure);
            }
            else
            {
                async.Complete(makeResult());
            }
            async.FireCompleted();
        }

        template <typename Async>
        Ref<Async> MakeAsync(std::shared_ptr<Operation> const& operation)
        {
            return Make<Async>(operation->id, [operation] { Cancel(*operation); });
        }

        OperationListener ListenerOf(std::string const& id, Ref<PairingOperation> const& async)
        {
            return {[async] { async->MarkCancelled(); },
                    [id, async](Outcome const& outcome, DevicePairingProtectionLevel used) {
                        Deliver(*async.Get(), outcome, [&] { return MakePairingResult(id, outcome.status, used); });
                    }};
        }

        void Ask(std::shared_ptr<Operation> const& operation, CustomPairing& custom, DevicePairingKinds kind,
                 std::string const& pin)
        {
            auto const request = Make<PairingRequest>(operation, custom.Device(), kind, pin);
            Raise(
                custom.PairingRequested(), operation->generation, "DeviceInformationCustomPairing.PairingRequested",
                operation->id + ", " + Text(kind), [&] { return Ref<CustomPairing>(&custom); },
                [&] { return Ref(request); });
        }
    } // namespace

    Ref<PairingOperation> Pair(std::string const& id, DevicePairingProtectionLevel least)
    {
        auto const operation = MakePairing(id);
        auto async = MakeAsync<PairingOperation>(operation);
        StartPairing(operation, {least}, ListenerOf(id, async));
        return async;
    }

    Ref<PairingOperation> Pair(Ref<CustomPairing> custom, DevicePairingProtectionLevel least,
                               DevicePairingKinds offered)
    {
        auto const operation = MakePairing(custom->Device().Id());
        auto async = MakeAsync<PairingOperation>(operation);
        auto const answers = custom->PairingRequested().IsEmpty() ? DevicePairingKinds::None : offered;
        auto listener = ListenerOf(operation->id, async);
        listener.ask = [operation, custom](DevicePairingKinds kind, std::string const& pin) {
            Ask(operation, *custom.Get(), kind, pin);
        };
        StartPairing(operation, {least, answers}, std::move(listener));
        return async;
    }

    Ref<UnpairingOperation> Unpair(std::string const& id)
    {
        auto const operation = MakeUnpairing(id);
        auto async = MakeAsync<UnpairingOperation>(operation);
        StartUnpairing(operation, {[async] { async->MarkCancelled(); },
                                   [id, async](Outcome const& outcome, DevicePairingProtectionLevel) {
                                       Deliver(*async.Get(), outcome,
                                               [&] { return MakeUnpairingResult(id, outcome.status); });
                                   }});
        return async;
    }
} // namespace simulator
