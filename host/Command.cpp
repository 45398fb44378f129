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

        std::chrono::milliseconds Patience(Request const& request, LogRecords const& records)
        {
            if (request.command != Command::Unpair)
            {
                return request.timeout;
            }
            if (!request.log)
            {
                return silenceWithoutLog;
            }
            // The log knows whether the search has found anything.
            return records.Holds("CLassic id is: ") ? request.timeout : std::chrono::seconds(0);
        }

        Outcome DescribeAnswer(Answer const& answer, Request const& request, Phase lastPhase)
        {
            if (!answer)
            {
                auto const* const doing = request.command == Command::Unpair ? "unpairing" : "pairing";
                return DescribeNoAnswer(request.name, request.timeout.count(),
                                        lastPhase == Phase::Working ? doing : nullptr);
            }
            if (auto const* const failure = std::get_if<Failure>(&*answer))
            {
                return DescribeFailure(failure->text);
            }
            if (auto const* const report = std::get_if<UnpairReport>(&*answer))
            {
                return DescribeUnpairing(report->success, request.name);
            }
            if (std::holds_alternative<Silence>(*answer))
            {
                return DescribeSilence(request.name);
            }
            return DescribeReport(std::get<PairReport>(*answer), request.name);
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

        Outcome PairOrUnpair(VorlinkFactory factory, Request const& request, LogRecords const& records,
                             Progress& progress)
        {
            auto const start = Clock::now();
            if (request.command == Command::PairPhone)
            {
                if (auto const outcome = AwaitPhone(factory, request, progress))
                {
                    return *outcome;
                }
            }
            auto lastPhase = Phase::Finding;
            auto const answer = Perform(
                factory, request, start,
                [&](auto phase, auto elapsed) {
                    lastPhase = phase;
                    progress.Show(phase, elapsed);
                },
                [&] { return Patience(request, records); });
            progress.Finish();
            return DescribeAnswer(answer, request, lastPhase);
        }
    } // namespace

    ExitCode RunCommand(Request const& request)
    {
        auto const factory = LoadVorlink();
        LogRecords const records;
        Progress progress(request.command, request.name);

        auto const outcome = request.command == Command::Phones ? ListPhones(factory, request, progress)
                                                                : PairOrUnpair(factory, request, records, progress);
        Print(outcome.text + "\n");
        if (outcome.code == ExitCode::Done && request.learn)
        {
            PrintError("Learning the device's LE side, which takes about 4 s ...\n");
            if (!WaitForLearning())
            {
                PrintError("Nothing was learnt: the system's listing of devices did not come.\n");
            }
        }
        if (request.log)
        {
            WaitForLastRecord(records, request.command, outcome.code);
            PrintRecords(records);
        }
        return outcome.code;
    }
} // namespace host
