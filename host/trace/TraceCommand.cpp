// vorlinkctl trace: what a program asked of the simulated platform, beside what the library logged meanwhile.
#include "host/Commands.h"
#include "host/LongFile.h"
#include "host/Terminal.h"
#include "host/Text.h"
#include "host/log/LogOutput.h"
#include "host/page/PageFile.h"
#include "host/trace/TraceListing.h"
#include "host/trace/TracePage.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <variant>
#include <vector>

namespace host
{
    namespace
    {
        struct Options
        {
            OutputOptions output;
            std::string file;
            std::string log; // empty: the usual one, if it is there
            std::string page;
        };

        constexpr char usualLog[] = "log.log";

        // As many as a browser takes without pausing for long.
        constexpr std::size_t mostLines = 200'000;

        std::string Counted(std::size_t count, std::string const& word)
        {
            return std::to_string(count) + " " + word + (count == 1 ? "" : "s");
        }

        template <typename Field>
        Json OrNull(std::optional<Field> const& field)
        {
            return field ? Json(*field) : Json();
        }

        Json ToJson(PlatformLine const& line)
        {
            return {{"event", "trace"},
                    {"time", line.time},
                    {"ms", static_cast<double>(line.us) / 1000},
                    {"utc", line.utc},
                    {"process", line.process},
                    {"number", line.number},
                    {"thread", line.thread},
                    {"kind", line.isEvent ? "event" : "call"},
                    {"name", line.name},
                    {"object", OrNull(line.object)},
                    {"arguments", line.arguments},
                    {"result", OrNull(line.result)},
                    {"hresult", OrNull(line.code)},
                    {"us", OrNull(line.took)}};
        }

        std::string JsonOf(PlatformLine const& line)
        {
            return ToJson(line).dump(-1, ' ', false, Json::error_handler_t::replace) + "\n";
        }

        // What the journal has found out of each record, in the log's order.
        std::vector<LogEntry> Entries(LogContents const& log)
        {
            LogJournal journal;
            std::vector<LogEntry> entries;
            entries.reserve(log.Size());
            for (std::size_t at = 0; at < log.Size(); ++at)
            {
                entries.push_back(journal.Take(log.Read(at)));
            }
            return entries;
        }

        void TellGarbage(TraceContents const& trace, Options const& options)
        {
            constexpr std::size_t most = 10;
            auto const& garbage = trace.Garbage();
            for (std::size_t at = 0; at < std::min(garbage.size(), most); ++at)
            {
                PrintError("vorlinkctl: " + Harmless(options.file) + ":" + std::to_string(garbage[at]) +
                           ": no line of a trace; skipped.\n");
            }
            if (garbage.size() > most)
            {
                PrintError("vorlinkctl: " + std::to_string(garbage.size() - most) + " more such lines.\n");
            }
        }

        std::string Summary(TraceContents const& trace, std::size_t records, Options const& options,
                            std::string const& log)
        {
            if (trace.Size() == 0)
            {
                return Harmless(options.file) + ": an empty trace; nothing was asked of the simulated platform.";
            }
            auto text = Harmless(options.file) + ": " + Counted(trace.Size(), "line");
            text += trace.Processes() > 1 ? " of " + std::to_string(trace.Processes()) + " processes" : "";
            text += trace.Failures() > 0 ? ", " + Counted(trace.Failures(), "failure") : "";
            text += log.empty() ? "" : "; " + Harmless(log) + ": " + Counted(records, "record") + " of that time";
            return text + ".";
        }

        using Progress = std::function<void(char const* doing, double part)>;

        void PrintMoments(TraceContents const& trace, LogContents const& log, std::vector<Moment> const& moments,
                          bool json, Progress const& progress)
        {
            auto const layout = LayoutOfOutput();
            auto const entries = json ? Entries(log) : std::vector<LogEntry>();
            auto const start = moments.empty() ? 0 : moments.front().us;
            Output output;
            if (!json && !moments.empty())
            {
                auto const& first = moments.front();
                auto const time = first.isRecord ? log.Read(first.index).time : trace.Read(first.index).time;
                output.Add("\n" + layout.paint(LogTone::Faint, time + ", and seconds since then") + "\n");
            }
            for (std::size_t at = 0; at < moments.size(); ++at)
            {
                auto const& [us, index, isRecord] = moments[at];
                auto const text = isRecord ? (json ? JsonLine(log.Read(index), entries[index])
                                                   : ListLogRecord(log.Read(index), start, layout))
                                  : json   ? JsonOf(trace.Read(index))
                                           : ListPlatformLine(trace.Read(index), start, trace.Processes() > 1, layout);
                if (output.Add(text))
                {
                    progress("Printing", static_cast<double>(at) / static_cast<double>(moments.size()));
                }
            }
        }

