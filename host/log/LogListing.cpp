#include "host/log/LogListing.h"

#include "host/Text.h"

#include <algorithm>

namespace host
{
    namespace
    {
        constexpr std::size_t narrow = 60; // below which the columns before a message stand on a line of their own

        constexpr std::size_t timeColumns = 12;
        constexpr std::size_t sinceColumns = 7;
        constexpr std::size_t flowColumns = 8;

        bool IsNarrow(LogLayout const& layout)
        {
            return layout.columns != 0 && layout.columns < narrow;
        }

        std::string PadLeft(std::string const& text, std::size_t columns)
        {
            return std::string(columns - std::min(columns, Columns(text)), ' ') + text;
        }

        // "+3 ms", "+1.2 s", "+2 min", "-3 h"; a gap's own line tells it exactly.
        std::string Since(std::int64_t milliseconds)
        {
            auto const text = (milliseconds < 0 ? "" : "+") + DescribeDuration(milliseconds);
            return PadLeft(text.substr(0, text.find(' ', text.find(' ') + 1)), sinceColumns);
        }

        LogTone ToneOf(LogFlow flow)
        {
            return static_cast<LogTone>(static_cast<int>(LogTone::Pair) + static_cast<int>(flow));
        }

        LogTone ToneOf(LogEnd end)
        {
            constexpr LogTone tones[] = {LogTone::Open, LogTone::Good, LogTone::Bad};
            return tones[static_cast<int>(end)];
        }

        // The beginning that fits, up to a blank if there is one in its second half.
        std::size_t SizeOfLine(std::string_view text, std::size_t columns)
        {
            constexpr std::string_view ellipsis = "…";
            if (Columns(text) <= columns)
            {
                return text.size();
            }
            auto const size = FitColumns(std::string(text) + "  ", columns + 1).size() - ellipsis.size();
            auto const blank = text.substr(0, size).find_last_of(' ');
            bool const isFar = blank != std::string_view::npos && blank > size / 2;
            return isFar ? blank + 1 : std::max<std::size_t>(size, 1);
        }
    } // namespace

    std::string Wrapped(std::string_view text, std::size_t indent, LogTone tone, LogLayout const& layout)
    {
        if (layout.columns == 0)
        {
            return layout.paint(tone, text);
        }
        auto const columns = std::max<std::size_t>(layout.columns, indent + 8) - indent;
        std::string lines;
        while (!text.empty())
        {
            auto const size = SizeOfLine(text, columns);
            lines += (lines.empty() ? "" : "\n" + std::string(indent, ' ')) + layout.paint(tone, text.substr(0, size));
            text.remove_prefix(size);
        }
        return lines;
    }

    namespace
    {
        std::string TimeOfDay(std::string const& time)
        {
            return time.substr(std::min(time.find(' ') + 1, time.size()));
        }

        std::string ListGap(LogLine const& line, std::size_t indent, LogLayout const& layout)
        {
            auto const gap = line.since.value_or(0);
            if (gap < 0)
            {
                return std::string(indent, ' ') +
                       Wrapped("~~ the clock goes back by " + DescribeDuration(-gap), indent, LogTone::LongestGap,
                               layout) +
                       "\n";
            }
            if (gap < logGapMs)
            {
                return {};
            }
            bool const isLongest = gap == line.longestGap;
            return std::string(indent, ' ') +
                   Wrapped("·· " + DescribeDuration(gap) + " of silence" + (isLongest ? ", the longest here" : ""),
                           indent, isLongest ? LogTone::LongestGap : LogTone::Gap, layout) +
                   "\n";
        }
    } // namespace

    std::string ShownLogMessage(std::string const& message)
    {
        constexpr std::size_t longest = 10'240; // that the library writes; what is longer is damage
        if (message.size() <= longest)
        {
            return Harmless(message);
        }
        return Harmless(std::string_view(message).substr(0, longest)) + " … and " +
               std::to_string(message.size() - longest) + " bytes more";
    }

    std::string ListSummary(std::string const& text, LogLayout const& layout)
    {
        return Wrapped(text, 0, LogTone::Plain, layout) + "\n";
    }

    std::string ListHeading(LogRun const& run, std::string_view time, bool ended, LogLayout const& layout)
    {
        auto const begin = std::string(time.substr(0, time.find_last_of(' ')));
        bool const isNarrow = IsNarrow(layout);
        auto const lead = layout.paint(LogTone::Faint, begin) + (isNarrow ? "\n" : "  ");
        auto const indent = isNarrow ? 0 : begin.size() + 2;
        auto const title = lead + Wrapped(run.title, indent, ToneOf(run.flow), layout);
        if (!ended)
        {
            return "\n" + title + "\n";
        }
        auto const end = DescribeEnd(run);
        auto const columns = indent + Columns(run.title) + 2 + Columns(end);
        bool const fits = layout.columns == 0 || columns <= layout.columns;
        auto heading = "\n" + title + (fits ? ": " : "\n" + std::string(indent, ' ')) +
                       Wrapped(end, indent, ToneOf(run.end), layout) + "\n";
        if (run.end != LogEnd::None)
        {
            return heading;
        }
        auto const reason = std::string("= ") + TraitsOf(run.flow).withoutEnd;
        return heading + std::string(indent, ' ') + Wrapped(reason, indent + 2, LogTone::Faint, layout) + "\n";
    }

    std::string ListEnd(LogRun const& run, LogLayout const& layout)
    {
        auto const text = run.title + ": " + DescribeEnd(run);
        return "  " + Wrapped(text, 2, ToneOf(run.end), layout) + "\n";
    }

    std::string ListRecord(LogLine const& line, LogLayout const& layout)
    {
        auto const& traits = TraitsOf(line.flow);
        bool const isNarrow = IsNarrow(layout);
        auto const time = TimeOfDay(line.record.time);
        auto const since = line.since ? Since(*line.since) : std::string();
        auto const head = PadColumns(time, timeColumns) + " " + PadColumns(since, sinceColumns) + "  ";
        auto const indent = isNarrow ? 2 : 2 + timeColumns + 1 + sinceColumns + 2 + flowColumns;
        auto const message = ShownLogMessage(line.record.message);
        auto shown = ListGap(line, isNarrow ? 0 : 2 + timeColumns + 1, layout);
        shown += isNarrow ? "" : "  ";
        shown += layout.paint(LogTone::Faint, head);
        shown += layout.paint(ToneOf(line.flow), PadColumns(traits.word, flowColumns));
        shown += isNarrow ? "\n  " : "";
        shown += Wrapped(message, indent, LogTone::Plain, layout);
        if (line.step)
        {
            auto const meaning = "= " + FillIn(line.step->meaning, LogTexts(*line.step, line.record.message));
            bool const fitsBeside =
                layout.columns == 0 || indent + Columns(message) + 2 + Columns(meaning) <= layout.columns;
            shown += fitsBeside ? "  " : "\n" + std::string(indent, ' ');
            shown += Wrapped(meaning, indent + 2, LogTone::Faint, layout);
        }
        return shown + "\n";
    }
} // namespace host
