#include "simulator/neighbourhood/Operation.h"

#include <algorithm>

namespace simulator
{
    bool IsIdle(Operation const& operation, Clock::time_point now)
    {
        return !operation.busy && !operation.cancelled && !operation.forced && (!operation.due || *operation.due > now);
    }

    std::shared_ptr<Operation> Occupying(Neighbourhood const& neighbourhood, std::string_view id)
    {
        for (auto const& operation : neighbourhood.operations)
        {
            if (operation->id == id && !operation->rejected && !operation->ended && !operation->cancelled)
            {
                return operation;
            }
        }
        return nullptr;
    }

    std::shared_ptr<Operation> Register(Neighbourhood& neighbourhood, std::string id, bool unpairing)
    {
        auto operation = std::make_shared<Operation>();
        operation->generation = neighbourhood.generation;
        operation->id = std::move(id);
        operation->unpairing = unpairing;
        neighbourhood.operations.push_back(operation);
        return operation;
    }

    Outcome AwaitOutcome(Operation& operation, std::int32_t status, std::int32_t durationMs)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::unique_lock lock(neighbourhood.mutex);
        if (durationMs != never)
        {
            operation.due = Clock::now() + std::chrono::milliseconds(durationMs);
        }
        for (;;)
        {
            if (operation.cancelled)
            {
                return {.cancelled = true};
            }
            if (operation.forced)
            {
                return *operation.forced;
            }
            if (operation.due && *operation.due <= Clock::now())
            {
                return {.status = status};
            }
            operation.busy = false;
            neighbourhood.changed.notify_all();
            auto const cameFirst = [&] { return operation.cancelled || operation.forced; };
            if (operation.due)
            {
                neighbourhood.changed.wait_until(lock, *operation.due, cameFirst);
            }
            else
            {
                neighbourhood.changed.wait(lock, cameFirst);
            }
            operation.busy = true;
        }
    }

    void Deregister(std::shared_ptr<Operation> const& operation)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::function<void()> cancel; // holds the asynchronous operation, which is not released under the lock
        {
            std::lock_guard const lock(neighbourhood.mutex);
            std::swap(cancel, operation->cancel);
        }
        cancel = nullptr;
        {
            std::lock_guard const lock(neighbourhood.mutex);
            operation->over = true;
            std::erase(neighbourhood.operations, operation);
        }
        neighbourhood.changed.notify_all();
    }

    bool ForceOutcome(std::string_view id, bool unpairing, Outcome outcome)
    {
        auto& neighbourhood = TheNeighbourhood();
        {
            std::lock_guard const lock(neighbourhood.mutex);
            auto const operation = Occupying(neighbourhood, id);
            if (!operation || operation->unpairing != unpairing || operation->forced)
            {
                return false;
            }
            operation->forced = outcome;
        }
        neighbourhood.changed.notify_all();
        return true;
    }
} // namespace simulator
