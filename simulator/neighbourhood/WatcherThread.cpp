// The threads of a watcher's run: each takes what is due and reports what follows from it.
#include "simulator/neighbourhood/WatcherRun.h"

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

        bool IsReplaced(WatcherRun const& run, Task const& task)
        {
            return task && task->inRange && run.seen.at(task->id).moved;
        }

        void TakeDue(WatcherRun& run)
        {
            auto const now = Clock::now();
            while (!run.schedule.empty() && run.schedule.front().due <= now)
            {
                if (auto& task = run.schedule.front().task; !IsReplaced(run, task))
                {
                    run.tasks.push_back(std::move(task));
                }
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
            run.watching->listener(run.generation, {.event = Report::Event::EnumerationCompleted});
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
            bool const quiet = !run.stop && !TheNeighbourhood().scenario.choices.stoppedAfterAbort;
            lock.unlock();
            if (!run.cutOff)
            {
                watching.listener(run.generation, {.event = Report::Event::Stopped, .quiet = quiet});
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
            if (report.event != Report::Event::None)
            {
                run->watching->listener(run->generation, report);
            }
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
