#include "host/trace/TraceListing.h"

#include "host/Text.h"

#include <cstdio>
#include <utility>

namespace host
{
    namespace
    {
        constexpr std::size_t narrow = 60; // below which what stands before a text has a line of its own

        // "     0.317412"; the log tells whole milliseconds.
        std::string Since(std::int64_t us, bool exact)
        {
            char text[48];
            std::snprintf(text, sizeof text, exact ? "%13.6f" : "%10.3f   ", static_cast<double>(us) / 1e6);
            return text;
        }

        std::string ListLine(std::string const& since, std::string const& who, std::string const& text, LogTone tone,
                             std::string const& behind, LogLayout const& layout)
        {
            char padded[48];
            std::snprintf(padded, sizeof padded, "%-6s", who.c_str());
            auto const head = since + "  " + padded + "  ";
            bool const isNarrow = layout.columns != 0 && layout.columns < narrow;
            std::size_t const indent = isNarrow ? 4 : head.size();
            return layout.paint(LogTone::Faint, head) + (isNarrow ? "\n    " : "") +
                   Wrapped(text, indent, tone, layout) +
                   (behind.empty() ? "" : "  " + layout.paint(LogTone::Faint, behind)) + "\n";
        }
    } // namespace

    std::string WithShortIdentifiers(std::string text)
    {
        constexpr std::size_t address = 17;
        for (auto const& [prefix, protocol] :
             {std::pair<std::string_view, char const*>{"Bluetooth#Bluetooth", "Classic "},
              {"BluetoothLE#BluetoothLE", "LE "}})
        {
            auto at = text.find(prefix);
            while (at != std::string::npos)
            {
                auto const dash = at + prefix.size() + address;
                bool const isOne = dash + address < text.size() && text[dash] == '-';
                text.replace(at, isOne ? dash + 1 - at : 0, isOne ? protocol : "");
                at = text.find(prefix, at + 1);
            }
        }
        return text;
    }

    std::string DescribePlatformLine(PlatformLine const& line)
    {
        auto text = line.name + "(" + line.object.value_or("");
        text += (line.object && !line.arguments.empty() ? ", " : "") + line.arguments + ")";
        text += line.Failed() ? " -> " + *line.code : line.result ? " -> " + *line.result : "";
        return Harmless(WithShortIdentifiers(text));
    }

    std::string DescribeMicroseconds(std::int64_t microseconds)
    {
        if (microseconds < 1000)
        {
            return std::to_string(microseconds) + " µs";
        }
        char text[48];
        bool const isLong = microseconds >= 1'000'000;
        std::snprintf(text, sizeof text, isLong ? "%.3f s" : "%.3f ms",
                      static_cast<double>(microseconds) / (isLong ? 1e6 : 1e3));
        return text;
    }

    std::string ListPlatformLine(PlatformLine const& line, std::int64_t start, bool severalProcesses,
                                 LogLayout const& layout)
    {
        auto const who = (severalProcesses ? std::to_string(line.process) + "/" : "") + std::to_string(line.thread);
        auto const tone = line.Failed() ? LogTone::Bad : line.isEvent ? LogTone::Pair : LogTone::Plain;
        return ListLine(Since(line.us - start, true), who, (line.isEvent ? "! " : "") + DescribePlatformLine(line),
                        tone, line.took ? DescribeMicroseconds(*line.took) : "", layout);
    }

    std::string ListLogRecord(Record const& record, std::int64_t start, LogLayout const& layout)
    {
        auto const* const step = FindLogStep(record);
        auto const meaning = step ? FillIn(step->meaning, LogTexts(*step, record.message)) : std::string();
        return ListLine(Since(record.milliseconds * 1000 - start, false), "log",
                        ShownLogMessage(record.message) + (meaning.empty() ? "" : "  = " + meaning), LogTone::Learn, {},
                        layout);
    }
} // namespace host
