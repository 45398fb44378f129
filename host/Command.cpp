#include "host/Command.h"

#include "host/Learning.h"
#include "host/Library.h"
#include "host/LogRecords.h"
#include "host/Operation.h"
#include "host/Outcome.h"
#include "host/Phones.h"
#include "host/Progress.h"
#include "host/Terminal.h"
#include "host/Text.h"

#include <sstream>
#include <string>

namespace host
{
    namespace
    {
        // Unpairing says nothing of a name that it does not find, nor of an error on the LE side. A found device's
        // answer takes the platform's time for two endpoints and up to 3 s of search between them: after this long it
        // will not come any more.
        constexpr std::chrono::seconds silenceWithoutLog{8};

        std::chrono::milliseconds Patience(Arguments const& arguments, LogRecords const& records)
        {
            if (arguments.command != Command::Unpair)
            {
                return arguments.timeout;
            }
            if (!arguments.log)
            {
                return silenceWithoutLog;
            }
            // The log knows whether the search has found anything.
            return records.Holds("CLassic id is: ") ? arguments.timeout : std::chrono::seconds(0);
        }

        Outcome DescribeAnswer(Answer const& answer, Arguments const& arguments, Phase lastPhase)
        {
            if (!answer)
            {
                auto const* const doing = arguments.command == Command::Unpair ? "unpairing" : "pairing";
                return DescribeNoAnswer(arguments.name, arguments.timeout.count(),
                                        lastPhase == Phase::Working ? doing : nullptr);
            }
            if (auto const* const failure = std::get_if<Failure>(&*answer))
            {
                return DescribeFailure(failure->text);
            }
            if (auto const* const report = std::get_if<UnpairReport>(&*answer))
            {
                return DescribeUnpairing(report->success, arguments.name);
            }
            if (std::holds_alternative<Silence>(*answer))
            {
                return DescribeSilence(arguments.name);
            }
            return DescribeReport(std::get<PairReport>(*answer), arguments.name);
        }

        // The library records an outcome after it has reported it.
        void WaitForLastRecord(LogRecords const& records, Command command, ExitCode code)
        {
            constexpr std::chrono::seconds limit{2};
            bool const pairs = command == Command::Pair || command == Command::PairPhone;
            if (pairs && (code == ExitCode::Done || code == ExitCode::Refused))
            {
                records.WaitFor("DevicePairingResultStatus::", limit);
            }
            if (command == Command::Unpair && code == ExitCode::Done && !records.Holds("ble data is bad "))
            {
                records.WaitFor("unpaired device ", limit);
            }
        }

        void PrintRecords(LogRecords const& records)
        {
            std::istringstream lines(records.Read());
            std::string shown;
            for (std::string line; std::getline(lines, line);)
            {
                shown += line.empty() ? "" : "  " + Harmless(line) + "\n";
            }
            Print("\nWhat the library logged (log.log):\n" + (shown.empty() ? "  nothing\n" : shown));
        }

        Outcome PairOrUnpair(VorlinkFactory factory, Arguments const& arguments, LogRecords const& records,
                             Progress& progress)
        {
            auto const start = Clock::now();
            if (arguments.command == Command::PairPhone)
            {
                if (auto const outcome = AwaitPhone(factory, arguments, progress))
                {
                    return *outcome;
                }
            }
            auto lastPhase = Phase::Finding;
            auto const answer = Perform(
                factory, arguments, start,
                [&](auto phase, auto elapsed) {
                    lastPhase = phase;
                    progress.Show(phase, elapsed);
                },
                [&] { return Patience(arguments, records); });
            progress.Finish();
            return DescribeAnswer(answer, arguments, lastPhase);
        }
    } // namespace

    ExitCode RunCommand(Arguments const& arguments)
    {
        auto const factory = LoadVorlink();
        LogRecords const records;
        Progress progress(arguments.command, arguments.name);

        auto const outcome = arguments.command == Command::Phones ? ListPhones(factory, arguments, progress)
                                                                  : PairOrUnpair(factory, arguments, records, progress);
        Print(outcome.text + "\n");
        if (outcome.code == ExitCode::Done && arguments.learn)
        {
            PrintError("Learning the device's LE side, which takes about 4 s ...\n");
            if (!WaitForLearning())
            {
                PrintError("Nothing was learnt: the system's listing of devices did not come.\n");
            }
        }
        if (arguments.log)
        {
            WaitForLastRecord(records, arguments.command, outcome.code);
            PrintRecords(records);
        }
        return outcome.code;
    }
} // namespace host
