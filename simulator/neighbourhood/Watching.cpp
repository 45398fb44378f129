#include "simulator/neighbourhood/Watching.h"

#include "simulator/neighbourhood/RadioSwitch.h"
#include "simulator/neighbourhood/Thread.h"
#include "simulator/neighbourhood/WatcherRun.h"

namespace simulator
{
    using platform::DeviceWatcherStatus;

    void Enter(Watching& watching)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        watching.generation = neighbourhood.generation;
        watching.number = ++neighbourhood.watchersMade;
    }

    // The run's threads end by themselves, and the caller's may well be one of them.
    void Leave(Watching& watching)
    {
        auto& neighbourhood = TheNeighbourhood();
        {
            std::lock_guard const lock(neighbourhood.mutex);
            if (watching.run)
            {
                watching.run->orphaned = true;
            }
        }
        neighbourhood.changed.notify_all();
    }

    DeviceWatcherStatus StatusOf(Watching const& watching)
    {
        std::lock_guard const lock(TheNeighbourhood().mutex);
        return watching.status;
    }

    WatchAnswer Start(std::shared_ptr<Watching> const& watching)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::unique_lock lock(neighbourhood.mutex);
        if (watching->generation != neighbourhood.generation)
        {
            return WatchAnswer::Outdated;
        }
        auto const status = watching->status;
        if (status != DeviceWatcherStatus::Created && status != DeviceWatcherStatus::Stopped &&
            status != DeviceWatcherStatus::Aborted)
        {
            return WatchAnswer::WrongStatus;
        }
        if (watching->filter.IsBlank())
        {
            return WatchAnswer::BlankFilter;
        }
        watching->status = DeviceWatcherStatus::Started;
        watching->run = MakeRun(neighbourhood, watching);
        auto const run = watching->run;
        auto const threads = run->threads;
        auto const offAfterMs = neighbourhood.scenario.radio.offAfterMs;
        lock.unlock();
        for (std::int32_t thread = 0; thread < threads; ++thread)
        {
            OnOwnThread([run] { Watch(run); });
        }
        if (offAfterMs != never)
        {
            SwitchRadioOffLater(run->generation, offAfterMs);
        }
        return WatchAnswer::Done;
    }

    // An aborted watcher has stopped already: one more stop changes nothing.
    WatchAnswer Stop(Watching& watching)
    {
        auto& neighbourhood = TheNeighbourhood();
        {
            std::lock_guard const lock(neighbourhood.mutex);
            if (watching.status == DeviceWatcherStatus::Aborted)
            {
                return WatchAnswer::Done;
            }
            if (watching.status != DeviceWatcherStatus::Started &&
                watching.status != DeviceWatcherStatus::EnumerationCompleted)
            {
                return WatchAnswer::WrongStatus;
            }
            watching.status = DeviceWatcherStatus::Stopping;
            watching.run->stop = true;
        }
        neighbourhood.changed.notify_all();
        return WatchAnswer::Done;
    }
} // namespace simulator
