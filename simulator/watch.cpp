// The thread of a watcher's run: takes what is due, raises what follows from it.
#include "simulator/device_information.h"
#include "simulator/device_update.h"
#include "simulator/watcher_run.h"

#include <map>

namespace simulator
{
    namespace
    {
        using platform::DeviceWatcherStatus;

        bool IsOver(WatcherRun const& run)
        {
            return run.stop || run.abort || run.cutOff || run.orphaned;
        }

        void TakeDue(WatcherRun& run)
        {
            auto const now = Clock::now();
            while (!run.schedule.empty() && run.schedule.front().due <= now)
            {
                run.tasks.push_back(std::move(run.schedule.front().task));
                run.schedule.pop_front();
            }
        }

        // Null when the run is over.
        std::optional<Task> NextTask(std::unique_lock<std::mutex>& lock, WatcherRun& run)
        {
            auto& neighbourhood = TheNeighbourhood();
            for (;;)
            {
                if (IsOver(run))
                {
                    return std::nullopt;
                }
                TakeDue(run);
                if (!run.tasks.empty())
                {
                    run.busy = true;
                    auto task = std::move(run.tasks.front());
                    run.tasks.pop_front();
                    return task;
                }
                if (std::exchange(run.busy, false))
                {
                    neighbourhood.changed.notify_all();
                }
                auto const cameFirst = [&] { return IsOver(run) || !run.tasks.empty(); };
                if (run.schedule.empty())
                {
                    neighbourhood.changed.wait(lock, cameFirst);
                }
                else
                {
                    neighbourhood.changed.wait_until(lock, run.schedule.front().due, cameFirst);
                }
            }
        }

        // Null once the program has let go of the watcher: there is nobody left to tell.
        Ref<platform::IDeviceWatcher> Sender(Watching const& watching)
        {
            return watching.object->TryAddRef() ? Ref<platform::IDeviceWatcher>::Adopt(
                                                      static_cast<platform::IDeviceWatcher*>(watching.object->object))
                                                : Ref<platform::IDeviceWatcher>();
        }

        template <typename Handler, typename Arguments>
        void RaiseFrom(WatcherRun const& run, EventSource<Handler>& source, std::string_view event,
                       std::string const& trace, Arguments arguments)
        {
            Raise(
                source, run.generation, event, trace, [&] { return Sender(*run.watching); }, arguments);
        }

        void RaiseReport(WatcherRun const& run, Report const& report)
        {
            auto& watching = *run.watching;
            auto const trace = watching.name + ", " + report.id;
            auto const update = [&] { return Make<DeviceUpdate>(report.id, watching.kind, report.properties); };
            switch (report.event)
            {
            case Report::Event::None:
                break;
            case Report::Event::Added:
                RaiseFrom(run, watching.added, "DeviceWatcher.Added", trace,
                          [&] { return Make<DeviceInformation>(report.id, watching.kind, report.properties); });
                break;
            case Report::Event::Updated: {
                std::vector<std::string> names;
                for (auto const& property : report.properties)
                {
                    names.push_back(property.first);
                }
                RaiseFrom(run, watching.updated, "DeviceWatcher.Updated", trace + ", " + PlainList(names), update);
                break;
            }
            case Report::Event::Removed:
                RaiseFrom(run, watching.removed, "DeviceWatcher.Removed", trace, update);
                break;
            }
        }

        void RaiseWithoutArguments(WatcherRun const& run, EventSource<platform::WatcherHandler>& source,
                                   std::string_view event)
        {
            RaiseFrom(run, source, event, run.watching->name, [] { return Ref<::IInspectable>(); });
        }

        // The status already says so when the event is raised.
        void Complete(std::unique_lock<std::mutex>& lock, WatcherRun& run)
        {
            auto& status = run.watching->status;
            if (status != DeviceWatcherStatus::Started)
            {
                return; // by a verb, before the scenario's own time
            }
            status = DeviceWatcherStatus::EnumerationCompleted;
            lock.unlock();
            RaiseWithoutArguments(run, run.watching->enumerationCompleted, "DeviceWatcher.EnumerationCompleted");
            lock.lock();
        }

        // From here on the watcher may be started again, even by a handler of its Stopped event.
        void End(std::unique_lock<std::mutex>& lock, WatcherRun& run)
        {
            auto& watching = *run.watching;
            if (!run.cutOff)
            {
                watching.status = run.stop ? DeviceWatcherStatus::Stopped : DeviceWatcherStatus::Aborted;
            }
            watching.run.reset();
            lock.unlock();
            if (!run.cutOff)
            {
                RaiseWithoutArguments(run, watching.stopped, "DeviceWatcher.Stopped");
            }
            lock.lock();
        }
    } // namespace

    void Watch(std::shared_ptr<WatcherRun> run)
    {
        auto& neighbourhood = TheNeighbourhood();
        std::unique_lock lock(neighbourhood.mutex);
        while (auto const task = NextTask(lock, *run))
        {
            if (!*task)
            {
                Complete(lock, *run);
                continue;
            }
            auto const report = See(*run, **task);
            lock.unlock();
            RaiseReport(*run, report);
            lock.lock();
        }
        End(lock, *run);
        std::erase(neighbourhood.runs, run);
        neighbourhood.changed.notify_all();
    }
} // namespace simulator
