// The subcommand phones.
#include "host/Commands.h"
#include "host/Failure.h"
#include "host/Outcome.h"
#include "host/PhoneSearch.h"
#include "host/Progress.h"
#include "host/Report.h"
#include "host/Terminal.h"
#include "host/Text.h"

namespace host
{
    namespace
    {
        struct Options
        {
            OutputOptions output;
            bool log = false;
            int timeoutSeconds = 60;
        };

        void PrintName(std::string const& name, OutputOptions const& options)
        {
            if (options.json)
            {
                PrintJson({{"event", "device"}, {"name", name}});
            }
            else
            {
                Print(Harmless(name) + "\n");
            }
        }

        Outcome List(Options const& options, Session& session, Interruption const& interruption, Progress& progress)
        {
            std::size_t count = 0;
            auto const end = SearchPhones(
                session, interruption, Clock::now() + std::chrono::seconds(options.timeoutSeconds),
                [&](std::string const& name) {
                    progress.Finish();
                    PrintName(name, options.output);
                    ++count;
                    return true;
                },
                [&](auto elapsed) { progress.Show("Looking for devices to pair", elapsed); });
            return DescribeList(count, end == SearchEnd::Complete);
        }

        ExitCode RunPhones(Options const& options)
        {
            Interruption const interruption;
            Progress progress("Looking for devices to pair", options.output.quiet);
            Session session(options.log);
            Outcome outcome;
            try
            {
                outcome = List(options, session, interruption, progress);
            }
            catch (...)
            {
                outcome = DescribeFailure(DescribeCurrentException(), IsSimulated());
            }
            progress.Finish();
            PrintOutcome(outcome, "phones", options.output);
            if (options.log)
            {
                session.Log().Poll();
                PrintRecords(session, options.output);
            }
            return outcome.code;
        }
    } // namespace

    void AddPhones(CLI::App& app, Action& chosen)
    {
        auto const command = AddSubcommand<Options>(
            app, chosen, "phones", "Lists the phones and other Bluetooth Classic devices that can be paired",
            RunPhones);
        AddLogFlag(command.app, command.options.log);
        AddSeconds(command.app, "--timeout", command.options.timeoutSeconds,
                   "Seconds to search at most; the search ends by itself after 25");
        SetFooter(command.app, {"phones", "phones --timeout 10"},
                  "Each name is printed as soon as it is seen. Ctrl+C ends the search early.");
    }
} // namespace host
