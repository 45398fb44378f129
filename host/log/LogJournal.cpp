#include "host/log/LogJournal.h"

#include <algorithm>

namespace host
{
    namespace
    {
        bool IsRequest(LogFlow flow)
        {
            return flow == LogFlow::Pair || flow == LogFlow::Unpair;
        }
    } // namespace

    LogEntry LogJournal::Take(Record const& record)
    {
        LogEntry entry;
        if (record.time.empty())
        {
            return entry;
        }
        if (m_lastTime)
        {
            entry.inLog = record.milliseconds - *m_lastTime;
        }
        m_lastTime = record.milliseconds;
        entry.step = FindLogStep(record);
        if (!entry.step)
        {
            return entry;
        }
        entry.flow = FlowOf(*entry.step);
        auto const& current = CurrentOf(entry.flow);
        entry.begins = MustBegin(*entry.step, record, current);
        if (entry.begins)
        {
            Begin(entry.flow, *entry.step, record);
        }
        else if (!current.open)
        {
            return entry;
        }
        else
        {
            entry.inRun = record.milliseconds - m_runs[current.run].last;
        }
        entry.run = current.run;
        Continue(*entry.step, record, m_runs[current.run]);
        return entry;
    }

    std::vector<LogRun> const& LogJournal::Runs() const
    {
        return m_runs;
    }

    void LogJournal::Finish()
    {
        for (auto const flow : {LogFlow::Pair, LogFlow::Unpair, LogFlow::Phones, LogFlow::Learn})
        {
            LimitRuns(flow, m_lastTime.value_or(0));
        }
    }

    LogJournal::Current& LogJournal::CurrentOf(LogFlow flow)
    {
        return m_current.at(static_cast<std::size_t>(flow));
    }

    // A search is the one of the latest request.
    LogFlow LogJournal::FlowOf(LogStep const& step) const
    {
        bool const isOn = m_current.at(static_cast<std::size_t>(m_lastRequest)).open;
        return step.flow == LogFlow::Search && isOn ? m_lastRequest : step.flow;
    }

    bool LogJournal::MustBegin(LogStep const& step, Record const& record, Current const& current) const
    {
        if (step.part == LogPart::Begins || (step.part == LogPart::BeginsRow && current.step != &step))
        {
            return true;
        }
        // The beginning of what is under way may be missing, as that of a search for phones always is.
        return step.part != LogPart::Joins && (!current.open || IsAnother(step.flow, record, current));
    }

    // A host may have ended without an end of its search; the next search begins with the device that this one began
    // with.
    bool LogJournal::IsAnother(LogFlow flow, Record const& record, Current const& current) const
    {
        auto const& run = m_runs[current.run];
        auto const longest = TraitsOf(flow).longestMs;
        bool const isRepeated = flow == LogFlow::Phones && record.message == current.firstMessage;
        return (longest != 0 && record.milliseconds - run.begin > longest + logGapMs) ||
               (isRepeated && record.milliseconds - run.last >= logGapMs);
    }

    void LogJournal::Begin(LogFlow flow, LogStep const& step, Record const& record)
    {
        LimitRuns(flow, record.milliseconds);
        if (IsRequest(flow))
        {
            m_lastRequest = flow;
            for (auto const other : {LogFlow::Pair, LogFlow::Unpair, LogFlow::Learn})
            {
                LimitRuns(other, record.milliseconds);
            }
        }
        auto const texts = LogTexts(step, record.message);
        auto const name = step.name == 0 ? std::string() : FillIn("\"{" + std::to_string(step.name) + "}\"", texts);
        if (flow == LogFlow::Pair)
        {
            m_pairedName = name;
        }
        auto const& known = flow == LogFlow::Learn ? m_pairedName : name;
        std::string const title = TraitsOf(flow).title;
        m_runs.push_back({flow,
                          title + (known.empty() ? "" : " of " + known),
                          LogEnd::None,
                          {},
                          record.milliseconds,
                          record.milliseconds,
                          record.milliseconds});
        CurrentOf(flow) = {m_runs.size() - 1, nullptr, true, record.message};
    }

    void LogJournal::Continue(LogStep const& step, Record const& record, LogRun& run)
    {
        run.longestGap = std::max(run.longestGap, record.milliseconds - run.last);
        run.last = record.milliseconds;
        run.until = run.last;
        ++run.records;
        auto& current = CurrentOf(run.flow);
        current.step = &step;
        if (step.outcome)
        {
            run.end = step.part == LogPart::Fails ? LogEnd::Bad : LogEnd::Good;
            run.outcome = FillIn(step.outcome, LogTexts(step, record.message));
            current.open = step.part == LogPart::Settles;
        }
    }

    // A host asks for nothing else before it has its answer, so a request ends what has no end.
    void LogJournal::LimitRuns(LogFlow flow, std::int64_t time)
    {
        auto const& current = CurrentOf(flow);
        if (!current.open || m_runs[current.run].end != LogEnd::None)
        {
            return;
        }
        auto& run = m_runs[current.run];
        auto const longest = TraitsOf(flow).longestMs;
        auto const latest = longest == 0 ? time : std::min(time, run.begin + longest);
        if (run.until == run.last)
        {
            run.until = std::max(run.last, latest);
        }
    }

    std::string DescribeEnd(LogRun const& run)
    {
        if (run.end == LogEnd::None)
        {
            return "no end is logged" +
                   (run.until > run.begin ? " within " + DescribeDuration(run.until - run.begin) : std::string());
        }
        return run.outcome + " after " + DescribeDuration(run.last - run.begin);
    }

    std::string DescribeDuration(std::int64_t milliseconds)
    {
        if (milliseconds < 0)
        {
            return "-" + DescribeDuration(-milliseconds);
        }
        auto const seconds = milliseconds / 1000;
        auto const text = [](std::int64_t number) { return std::to_string(number); };
        if (seconds == 0)
        {
            return text(milliseconds) + " ms";
        }
        if (seconds < 60)
        {
            return text(seconds) + "." + text(milliseconds % 1000 / 100) + " s";
        }
        if (seconds < 3600)
        {
            return text(seconds / 60) + " min " + text(seconds % 60) + " s";
        }
        if (seconds < 86'400)
        {
            return text(seconds / 3600) + " h " + text(seconds % 3600 / 60) + " min";
        }
        return text(seconds / 86'400) + " d " + text(seconds % 86'400 / 3600) + " h";
    }
} // namespace host
