#include "simulator/neighbourhood/Operation.h"

#include "platform/abi/EnumerationValues.h"

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
            if (operation->id == id && operation->occupies && !operation->ended && !operation->cancelled)
            {
                return operation;
            }
        }
        return nullptr;
    }

    bool Succeeded(Outcome const& outcome, std::int32_t status)
    {
        return !outcome.cancelled && outcome.failure >= 0 && outcome.status == status;
    }

    std::shared_ptr<Operation> MakePairing(std::string const& id)
    {
        auto operation = std::make_shared<Operation>();
        operation->id = id;
        return operation;
    }

    std::shared_ptr<Operation> MakeUnpairing(std::string const& id)
    {
        auto operation = MakePairing(id);
        operation->unpairing = true;
        return operation;
    }

    std::shared_ptr<Operation> MakeErrand()
    {
        auto operation = std::make_shared<Operation>();
        operation->occupies = false;
        return operation;
    }

    void Register(Neighbourhood& neighbourhood, std::shared_ptr<Operation> const& operation)
    {
        operation->generation = neighbourhood.generation;
        neighbourhood.operations.push_back(operation);
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

    std::optional<Outcome> AwaitAnswer(Operation& operation, std::int32_t withinMs)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::unique_lock lock(neighbourhood.mutex);
        auto const done = [&] { return operation.deferrals == 0 || operation.cancelled || operation.forced; };
        bool inTime = true;
        if (!done())
        {
            operation.busy = false;
            neighbourhood.changed.notify_all();
            if (withinMs == never)
            {
                neighbourhood.changed.wait(lock, done);
            }
            else
            {
                auto const due = Clock::now() + std::chrono::milliseconds(withinMs);
                operation.due = due;
                inTime = neighbourhood.changed.wait_until(lock, due, done);
                operation.due.reset();
            }
            operation.busy = true;
        }
        operation.answerable = false;
        if (operation.cancelled)
        {
            return Outcome{.cancelled = true};
        }
        if (!inTime)
        {
            return Outcome{.status =
                               static_cast<std::int32_t>(platform::DevicePairingResultStatus::AuthenticationTimeout)};
        }
        return operation.deferrals == 0 ? std::nullopt : operation.forced;
    }

    void Cancel(Operation& operation)
    {
        auto& neighbourhood = TheNeighbourhood();
        {
            std::lock_guard const lock(neighbourhood.mutex);
            operation.cancelled = true;
        }
        neighbourhood.changed.notify_all();
    }

    void Accept(Operation& operation, std::string pin)
    {
        std::lock_guard const lock(TheNeighbourhood().mutex);
        if (operation.answerable && !operation.accepted)
        {
            operation.accepted = true;
            operation.pin = std::move(pin);
        }
    }

    bool Defer(Operation& operation)
    {
        std::lock_guard const lock(TheNeighbourhood().mutex);
        if (!operation.answerable)
        {
            return false;
        }
        ++operation.deferrals;
        return true;
    }

    void EndDeferral(Operation& operation)
    {
        auto& neighbourhood = TheNeighbourhood();
        {
            std::lock_guard const lock(neighbourhood.mutex);
            if (--operation.deferrals == 0)
            {
                operation.busy = true; // there is something to do for it again
            }
        }
        neighbourhood.changed.notify_all();
    }

    void FinishErrand(Operation& operation, Outcome outcome)
    {
        auto& neighbourhood = TheNeighbourhood();
        {
            std::lock_guard const lock(neighbourhood.mutex);
            if (!operation.forced)
            {
                operation.forced = outcome;
            }
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
