// The log's records as runs: a pairing, an unpairing, a search for phones, what is learnt after a pairing.
#pragma once

#include "host/Records.h"
#include "host/log/LogFlow.h"
#include "host/log/LogSteps.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace host
{
    enum class LogEnd
    {
        None, // none is logged
        Good,
        Bad,
    };

    // Times are those of Record::milliseconds. Texts are harmless.
    struct LogRun
    {
        LogFlow flow;
        std::string title; // Pairing of "Kitchen Speaker"
        LogEnd end = LogEnd::None;
        std::string outcome; // "Paired"; empty without an end
        std::int64_t begin;
        std::int64_t last;  // its last record's
        std::int64_t until; // the same, or, without an end, when something else shows that it was over
        std::size_t records = 0;
        std::int64_t longestGap = 0; // between two of its records
    };

    inline constexpr std::size_t noLogRun = std::numeric_limits<std::size_t>::max();

    struct LogEntry
    {
        LogFlow flow = LogFlow::Other;
        LogStep const* step = nullptr;     // null for a message that the library has not got
        std::size_t run = noLogRun;        // among the journal's
        bool begins = false;               // the run
        std::optional<std::int64_t> inLog; // milliseconds since the record before; nothing where either has no time
        std::optional<std::int64_t> inRun; // the same in the run
    };

    // Takes the records one after another. Which run a record belongs to is a guess where several are under way at
    // once: the log does not tell.
    class LogJournal
    {
    public:
        LogEntry Take(Record const& record);

        // Of those taken so far.
        std::vector<LogRun> const& Runs() const;

        // No record follows: runs without an end last until the log's end, if nothing ended them before.
        void Finish();

    private:
        // The run that is under way in a flow; none when `run` is noLogRun.
        struct Current
        {
            std::size_t run = noLogRun;
            LogStep const* step = nullptr; // of its last record
            bool open = false;             // more of it may follow
            std::string firstMessage;
        };

        Current& CurrentOf(LogFlow flow);
        LogFlow FlowOf(LogStep const& step) const;
        bool MustBegin(LogStep const& step, Record const& record, Current const& current) const;
        bool IsAnother(LogFlow flow, Record const& record, Current const& current) const;
        void Begin(LogFlow flow, LogStep const& step, Record const& record);
        void Continue(LogStep const& step, Record const& record, LogRun& run);
        void LimitRuns(LogFlow flow, std::int64_t time);

        std::vector<LogRun> m_runs;
        std::array<Current, std::size(logFlows)> m_current;
        LogFlow m_lastRequest = LogFlow::Search; // Pair or Unpair, whichever a search belongs to
        std::string m_pairedName;
        std::optional<std::int64_t> m_lastTime;
    };

    // A silence of this length in a run is worth a mark.
    inline constexpr std::int64_t logGapMs = 1000;

    // "Paired after 1.2 s", "no end is logged within 3.0 s".
    std::string DescribeEnd(LogRun const& run);

    // "3 ms", "1.2 s", "2 min 5 s", "3 h 12 min", "-3 s".
    std::string DescribeDuration(std::int64_t milliseconds);
} // namespace host
