// The threads of a watcher's run: each takes what is due and raises what follows from it.
#include "simulator/neighbourhood/WatcherRun.h"
#include "simulator/objects/DeviceInformation.h"
#include "simulator/objects/DeviceUpdate.h"

#include <algorithm>

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

        // The first task that need not wait for what the other threads are at; the end where all have to. An
        // endpoint's tasks wait for its events, the completion for those of all.
        std::deque<Task>::iterator Startable(WatcherRun& run)
        {
            auto const first = run.tasks.begin();
            for (auto task = first; task != run.tasks.end(); ++task)
            {
                if (!*task)
                {
                    return task == first && run.raising.empty() ? task : run.tasks.end();
                }
                if (std::ranges::find(run.raising, (*task)->id) == run.raising.end())
                {
                    return task;
                }
            }
            return run.tasks.end();
        }

        void WaitForTask(std::unique_lock<std::mutex>& lock, WatcherRun& run)
        {
            auto& changed = TheNeighbourhood().changed;
            if (--run.busyThreads == 0)
            {
                changed.notify_all();
            }
            auto const cameFirst = [&] { return IsOver(run) || Startable(run) != run.tasks.end(); };
            if (run.schedule.empty())
            {
                changed.wait(lock, cameFirst);
            }
            else
            {
                auto const due = run.schedule.front().due; // it may be gone before the wait is over
                changed.wait_until(lock, due, cameFirst);
            }
            ++run.busyThreads;
        }

        // Null when the run is over.
        std::optional<Task> NextTask(std::unique_lock<std::mutex>& lock, WatcherRun& run)
        {
            while (!IsOver(run))
            {
                TakeDue(run);
                if (auto const first = Startable(run); first != run.tasks.end())
                {
                    auto task = std::move(*first);
                    run.tasks.erase(first);
                    return task;
                }
                WaitForTask(lock, run);
            }
            return std::nullopt;
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
            TheNeighbourhood().changed.notify_all(); // what came behind it need not wait for its handlers
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
            run->raising.push_back(report.id);
            lock.unlock();
            RaiseReport(*run, report);
            lock.lock();
            std::erase(run->raising, report.id);
        }
        if (--run->threads > 0)
        {
            return; // others still have handlers to come back from
        }
        End(lock, *run);
        std::erase(neighbourhood.runs, run);
        neighbourhood.changed.notify_all();
    }
} // namespace simulator
