// The subcommands pair and pair-phone.
#include "host/Await.h"
#include "host/Commands.h"
#include "host/Evidence.h"
#include "host/Learning.h"
#include "host/Look.h"
#include "host/Outcome.h"
#include "host/PhoneSearch.h"
#include "host/Report.h"
#include "host/Text.h"

#include <algorithm>
#include <thread>

namespace host
{
    namespace
    {
        struct Options
        {
            OutputOptions output;
            std::string name;
            std::string address; // of pair alone
            bool exact = false;  // likewise
            bool log = false;
            bool noLearn = false;
            int timeoutSeconds = 60;
        };

        // What one run of either has at hand.
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

        Outcome DescribeNoAnswer(Run const& run, bool asked)
        {
            auto const search = ReadSearch(run.session.Log().Records(), run.options.name);
            auto const match = asked && search.state == SearchState::Found ? std::optional(search.match) : std::nullopt;
            auto const limit = std::to_string(run.options.timeoutSeconds) + " s.";
            auto const name = Quoted(run.options.name);
            return asked ? DescribeSilence("PairingPending", run.options.name, match,
                                           "the pairing of " + name + " did not end within " + limit)
                         : DescribeSilence("SearchPending", run.options.name, match,
                                           "the search for " + name + " did not end within " + limit);
        }

        Outcome DescribeInterruption(Run const& run, bool asked)
        {
            auto const name = Quoted(run.options.name);
            return asked
                       ? DescribeSilence(
                             "Interrupted", run.options.name, std::nullopt, name + " was being paired.",
                             "The platform had been asked for it, and may still do it: look with \"vorlinkctl list\".")
                       : DescribeSilence("Interrupted", run.options.name, std::nullopt, name + " was not paired.",
                                         "Nothing had been asked of it yet.");
        }

        // Names go on being logged while a search for phones does.
        std::optional<std::string> TrueStatus(LibraryLog const& log)
        {
            return HasSeenImitation() ? std::nullopt : PairingStatus(log.Records());
        }

        // What the library logs when it has reported a pairing: the status and, from a thread of its own, that it
        // begins to learn. Neither may still be on its way when the process leaves its private folder.
        bool IsLogged(LibraryLog const& log, PairReport const& report)
        {
            return PairingStatus(log.Records()) && (report.paired == 0 || ReadLearning(log.Records()).begun);
        }

        Outcome DescribeReport(Run const& run, PairReport const& report)
        {
            auto& log = run.session.Log();
            if (!IsNothingFound(report))
            {
                AwaitRecords(run.session, [&] { return IsLogged(log, report); });
            }
            auto const search = ReadSearch(log.Records(), run.options.name);
            // A report is true; a search is the one that led to it when it names the same device.
            bool const isOfReport =
                search.state == SearchState::Found && IsSameAddress(search.match.address, AddressOf(report));
            return DescribePairing(report, run.options.name, isOfReport ? std::optional(search.match) : std::nullopt,
                                   TrueStatus(log));
        }

        // A library that has found the device is about to ask for the pairing, if it has not done so.
        bool IsAsked(Run const& run, Awaited const& awaited)
        {
            return awaited.progressed.returned ||
                   ReadSearch(run.session.Log().Records(), run.options.name).state == SearchState::Found;
        }

        Outcome Describe(Run const& run, Awaited const& awaited)
        {
            switch (awaited.ending)
            {
            case Ending::TimeLimit:
                return DescribeNoAnswer(run, IsAsked(run, awaited));
            case Ending::Interrupted:
                return DescribeInterruption(run, IsAsked(run, awaited));
            default:
                break;
            }
            auto const& answer = *awaited.progressed.answer;
            if (auto const* const failure = std::get_if<Failure>(&answer))
            {
                return DescribeFailure(failure->text, IsSimulated());
            }
            return DescribeReport(run, std::get<PairReport>(answer));
        }

        Awaited AwaitPairing(Run const& run, Clock::time_point end)
        {
            auto const name = Quoted(run.options.name);
            return Await(run.session, run.interruption, {run.start, end, "Looking for " + name, "Pairing " + name},
                         run.progress, [] { return false; });
        }

