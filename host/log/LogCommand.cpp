// vorlinkctl log: the library's log as a person wants it.
#include "host/Commands.h"
#include "host/Terminal.h"
#include "host/Text.h"
#include "host/WideText.h"
#include "host/log/FollowLog.h"
#include "host/log/LogOutput.h"
#include "host/log/WriteLogPage.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <optional>
#include <stdexcept>
#include <string>

namespace host
{
    namespace
    {
        // Says on standard error how far a long log is read, once that has taken a second: a line that counts on a
        // console, a single one elsewhere.
        class ReadingProgress
        {
        public:
            explicit ReadingProgress(LogOptions const& options)
                : m_name(Harmless(options.file))
                , m_quiet(options.output.quiet)
            {
            }

            ~ReadingProgress()
            {
                PrintError(m_shown.empty() || !m_console ? "" : "\r" + std::string(Columns(m_shown), ' ') + "\r");
            }

            ReadingProgress(ReadingProgress const&) = delete;
            ReadingProgress& operator=(ReadingProgress const&) = delete;

            void Show(char const* doing, double part)
            {
                constexpr std::chrono::milliseconds pause(250);
                auto const now = std::chrono::steady_clock::now();
                if (m_quiet || now < m_next)
                {
                    return;
                }
                m_next = now + pause;
                auto const line = FitColumns(std::string(doing) + " " + m_name, ErrorColumns() - 12) + " ...";
                if (m_console)
                {
                    m_shown = line + " " + std::to_string(std::lround(part * 100)) + " %";
                    PrintError("\r" + m_shown + " ");
                }
                else if (m_shown.empty())
                {
                    m_shown = line;
                    PrintError(line + "\n");
                }
            }

        private:
            std::string const m_name;
            bool const m_quiet;
            bool const m_console = ErrorIsConsole();
            std::chrono::steady_clock::time_point m_next = std::chrono::steady_clock::now() + std::chrono::seconds(1);
            std::string m_shown;
        };

        std::string ReadWhole(std::ifstream& file, std::uintmax_t size)
        {
            constexpr std::size_t step = 1 << 20;
            std::string text;
            text.reserve(static_cast<std::size_t>(size) + step); // for the last step, which finds nothing more
            while (file)
            {
                auto const before = text.size();
                text.resize(before + step);
                file.read(text.data() + before, step);
                text.resize(before + static_cast<std::size_t>(file.gcount()));
            }
            return text;
        }

        ExitCode Refuse(ExitCode code, std::string const& sentence)
        {
            PrintError("vorlinkctl: " + sentence + "\n");
            return code;
        }

        ExitCode RunLog(LogOptions const& options)
        {
            if (options.follow)
            {
                return FollowLog(options);
            }
            std::filesystem::path const path(ToUtf16(options.file));
            std::error_code error;
            if (!std::filesystem::exists(path, error))
            {
                return Refuse(ExitCode::NotFound,
                              "there is no " + Quoted(options.file) +
                                  ".\nThe library writes log.log in its host's current folder, and only when the host "
                                  "switches the log on, as --log does.");
            }
            std::ifstream file(path, std::ios::binary);
            if (!std::filesystem::is_regular_file(path, error) || !file)
            {
                return Refuse(ExitCode::Failed, Quoted(options.file) + " cannot be read.");
            }
            if (!options.page.empty() && std::filesystem::equivalent(path, ToUtf16(options.page), error))
            {
                return Refuse(ExitCode::Usage, "the page would take the log's place.");
            }
            ReadingProgress progress(options);
            auto text = ReadWhole(file, std::filesystem::file_size(path, error));
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
