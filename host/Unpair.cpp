// The subcommand unpair.
#include "host/Await.h"
#include "host/Commands.h"
#include "host/Evidence.h"
#include "host/Look.h"
#include "host/Outcome.h"
#include "host/OwnThread.h"
#include "host/Report.h"
#include "host/Text.h"

#include <algorithm>
#include <future>
#include <memory>
#include <thread>
#include <utility>

namespace host
{
    namespace
    {
        struct Options
        {
            OutputOptions output;
            std::string name;
            bool log = false;
            bool yes = false;
            int timeoutSeconds = 60;
        };

        std::optional<Match> FoundBy(Search const& search)
        {
            return search.state == SearchState::Found ? std::optional(search.match) : std::nullopt;
        }

        // The library says nothing of a name that it does not find, nor of the platform's error on the LE side.
        bool IsSilent(LibraryLog const& log, std::string const& name)
        {
            return ReadSearch(log.Records(), name).state == SearchState::Nothing ||
                   ReadLeUnpairing(log.Records(), name).side == LeSide::Failed;
        }

        Outcome DescribeSilent(LibraryLog const& log, Options const& options)
        {
            auto const le = ReadLeUnpairing(log.Records(), options.name);
            if (le.side == LeSide::Failed)
            {
                return DescribeSilence(
                    "LeFailed", options.name, FoundBy(ReadSearch(log.Records(), options.name)),
                    "its Classic side is unpaired; on the LE side the platform failed: " + Harmless(le.text) + ".");
            }
            return DescribeSilence("NotFound", options.name, std::nullopt);
        }

        // How far it has come, by name of the silence.
        char const* Stage(LibraryLog const& log, Options const& options, Search const& search, bool returned)
        {
            if (!returned)
            {
                return "SearchPending";
            }
            if (ReadLeUnpairing(log.Records(), options.name).side == LeSide::Pending)
            {
                return "LePending";
            }
            return search.state == SearchState::Found ? "UnpairingPending" : "Unclear";
        }

        Outcome DescribeNoAnswer(LibraryLog const& log, Options const& options, bool returned)
        {
            auto const search = ReadSearch(log.Records(), options.name);
            auto const* const stage = Stage(log, options, search, returned);
            return DescribeSilence(stage, options.name, FoundBy(search),
                                   (returned ? "the unpairing of " : "the search for ") + Quoted(options.name) +
                                       " did not end within " + std::to_string(options.timeoutSeconds) + " s.");
        }

        Outcome DescribeInterruption(LibraryLog const& log, Options const& options, bool returned)
        {
            auto const match = FoundBy(ReadSearch(log.Records(), options.name));
            auto const name = Quoted(options.name);
            if (ReadLeUnpairing(log.Records(), options.name).side == LeSide::Pending)
            {
                return DescribeSilence(
                    "Interrupted", options.name, match, name + " was unpaired in part.",
                    "Its Classic side is unpaired; its LE side may still be: look with \"vorlinkctl list\".");
            }
            return returned
                       ? DescribeSilence(
                             "Interrupted", options.name, match, name + " was being unpaired.",
                             "The platform had been asked for it, and may still do it: look with \"vorlinkctl list\".")
                       : DescribeSilence("Interrupted", options.name, match, name + " was not unpaired.",
                                         "Nothing had been asked of it yet.");
        }

        Outcome Describe(Session& session, Awaited const& awaited, Options const& options)
        {
            auto& log = session.Log();
            switch (awaited.ending)
            {
            case Ending::Silent:
                return DescribeSilent(log, options);
            case Ending::TimeLimit:
                return DescribeNoAnswer(log, options, awaited.progressed.returned);
            case Ending::Interrupted:
                return DescribeInterruption(log, options, awaited.progressed.returned);
            default:
                break;
            }
            auto const& answer = *awaited.progressed.answer;
            if (auto const* const failure = std::get_if<Failure>(&answer))
            {
                return DescribeFailure(failure->text, IsSimulated());
            }
            bool const success = std::get<UnpairReport>(answer).success;
            if (success)
            {
                // The LE side's last record comes after the report.
                AwaitRecords(session, [&] {
                    return ReadLeUnpairing(log.Records(), options.name).side > LeSide::Pending ||
                           ReadLeUnpairing(log.Records(), options.name).side == LeSide::NotKnown;
                });
            }
            return DescribeUnpairing(success, options.name, FoundBy(ReadSearch(log.Records(), options.name)),
                                     ReadLeUnpairing(log.Records(), options.name));
        }

        // What one run has at hand.
        struct Run
        {
            Options const& options;
            Session& session;
            Interruption const& interruption;
            Progress& progress;
            Clock::time_point start = Clock::now();

            Clock::time_point End() const
            {
                return start + std::chrono::seconds(options.timeoutSeconds);
            }
        };

        enum class Consent
        {
            Yes,
            No,
            Interrupted,
        };

        // The answer is read by a thread of its own, for Ctrl+C need not end a read.
        Consent Ask(std::string const& question, Interruption const& interruption, Progress& progress)
        {
            progress.Finish();
            PrintError(question + " [y/N] ");
            auto const promise = std::make_shared<std::promise<std::string>>();
            auto line = promise->get_future();
            StartOwnThread([promise] { promise->set_value(ReadInputLine()); });
            while (line.wait_for(std::chrono::milliseconds(50)) != std::future_status::ready)
            {
                if (interruption.Requested())
                {
                    return Consent::Interrupted;
                }
            }
            auto const answer = line.get();
            bool const isYes = answer == "y" || answer == "Y" || answer == "yes";
            return interruption.Requested() ? Consent::Interrupted : isYes ? Consent::Yes : Consent::No;
        }

