// What a program gets for an errand: an operation that ends when the errand is done.
#pragma once

#include "simulator/neighbourhood/Ceremony.h"
#include "simulator/objects/AsyncOperation.h"

namespace simulator
{
    // `settle` is given the operation once `durationMs` have passed, on a thread of the simulator, and completes it or
    // has it fail.
    template <typename Result, typename Settle>
    Ref<AsyncOperation<Result>> RunErrand(std::string subject, Settle settle, std::int32_t durationMs = 0)
    {
        auto const errand = MakeErrand();
        auto async = Make<AsyncOperation<Result>>(std::move(subject), [errand] { Cancel(*errand); });
        StartErrand(errand, durationMs,
                    {[async] { async->MarkCancelled(); },
                     [async, settle](Outcome const& outcome, platform::DevicePairingProtectionLevel) {
                         if (outcome.cancelled)
                         {
                             async->MarkCancelled();
                         }
                         else
                         {
                             settle(*async.Get());
                         }
                         async->FireCompleted();
                     }});
        return async;
    }
} // namespace simulator
