#include "simulator/objects/AsyncOperation.h"

#include "simulator/neighbourhood/Neighbourhood.h"

#include <atomic>

namespace simulator
{
    UINT32 NextOperationNumber() noexcept
    {
        static constinit std::atomic<UINT32> last{0};
        return ++last;
    }

    bool MayAbandonOperations()
    {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        return neighbourhood.scenario.choices.earlyClose == EarlyClose::Abandoned;
    }
} // namespace simulator
