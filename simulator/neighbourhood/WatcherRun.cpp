#include "simulator/neighbourhood/WatcherRun.h"

#include "simulator/neighbourhood/Facet.h"
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

        void PlanComingAndGoing(WatcherRun& run, Neighbour const& neighbour)
        {
            auto const& [endpoint, inRange, sensed] = neighbour;
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
        }

        void Replace(Seen& seen, std::string const& name, Value const& value)
        {
            auto properties = std::make_shared<Properties>(*seen.properties);
            properties->insert_or_assign(name, value);
            seen.properties = std::move(properties);
        }

        // The device comes at once, and is said not to be there.
        void Remember(WatcherRun& run, Seen& seen, std::string const& id)
        {
            if (run.watching->kind == platform::DeviceInformationKind::AssociationEndpoint)
            {
                Replace(seen, std::string(isPresentProperty), false);
            }
            Plan(run, std::chrono::milliseconds(0), Happening{.id = id, .remembered = true});
        }

        // While the radio is off the platform still knows the devices that are paired.
        void PlanEndpoint(WatcherRun& run, Neighbour const& neighbour, bool isOnAir)
        {
            auto const& endpoint = neighbour.endpoint;
            auto facet = FacetOf(endpoint, run.watching->kind);
            bool const paired = IsTrue(endpoint.properties, isPairedProperty);
            if (!facet || (!isOnAir && !paired))
            {
                return;
            }
            auto& seen = run.seen
                             .insert({endpoint.id,
                                      {.id = std::move(facet->id),
                                       .properties = std::make_shared<Properties>(std::move(facet->properties)),
                                       .paired = paired,
                                       .unfiltered = endpoint.unfiltered}})
                             .first->second;
            if (NeedsPairing(run.watching->kind))
            {
                Plan(run, std::chrono::milliseconds(0), Happening{.id = endpoint.id});
            }
            else if (isOnAir)
            {
                if (paired && TheNeighbourhood().scenario.choices.pairedOutOfRange && !IsInRange(neighbour))
                {
                    Remember(run, seen, endpoint.id);
                }
                PlanComingAndGoing(run, neighbour);
            }
            else
            {
                Remember(run, seen, endpoint.id);
                return;
            }
            for (auto const& change : endpoint.changes)
            {
                Plan(run, std::chrono::milliseconds(change.atMs),
                     Happening{endpoint.id, std::nullopt, {{change.property, change.value}}});
            }
        }

        // What the PC makes of an endpoint has its name, and properties of its own beside.
        bool Follows(WatcherRun const& run, std::string_view property)
        {
            return run.watching->kind == platform::DeviceInformationKind::AssociationEndpoint ||
                   SamePropertyName(property, "System.ItemNameDisplay");
        }

        // Notes the property's new value among those changed, if the watcher's devices show it.
        void Set(WatcherRun const& run, Seen& seen, std::string const& name, Value const& value, Properties& changed)
        {
            if (SamePropertyName(name, isPairedProperty))
            {
                seen.paired = value == Value(true);
            }
            if (!Follows(run, name))
            {
                return;
            }
            auto const known = seen.properties->find(name);
            if ((known == seen.properties->end() ? Value() : known->second) == value)
            {
                return;
            }
            Replace(seen, name, value);
            auto const& shown = *run.watching->shown;
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
        // Threads share the work by endpoints, of which other devices may have several.
        run->threads = run->watching->kind == platform::DeviceInformationKind::AssociationEndpoint
                           ? neighbourhood.scenario.eventThreads
                           : 1;
        run->busyThreads = run->threads;
        if (neighbourhood.scenario.adapter.present)
        {
            bool const isOnAir = IsOnAir(neighbourhood);
            for (auto const& neighbour : neighbourhood.neighbours)
            {
                PlanEndpoint(*run, neighbour, isOnAir);
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
        if (!run.silenced)
        {
            run.tasks.emplace_back(happening);
        }
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
        run.silenced = true;
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
        auto& seen = found->second;
        auto const& choices = TheNeighbourhood().scenario.choices;
        Properties changed;
        if (happening.inRange)
        {
            Move(run, seen, *happening.inRange);
            FindNeighbour(TheNeighbourhood(), happening.id)->sensed = happening.inRange;
            if (choices.pairedOutOfRange)
            {
                Set(run, seen, std::string(isPresentProperty), *happening.inRange, changed);
            }
        }
        seen.remembered = seen.remembered || happening.remembered;
        bool const completed = run.watching->status == DeviceWatcherStatus::EnumerationCompleted;
        bool const late = completed && !choices.lateEventsToAll;
        if (seen.inRange)
        {
            Set(run, seen, std::string(lastSeenProperty), Now(), changed);
        }
        for (auto const& [name, value] : happening.values)
        {
            Set(run, seen, name, value, changed);
        }
        auto& parts = run.reported[seen.id];
        bool const before = parts > 0;
        parts -= seen.reported ? 1 : 0;
        bool const isRemembered = seen.paired && (seen.remembered || choices.pairedOutOfRange);
        bool const there =
            NeedsPairing(run.watching->kind) ? seen.paired : isRemembered || (seen.inRange && !seen.tooLate);
        seen.reported = there && (seen.unfiltered || run.watching->filter.Matches(*seen.properties));
        parts += seen.reported ? 1 : 0;
        if (completed && choices.silentAfterEnumeration)
        {
            return {};
        }
        if (seen.reported && (!before || happening.again))
        {
            return {.event = Report::Event::Added, .id = seen.id, .all = seen.properties, .late = late};
        }
        if (before && parts == 0)
        {
            return {.event = Report::Event::Removed, .id = seen.id, .late = late};
        }
        if (seen.reported && before && !changed.empty())
        {
            return {.event = Report::Event::Updated, .id = seen.id, .changed = std::move(changed), .late = late};
        }
        return {};
    }
} // namespace simulator