        Outcome DescribeNothingSeen(Run const& run)
        {
            return run.interruption.Requested() ? DescribeInterruption(run, false)
                   : Clock::now() >= run.End()
                       ? DescribeNoAnswer(run, false)
                       : DescribeSilence("NotFound", run.options.name, std::nullopt,
                                         run.options.address.empty()
                                             ? ""
                                             : "Not found: no Bluetooth Classic device with the address " +
                                                   run.options.address + ".");
        }

        std::string DeviceText(Seen const& device)
        {
            return Quoted(device.name) + " (" + Harmless(device.address) + ")";
        }

        // The library takes the first device that fits. What it would take is known before it does.
        std::optional<Outcome> RefuseOtherName(Run const& run)
        {
            auto const& name = run.options.name;
            Surroundings surroundings({{Protocol::Classic, Among::Pairable}});
            auto const first = LookFor(
                surroundings, [&](Seen const& device) { return IsNamed(device.name, name); }, run.End(),
                run.interruption, run.progress, "Looking for " + Quoted(name));
            if (!first)
            {
                return DescribeNothingSeen(run);
            }
            if (first->name == name)
            {
                return std::nullopt;
            }
            return Outcome{ExitCode::Refused,
                           "OtherName",
                           "Not paired: the first device found is " + DeviceText(*first) + ", not " + Quoted(name) +
                               ".",
                           "Nothing was done. Switch that device off, or choose by address: \"vorlinkctl list\", then "
                           "\"vorlinkctl pair --address ADDRESS\".",
                           {},
                           {{"asked", name}, {"name", first->name}, {"address", first->address}}};
        }

        Outcome PairByName(Run const& run)
        {
            if (run.options.exact)
            {
                if (auto refused = RefuseOtherName(run))
                {
                    return *refused;
                }
            }
            BeginPairing(run.session.Library(), run.options.name);
            return Describe(run, AwaitPairing(run, run.End()));
        }

        // By the platform itself: the library knows names alone.
        Outcome PairByAddress(Run const& run)
        {
            Surroundings surroundings({{Protocol::Classic, Among::Pairable}});
            auto const device = LookFor(
                surroundings, [&](Seen const& each) { return IsSameAddress(each.address, run.options.address); },
                run.End(), run.interruption, run.progress, "Looking for " + run.options.address);
            if (!device)
            {
                return DescribeNothingSeen(run);
            }
            auto const pairing = surroundings.BeginPairing(device->id);
            for (;;)
            {
                if (auto const status = pairing->Status())
                {
                    return DescribeOwnPairing(device->name, device->address, *status);
                }
                if (run.interruption.Requested())
                {
                    return DescribeInterruption(run, true);
                }
                if (Clock::now() >= run.End())
                {
                    return DescribeNoAnswer(run, true);
                }
                run.progress.Show("Pairing " + DeviceText(*device),
                                  std::chrono::floor<std::chrono::seconds>(Clock::now() - run.start));
                std::this_thread::sleep_for(std::chrono::milliseconds(20));
            }
        }

        bool IsNothing(Awaited const& awaited)
        {
            auto const* const report =
                awaited.ending == Ending::Answered ? std::get_if<PairReport>(&*awaited.progressed.answer) : nullptr;
            return report && IsNothingFound(*report);
        }

        // The library reports a name a moment before it keeps the device: it may have to be asked again.
        Outcome PairKeptPhone(Run const& run, bool isReported)
        {
            constexpr std::chrono::seconds moment{2};
            auto const soon = Clock::now() + moment;
            for (;;)
            {
                BeginPhonePairing(run.session.Library(), run.options.name);
                // The answer of a library that does not know the phone comes at once, also when the time is up.
                auto const awaited = AwaitPairing(run, isReported ? run.End() : std::max(run.End(), soon));
                if (!isReported || !IsNothing(awaited) || Clock::now() >= soon)
                {
                    return Describe(run, awaited);
                }
            }
        }

        Outcome PairPhoneByName(Run const& run)
        {
            auto const& name = run.options.name;
            auto const end = SearchPhones(
                run.session, run.interruption, run.End(), [&](std::string const& reported) { return reported != name; },
                [&](auto elapsed) { run.progress.Show("Looking for " + Quoted(name), elapsed); });
            switch (end)
            {
            case SearchEnd::TimeLimit:
                return DescribeNoAnswer(run, false);
            case SearchEnd::Interrupted:
                return DescribeInterruption(run, false);
            default:
                // The library may hold the phone by a name that it did not report.
                return PairKeptPhone(run, end == SearchEnd::Enough);
            }
        }

