#include "simulator/objects/AsyncOperation.h"

#include <atomic>

namespace simulator
{
    UINT32 NextOperationNumber() noexcept
    {
        static constinit std::atomic<UINT32> last{0};
        return ++last;
    }
} // namespace simulator
