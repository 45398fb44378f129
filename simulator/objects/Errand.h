// What a program gets for an errand: an operation that ends when the errand is done.
#pragma once

#include "simulator/neighbourhood/Ceremony.h"
#include "simulator/objects/AsyncOperation.h"

namespace simulator
{
    // `settle` is given the operation once `durationMs` have passed or the errand is finished, on a thread of the
    // simulator, and completes it or has it fail. It is let go of when the errand is over, however that came.
    template <typename Result, typename Settle>
    Ref<AsyncOperation<Result>> RunErrand(std::shared_ptr<Operation> const& errand, std::string subject, Settle settle,
                                          std::int32_t durationMs)
    {
        auto async = Make<AsyncOperation<Result>>(std::move(subject), [errand] { Cancel(*errand); });
        StartErrand(errand, durationMs,
                    {[async] { async->MarkCancelled(); },
                     [async, settle](Outcome const& outcome, platform::DevicePairingProtectionLevel) {
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
                             settle(*async.Get());
                         }
                         async->FireCompleted();
                     }});
        return async;
    }

    template <typename Result, typename Settle>
    Ref<AsyncOperation<Result>> RunErrand(std::string subject, Settle settle, std::int32_t durationMs = 0)
    {
        return RunErrand<Result>(MakeErrand(), std::move(subject), std::move(settle), durationMs);
    }
} // namespace simulator