        ExitCode RunPairing(Options const& options, char const* command, Outcome (*pair)(Run const&))
        {
            Interruption const interruption;
            Progress progress("Looking for " + Quoted(options.name) + " and pairing it", options.output.quiet);
            Session session(options.log);
            Run const run{options, session, interruption, progress};
            auto outcome = Outcome{};
            try
            {
                outcome = pair(run);
            }
            catch (...)
            {
                outcome = DescribeFailure(DescribeCurrentException(), IsSimulated());
            }
            progress.Finish();
            auto const taken = Clock::now() - run.start;
            outcome.facts["seconds"] = std::chrono::duration<double>(taken).count();
            auto code = PrintOutcome(outcome, command, options.output);
            if (options.output.verbose)
            {
                PrintCourse(session, options.name, taken);
            }
            if (code == ExitCode::Done && !options.noLearn)
            {
                auto const lesson = Learn(session, options.name, outcome.facts["address"], interruption, progress);
                PrintLesson(lesson, options.output);
                code = lesson.name == "Interrupted" ? ExitCode::NoAnswer : code;
            }
            if (options.log)
            {
                session.Log().Poll();
                PrintRecords(session, options.output);
            }
            return code;
        }

        ExitCode RunPair(Options const& options)
        {
            if (options.address.empty())
            {
                return RunPairing(options, "pair", PairByName);
            }
            auto byAddress = options;
            byAddress.name = options.address;
            byAddress.noLearn = true; // it is the library that learns
            return RunPairing(byAddress, "pair", PairByAddress);
        }

        ExitCode RunPairPhone(Options const& options)
        {
            return RunPairing(options, "pair-phone", PairPhoneByName);
        }

        std::string NotAnAddress(std::string const& text)
        {
            return IsAddress(text) ? "" : "an address is six pairs of hexadecimal digits, as in a4:c1:38:5e:22:0f";
        }

        CLI::Option* AddPairOptions(Subcommand<Options> const& command)
        {
            auto* const name = AddName(command.app, command.options.name);
            AddLogFlag(command.app, command.options.log);
            AddSeconds(command.app, "--timeout", command.options.timeoutSeconds,
                       "Seconds to wait for the answer, search included; 60 unless given");
            command.app.add_flag(
                "--no-learn", command.options.noLearn,
                "Do not wait, after the pairing, for what the library learns of the device's LE side (MyLEData)");
            return name;
        }
    } // namespace

    void AddPair(CLI::App& app, Action& chosen)
    {
        auto const command =
            AddSubcommand<Options>(app, chosen, "pair", "Finds a Bluetooth device by its name and pairs it", RunPair);
        auto* const name = AddPairOptions(command);
        command.app.add_flag("--exact", command.options.exact,
                             "Look first, and pair only when the first device found is called exactly so");
        command.app
            .add_option(
                "--address", command.options.address,
                "In place of NAME: pair the Classic device with this address, by the platform itself; nothing is "
                "learnt of its LE side")
            ->option_text("ADDRESS")
            ->check(CLI::Validator(NotAnAddress, ""))
            ->excludes(name);
        name->required(false);
        command.app.parse_complete_callback([&options = command.options] {
            if (options.name.empty() && options.address.empty())
            {
                throw CLI::RequiredError("NAME, or --address");
            }
        });
        SetFooter(command.app,
                  {"pair \"Kitchen Speaker\"", "pair \"Living Room TV\" --exact", "pair --address a4:c1:38:5e:22:0f",
                   "pair \"Kitchen Speaker\" --timeout 30 --log"},
                  longNames);
    }

    void AddPairPhone(CLI::App& app, Action& chosen)
    {
        auto const command = AddSubcommand<Options>(
            app, chosen, "pair-phone", "Waits until a phone of this name is seen and pairs it", RunPairPhone);
        AddPairOptions(command);
        SetFooter(command.app, {"pair-phone \"Zoë's Phone\""},
                  "The name must be exactly the one that \"vorlinkctl phones\" lists.");
    }
} // namespace host