        // What the look before an unpairing has come to.
        struct LeCheck
        {
            std::optional<Outcome> declined;
            std::optional<std::string> warning;
        };

        LeCheck Decide(Run const& run, std::string const& problem)
        {
            auto const& options = run.options;
            if (options.yes)
            {
                return {std::nullopt, problem};
            }
            if (!InputIsConsole() || options.output.json)
            {
                return {DescribeDeclined(
                            "Not unpaired: " + problem + " Nothing was done.",
                            "Say --yes to unpair all the same. To leave that other device alone, take the line of " +
                                Quoted(options.name) + " out of MyLEData first."),
                        std::nullopt};
            }
            switch (Ask("Warning: " + problem + "\nUnpair all the same?", run.interruption, run.progress))
            {
            case Consent::Yes:
                return {std::nullopt, problem};
            case Consent::No:
                return {DescribeDeclined("Not unpaired: you said no. Nothing was done.", {}), std::nullopt};
            default:
                return {DescribeInterruption(run.session.Log(), options, false), std::nullopt};
            }
        }

        // The LE side that the data store has for the name is unpaired too. It may be another device's.
        LeCheck CheckLeSide(Run const& run)
        {
            auto const& options = run.options;
            Surroundings surroundings({{Protocol::Classic, Among::All}}); // a platform that fails is told by it
            auto const le = run.session.StoredLe(options.name);
            if (le.empty())
            {
                return {};
            }
            // The library's own search takes as long.
            auto const end = std::min(run.End(), Clock::now() + std::chrono::seconds(3));
            auto const device = LookFor(
                surroundings, [&](Seen const& each) { return IsNamed(each.name, options.name); }, end, run.interruption,
                run.progress, "Looking for " + Quoted(options.name));
            if (!device)
            {
                return {run.interruption.Requested() ? DescribeInterruption(run.session.Log(), options, false)
                        : Clock::now() >= run.End()  ? DescribeNoAnswer(run.session.Log(), options, false)
                                                     : DescribeSilence("NotFound", options.name, std::nullopt),
                        std::nullopt};
            }
            if (IsSameAddress(le, device->address))
            {
                run.progress.Say("Its LE side, " + Harmless(le) + ", is unpaired with it.");
                return {};
            }
            return Decide(run, "the device found is " + Quoted(device->name) + " (" + Harmless(device->address) +
                                   "), and the library has learnt " + Harmless(le) + " as the LE side of " +
                                   Quoted(options.name) + ": another device's bond may be ended too.");
        }

        Outcome Unpair(Run const& run)
        {
            auto const check = CheckLeSide(run);
            if (check.declined)
            {
                return *check.declined;
            }
            auto const name = Quoted(run.options.name);
            auto const start = Clock::now(); // whoever was asked has taken his time
            BeginUnpairing(run.session.Library(), run.options.name);
            auto const awaited = Await(run.session, run.interruption,
                                       {start, start + std::chrono::seconds(run.options.timeoutSeconds),
                                        "Looking for " + name, "Unpairing " + name},
                                       run.progress, [&] { return IsSilent(run.session.Log(), run.options.name); });
            auto outcome = Describe(run.session, awaited, run.options);
            if (check.warning)
            {
                outcome.warnings.push_back(*check.warning);
            }
            return outcome;
        }

        ExitCode RunUnpair(Options const& options)
        {
            Interruption const interruption;
            Progress progress("Looking for " + Quoted(options.name) + " and unpairing it", options.output.quiet);
            Session session(options.log);
            auto const start = Clock::now();
            Outcome outcome;
            try
            {
                outcome = Unpair({options, session, interruption, progress});
            }
            catch (...)
            {
                outcome = DescribeFailure(DescribeCurrentException(), IsSimulated());
            }
            progress.Finish();
            auto const taken = Clock::now() - start;
            outcome.facts["seconds"] = std::chrono::duration<double>(taken).count();
            PrintOutcome(outcome, "unpair", options.output);
            if (options.output.verbose)
            {
                PrintCourse(session, options.name, taken);
            }
            if (options.log)
            {
                PrintRecords(session, options.output);
            }
            return outcome.code;
        }
    } // namespace

    void AddUnpair(CLI::App& app, Action& chosen)
    {
        auto const command = AddSubcommand<Options>(
            app, chosen, "unpair", "Finds a Bluetooth device by its name and unpairs its Classic and LE endpoints",
            RunUnpair);
        AddName(command.app, command.options.name);
        AddLogFlag(command.app, command.options.log);
        AddSeconds(command.app, "--timeout", command.options.timeoutSeconds,
                   "Seconds to wait for the answer, search included; 60 unless given");
        command.app.add_flag("--yes", command.options.yes,
                             "Do not ask where the LE side that would go with it may be another device's");
        SetFooter(command.app, {"unpair \"Kitchen Speaker\"", "unpair \"Kitchen Speaker\" --yes --json"}, longNames);
    }
} // namespace host
