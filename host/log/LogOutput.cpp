#include "host/log/LogOutput.h"

#include "host/Terminal.h"
#include "host/Text.h"
#include "host/log/LogText.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <string_view>

namespace host
{
    namespace
    {
        std::string Paint(LogTone tone, std::string_view text)
        {
            // In the order of the enumeration, which begins with the plain one.
            constexpr Colour colours[] = {Colour::Faint, Colour::Caution, Colour::Bad,   Colour::Good,
                                          Colour::Bad,   Colour::Caution, Colour::First, Colour::Second,
                                          Colour::Third, Colour::Fourth,  Colour::Bold,  Colour::Faint};
            return tone == LogTone::Plain ? std::string(text) : Coloured(colours[static_cast<int>(tone) - 1], text);
        }

        std::string Counted(std::size_t count, std::string const& word)
        {
            return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
        }

        std::string Summary(LogContents const& contents, std::string const& name)
        {
            auto const& runs = contents.Runs();
            auto const open = std::ranges::count(runs, LogEnd::None, &LogRun::end);
            return Harmless(name) + ": " + Counted(contents.Size(), "record") + " in " + Counted(runs.size(), "run") +
                   (open == 0 ? "" : ", " + std::to_string(open) + " of them without an end");
        }

        void AddBlock(Output& output, LogContents const& contents, LogBlock const& block, LogLayout const& layout)
        {
            auto const* const run = block.run == noLogRun ? nullptr : &contents.Runs()[block.run];
            std::optional<std::int64_t> before;
            output.Add(run ? "" : "\n" + layout.paint(LogTone::Faint, "Of no run") + "\n");
            for (auto const place : block.records)
            {
                auto const record = contents.Read(place);
                auto const* const step = FindLogStep(record);
                bool const hasTime = !record.time.empty();
                auto const flow = run ? run->flow : step ? step->flow : LogFlow::Other;
                auto const since =
                    hasTime && before ? std::optional(record.milliseconds - *before) : std::optional<std::int64_t>();
                output.Add(run && !before ? ListHeading(*run, record.time, true, layout) : "");
                output.Add(ListRecord({record, step, flow, since, run ? run->longestGap : 0}, layout));
                before = hasTime ? std::optional(record.milliseconds) : std::nullopt;
            }
        }
    } // namespace

    Output::~Output()
    {
        Print(m_text);
    }

    bool Output::Add(std::string_view text)
    {
        constexpr std::size_t enough = 262'144;
        m_text += text;
        if (m_text.size() < enough)
        {
            return false;
        }
        Print(m_text);
        m_text.clear();
        return true;
    }

    LogLayout LayoutOfOutput()
    {
        return {OutputIsConsole() ? OutputColumns() : 0, Paint};
    }

    std::string JsonLine(Record const& record, LogEntry const& entry)
    {
        bool const hasTime = !record.time.empty();
        Json json;
        json["event"] = "record";
        json["time"] = hasTime ? Json(record.time) : Json();
        json["ms"] = hasTime ? Json(record.milliseconds) : Json();
        json["since_ms"] = entry.inLog ? Json(*entry.inLog) : Json();
        json["line"] = hasTime ? Json(record.line) : Json();
        json["function"] = hasTime ? Json(record.function) : Json();
        json["flow"] = TraitsOf(entry.flow).word;
        json["run"] = entry.run == noLogRun ? Json() : Json(entry.run + 1);
        json["message"] = record.message;
        json["meaning"] =
            entry.step ? Json(FillIn(entry.step->meaning, LogTexts(*entry.step, record.message))) : Json();
        return json.dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
    }

    void PrintLog(LogContents const& contents, std::string const& name, LogProgress const& progress)
    {
        auto const layout = LayoutOfOutput();
        Output output;
        output.Add(ListSummary(Summary(contents, name), layout));
        std::size_t printed = 0;
        for (auto const& block : contents.Blocks())
        {
            AddBlock(output, contents, block, layout);
            printed += block.records.size();
            progress(static_cast<double>(printed) / static_cast<double>(contents.Size()));
        }
    }

    void PrintLogAsJson(std::string_view text, LogProgress const& progress)
    {
        LogJournal journal;
        Output output;
        for (auto rest = text; !rest.empty();)
        {
            auto const records = ReadRecords(TakeRecordText(rest, true));
            if (output.Add(JsonLine(records.front(), journal.Take(records.front()))))
            {
                progress(1 - static_cast<double>(rest.size()) / static_cast<double>(text.size()));
            }
        }
    }
} // namespace host
