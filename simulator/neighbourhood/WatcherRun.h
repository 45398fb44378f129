// One run of a watcher, from Start to Stopped: what it sees, what it has yet to do.
#pragma once

#include "simulator/neighbourhood/Neighbourhood.h"
#include "simulator/neighbourhood/Watching.h"

#include <deque>
#include <unordered_map>

namespace simulator
{
    // An endpoint as the watcher sees it.
    struct Seen
    {
        std::string id; // of the device that it is for a watcher of this kind
        SharedProperties properties;
        bool paired = false;
        bool inRange = false;
        bool remembered = false; // from before the radio was off
        bool tooLate = false;    // it came after the enumeration, in a scenario where that is not reported
        bool reported = false;
        bool unfiltered = false; // it counts as a match
        bool moved = false;      // by a verb: that replaces the scenario's times, which are passed over when due
    };

    // No happening: the enumeration completes.
    using Task = std::optional<Happening>;

    struct TimedTask
    {
        Clock::time_point due;
        Task task;
    };

    struct WatcherRun
    {
        std::shared_ptr<Watching> watching;
        std::uint64_t generation = 0;
        bool reportsLateComers = true;
        std::unordered_map<std::string, Seen> seen;             // by the endpoint's identifier
        std::unordered_map<std::string, std::int32_t> reported; // how many endpoints a reported device consists of
        std::deque<Task> tasks;                                 // due, in order
        std::deque<TimedTask> schedule;                         // by time
        std::int32_t threads = 1;                               // that take its tasks, until the run is over
        std::int32_t busyThreads = 1;                           // of these; one that has not begun yet is
        std::vector<std::string> raising;                       // endpoints whose events are on their way
        bool stop = false;
        bool abort = false;
        bool cutOff = false;   // by a reset
        bool silenced = false; // the radio is off: nothing but the completion still comes
        bool orphaned = false; // its watcher object is gone
    };

    bool IsIdle(WatcherRun const& run, Clock::time_point now);

    // All with the mutex held.
    std::shared_ptr<WatcherRun> MakeRun(Neighbourhood& neighbourhood, std::shared_ptr<Watching> watching);
    void Tell(WatcherRun& run, Happening const& happening);
    void CompleteEnumeration(WatcherRun& run);
    void Abort(WatcherRun& run);
    void Silence(WatcherRun& run); // it is still to complete, and forgets what else was to come
    void CutOff(WatcherRun& run);

    // What the watcher has to report of a happening, if anything.
    Report See(WatcherRun& run, Happening const& happening);

    // The body of each thread of the run.
    void Watch(std::shared_ptr<WatcherRun> run);
} // namespace simulator