        ExitCode WritePage(TraceContents const& trace, LogContents const& log, std::vector<Moment> const& moments,
                           Options const& options, std::string const& logName)
        {
            auto const left = moments.size() - std::min(moments.size(), mostLines);
            bool const written = WritePageFile(options.page, [&](std::string const& nonce, PageWriter const& write) {
                WriteTracePage(trace, log, moments, left, {options.file, logName}, nonce, write);
            });
            if (!written)
            {
                return ExitCode::Failed;
            }
            Print("Wrote " + Harmless(options.page) +
                  (left == 0 ? ".\n"
                             : " with the last " + std::to_string(mostLines) + " lines; it lacks " +
                                   std::to_string(left) + " older ones.\n"));
            return ExitCode::Done;
        }

        ExitCode RunTrace(Options const& options)
        {
            for (auto const& [file, whose] :
                 {std::pair(options.file, "trace"), std::pair(options.log.empty() ? usualLog : options.log, "log")})
            {
                if (IsSameFile(file, options.page))
                {
                    return Refuse(ExitCode::Usage, std::string("the page would take the ") + whose + "'s place.");
                }
            }
            auto const logName = !options.log.empty() ? options.log : FileExists(usualLog) ? usualLog : std::string();
            auto traceText =
                ReadLongFile(options.file, "A program on the simulated platform leaves its trace in the file "
                                           "that the environment variable VORLINK_SIMULATOR_TRACE names.");
            if (auto const* const refusal = std::get_if<ExitCode>(&traceText))
            {
                return *refusal;
            }
            std::variant<std::string, ExitCode> logText;
            if (!logName.empty())
            {
                logText = ReadLongFile(logName, "");
            }
            if (auto const* const refusal = std::get_if<ExitCode>(&logText))
            {
                return *refusal;
            }
            ReadingProgress progress(options.file, options.output.quiet);
            auto const show = [&](char const* doing, double part) { progress.Show(doing, part); };
            auto const size = static_cast<double>(std::get<std::string>(traceText).size());
            TraceContents const trace(std::get<std::string>(std::move(traceText)),
                                      [&](std::size_t bytes) { show("Reading", static_cast<double>(bytes) / size); });
            LogContents const log(std::get<std::string>(std::move(logText)));
            auto const moments = MergeByTime(trace, log);
            TellGarbage(trace, options);
            if (options.output.json)
            {
                PrintMoments(trace, log, moments, true, show);
                return ExitCode::Done;
            }
            if (!options.page.empty())
            {
                return WritePage(trace, log, moments, options, logName);
            }
            Print(ListSummary(Summary(trace, moments.size() - trace.Size(), options, logName), LayoutOfOutput()));
            PrintMoments(trace, log, moments, false, show);
            return ExitCode::Done;
        }
    } // namespace

    void AddTrace(CLI::App& app, Action& chosen)
    {
        auto const command = AddSubcommand<Options>(
            app, chosen, "trace",
            "Shows a trace of the simulated platform: its calls and events, and the library's log between them",
            RunTrace);
        auto& options = command.options;
        command.app.add_option("FILE", options.file, "The trace")->option_text(" ")->required();
        command.app.add_option("--log", options.log, "The library's log; log.log in this folder unless given")
            ->option_text("FILE");
        command.app
            .add_option("--html", options.page,
                        "Write a page for a browser to this file: both on one time line, to filter and search")
            ->option_text("FILE")
            ->excludes("--json");
        SetFooter(command.app, {"trace trace.jsonl", "trace trace.jsonl --log C:\\host\\log.log --html trace.html"},
                  "A program leaves its trace in the file that the environment variable VORLINK_SIMULATOR_TRACE names, "
                  "where the simulated platform answers it. Ends with 3 when there is no such file.");
    }
} // namespace host
