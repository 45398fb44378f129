#include "simulator/neighbourhood/WatcherRun.h"

#include "simulator/neighbourhood/RadioSwitch.h"

#include <algorithm>

namespace simulator
{
    namespace
    {
        using platform::DeviceWatcherStatus;

        void Plan(WatcherRun& run, std::chrono::milliseconds at, Task task)
        {
            if (at == std::chrono::milliseconds(0))
            {
                run.tasks.push_back(std::move(task));
                return;
            }
            run.schedule.push_back({Clock::now() + at, std::move(task)});
        }

        void PlanEndpoint(WatcherRun& run, Neighbour const& neighbour)
        {
            auto const& [endpoint, inRange, sensed] = neighbour;
            run.seen.insert({endpoint.id, {.properties = endpoint.properties, .unfiltered = endpoint.unfiltered}});
            if (inRange.value_or(endpoint.appearsAtMs != never))
            {
                Plan(run, std::chrono::milliseconds(inRange ? 0 : endpoint.appearsAtMs),
                     Happening{endpoint.id, true, {}});
            }
            if (!inRange && endpoint.leavesAtMs != never)
            {
                Plan(run, std::chrono::milliseconds(endpoint.leavesAtMs), Happening{endpoint.id, false, {}});
            }
            if (endpoint.repeatsAtMs != never)
            {
                Plan(run, std::chrono::milliseconds(endpoint.repeatsAtMs), Happening{.id = endpoint.id, .again = true});
            }
            for (auto const& change : endpoint.changes)
            {
                Plan(run, std::chrono::milliseconds(change.atMs),
                     Happening{endpoint.id, std::nullopt, {{change.property, change.value}}});
            }
        }

        // While the radio is off the platform still knows the devices that are paired.
        void PlanFromMemory(WatcherRun& run, Endpoint const& endpoint)
        {
            if (!IsTrue(endpoint.properties, isPairedProperty))
            {
                return;
            }
            auto remembered = endpoint.properties;
            remembered["System.Devices.Aep.IsPresent"] = false;
            run.seen.insert({endpoint.id, {.properties = std::move(remembered), .unfiltered = endpoint.unfiltered}});
            run.tasks.emplace_back(Happening{endpoint.id, true, {}});
        }

        // Notes the property's new value among those changed, if the watcher's devices show it.
        void Set(WatcherRun const& run, Seen& seen, std::string const& name, Value const& value, Properties& changed)
        {
            auto& known = seen.properties[name];
            if (known == value)
            {
                return;
            }
            known = value;
            auto const& shown = run.watching->shown;
            auto const same = [&name](std::string const& one) { return SamePropertyName(one, name); };
            if (auto const as = std::find_if(shown.begin(), shown.end(), same); as != shown.end())
            {
                changed[*as] = value;
            }
        }

        void Move(WatcherRun const& run, Seen& seen, bool inRange)
        {
            bool const completed = run.watching->status == DeviceWatcherStatus::EnumerationCompleted;
            seen.tooLate = inRange && !seen.inRange && completed && !run.reportsLateComers;
            seen.inRange = inRange;
        }
    } // namespace

    bool IsIdle(WatcherRun const& run, Clock::time_point now)
    {
        return run.busyThreads == 0 && !run.stop && !run.abort && !run.cutOff && !run.orphaned && run.tasks.empty() &&
               (run.schedule.empty() || run.schedule.front().due > now);
    }

    std::shared_ptr<WatcherRun> MakeRun(Neighbourhood& neighbourhood, std::shared_ptr<Watching> watching)
    {
        auto run = std::make_shared<WatcherRun>();
        run->watching = std::move(watching);
        run->generation = neighbourhood.generation;
        run->reportsLateComers = neighbourhood.scenario.appearAfterCompletion;
        run->threads = neighbourhood.scenario.eventThreads;
        run->busyThreads = run->threads;
        if (run->watching->findsEndpoints && neighbourhood.scenario.adapter.present)
        {
            bool const isOnAir = IsOnAir(neighbourhood);
            for (auto const& neighbour : neighbourhood.neighbours)
            {
                isOnAir ? PlanEndpoint(*run, neighbour) : PlanFromMemory(*run, neighbour.endpoint);
            }
        }
        if (auto const at = neighbourhood.scenario.enumerationCompletesAtMs; at != never)
        {
            Plan(*run, std::chrono::milliseconds(at), std::nullopt);
        }
        std::stable_sort(run->schedule.begin(), run->schedule.end(),
                         [](TimedTask const& left, TimedTask const& right) { return left.due < right.due; });
        neighbourhood.runs.push_back(run);
        return run;
    }

    void Tell(WatcherRun& run, Happening const& happening)
    {
        if (auto const seen = run.seen.find(happening.id); happening.inRange && seen != run.seen.end())
        {
            seen->second.moved = true;
        }
        run.tasks.emplace_back(happening);
    }

    void CompleteEnumeration(WatcherRun& run)
    {
        run.tasks.emplace_back(std::nullopt);
    }

    void Abort(WatcherRun& run)
    {
        run.abort = true;
    }

    void Silence(WatcherRun& run)
    {
        std::erase_if(run.tasks, [](Task const& task) { return task.has_value(); });
        std::erase_if(run.schedule, [](TimedTask const& timed) { return timed.task.has_value(); });
    }

    void CutOff(WatcherRun& run)
    {
        run.cutOff = true;
        run.watching->status = DeviceWatcherStatus::Aborted;
    }

    Report See(WatcherRun& run, Happening const& happening)
    {
        auto const found = run.seen.find(happening.id);
        if (found == run.seen.end())
        {
            return {};
        }
        auto& [id, seen] = *found;
        if (happening.inRange)
        {
            Move(run, seen, *happening.inRange);
            FindNeighbour(TheNeighbourhood(), id)->sensed = happening.inRange;
        }
        auto const& choices = TheNeighbourhood().scenario.choices;
        bool const completed = run.watching->status == DeviceWatcherStatus::EnumerationCompleted;
        bool const late = completed && !choices.lateEventsToAll;
        Properties changed;
        if (seen.inRange)
        {
            Set(run, seen, std::string(lastSeenProperty), Now(), changed);
        }
        for (auto const& [name, value] : happening.values)
        {
            Set(run, seen, name, value, changed);
        }
        bool const before = seen.reported;
        seen.reported =
            seen.inRange && !seen.tooLate && (seen.unfiltered || run.watching->filter.Matches(seen.properties));
        if (completed && choices.silentAfterEnumeration)
        {
            return {};
        }
        if (seen.reported && (!before || happening.again))
        {
            return {Report::Event::Added, id, seen.properties, late};
        }
        if (before && !seen.reported)
        {
            return {Report::Event::Removed, id, {}, late};
        }
        if (before && !changed.empty())
        {
            return {Report::Event::Updated, id, std::move(changed), late};
        }
        return {};
    }
} // namespace simulator
