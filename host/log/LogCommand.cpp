// vorlinkctl log: the library's log as a person wants it.
#include "host/Commands.h"
#include "host/LongFile.h"
#include "host/log/FollowLog.h"
#include "host/log/LogOutput.h"
#include "host/log/WriteLogPage.h"

#include <string>
#include <utility>
#include <variant>

namespace host
{
    namespace
    {
        ExitCode RunLog(LogOptions const& options)
        {
            if (options.follow)
            {
                return FollowLog(options);
            }
            auto read = ReadLongFile(options.file,
                                     "The library writes log.log in its host's current folder, and only when the host "
                                     "switches the log on, as --log does.");
            if (auto const* const refusal = std::get_if<ExitCode>(&read))
            {
                return *refusal;
            }
            if (IsSameFile(options.file, options.page))
            {
                return Refuse(ExitCode::Usage, "the page would take the log's place.");
            }
            ReadingProgress progress(options.file, options.output.quiet);
            auto& text = std::get<std::string>(read);
            if (options.output.json)
            {
                PrintLogAsJson(text, [&](double part) { progress.Show("Printing", part); });
                return ExitCode::Done;
            }
            auto const size = static_cast<double>(text.size());
            LogContents const contents(std::move(text), [&](std::size_t bytes) {
                progress.Show("Reading", static_cast<double>(bytes) / size);
            });
            if (!options.page.empty())
            {
                return WritePageFile(contents, options);
            }
            PrintLog(contents, options.file, [&](double part) { progress.Show("Printing", part); });
            return ExitCode::Done;
        }
    } // namespace

    void AddLog(CLI::App& app, Action& chosen)
    {
        auto const command = AddSubcommand<LogOptions>(
            app, chosen, "log", "Shows the library's log: what was asked, what came of it, and where time went",
            RunLog);
        auto& options = command.options;
        command.app.add_option("FILE", options.file, "The log; log.log in this folder unless given")->option_text(" ");
        auto* const follow = command.app.add_flag(
            "--follow", options.follow, "Show the last records, and then each as it is written, until Ctrl+C");
        AddSeconds(command.app, "--timeout", options.timeoutSeconds, "With --follow: end after this many seconds")
            ->needs(follow);
        command.app
            .add_option("--html", options.page,
                        "Write a page for a browser to this file: a timeline, and the records to filter and search")
            ->option_text("FILE")
            ->excludes(follow)
            ->excludes("--json");
        SetFooter(command.app, {"log", "log --follow", "log --html log.html", "log C:\\host\\log.log --json"},
                  "Ends with 3 when there is no such file. Needs no vorlink.dll and no Bluetooth.");
    }
} // namespace host
