// The subcommand doctor.
#include "host/Commands.h"
#include "host/Interruption.h"
#include "host/Library.h"
#include "host/Outcome.h"
#include "host/Report.h"
#include "host/Terminal.h"
#include "host/WideText.h"
#include "host/doctor/CapturedErrors.h"
#include "host/doctor/Finding.h"
#include "host/doctor/PlatformChecks.h"
#include "host/doctor/SystemChecks.h"

#include <windows.h>

#include <algorithm>
#include <exception>
#include <filesystem>
#include <functional>
#include <sstream>
#include <string_view>
#include <system_error>

namespace host
{
    namespace
    {
        struct Options
        {
            OutputOptions output;
        };

        Colour ColourOf(Verdict verdict)
        {
            return verdict == Verdict::Ok        ? Colour::Good
                   : verdict == Verdict::Problem ? Colour::Bad
                   : verdict == Verdict::Warning ? Colour::Caution
                                                 : Colour::Faint;
        }

        // Printed one by one, for some take seconds.
        class Findings
        {
        public:
            explicit Findings(OutputOptions const& options)
                : m_options(options)
            {
            }

            void Add(Finding finding)
            {
                if (m_options.json)
                {
                    PrintJson({{"event", "check"},
                               {"check", finding.check},
                               {"verdict", TextOf(finding.verdict)},
                               {"text", finding.text},
                               {"hint", finding.hint}});
                }
                else
                {
                    PrintRow(finding);
                }
                m_all.push_back(std::move(finding));
            }

            void Add(std::vector<Finding> findings)
            {
                for (auto& finding : findings)
                {
                    Add(std::move(finding));
                }
            }

            std::vector<Finding> const& All() const
            {
                return m_all;
            }

        private:
            void PrintRow(Finding finding) const
            {
                finding.hint = m_options.quiet ? "" : finding.hint;
                // Some consoles take the colour for text.
                auto const columns = OutputColumns() - 1 - Coloured(Colour::Good, "").size();
                std::string const verdict = TextOf(finding.verdict);
                auto const row = LayOut(finding, columns);
                Print(Coloured(ColourOf(finding.verdict), verdict) + row.substr(verdict.size()));
            }

            OutputOptions const& m_options;
            std::vector<Finding> m_all;
        };

        std::string VersionOf(std::filesystem::path const& file)
        {
            std::string data(GetFileVersionInfoSizeW(file.c_str(), nullptr), '\0');
            void* value = nullptr;
            UINT size = 0;
            if (data.empty() || !GetFileVersionInfoW(file.c_str(), 0, static_cast<DWORD>(data.size()), data.data()) ||
                !VerQueryValueW(data.data(), L"\\", &value, &size))
            {
                return "without a version";
            }
            auto const& info = *static_cast<VS_FIXEDFILEINFO const*>(value);
            return std::to_string(HIWORD(info.dwFileVersionMS)) + "." + std::to_string(LOWORD(info.dwFileVersionMS)) +
                   "." + std::to_string(HIWORD(info.dwFileVersionLS));
        }

        Finding CheckLibrary()
        {
            try
            {
                LoadVorlink();
            }
            catch (std::exception const& error)
            {
                // What is wrong, and in the next line what to do.
                std::string const text = error.what();
                auto const end = std::min(text.size(), text.find('\n'));
                return {"library", Verdict::Problem, text.substr(0, end), text.substr(std::min(text.size(), end + 1))};
            }
            std::wstring path(32'768, L'\0'); // longer than any path
            path.resize(
                GetModuleFileNameW(GetModuleHandleW(L"vorlink.dll"), path.data(), static_cast<DWORD>(path.size())));
            auto const version = VersionOf(path);
            auto const text = "vorlink.dll " + version + ", exports getVorlinkPtr";
            return version == VORLINK_VERSION ? Finding{"library", Verdict::Ok, text, {}}
                                              : Finding{"library", Verdict::Warning, text,
                                                        "It is of another build than this vorlinkctl " VORLINK_VERSION
                                                        ": put the one of the same build beside it."};
        }

        std::wstring ScenarioVariable()
        {
            std::wstring value(32'768, L'\0');
            value.resize(GetEnvironmentVariableW(L"VORLINK_SCENARIO", value.data(), static_cast<DWORD>(value.size())));
            return value;
        }

        // `complaint`: what the simulator has written about it.
        std::vector<Finding> CheckScenario(Answering answering, std::string const& complaint)
        {
            constexpr char check[] = "scenario";
            auto const file = ScenarioVariable();
            auto const name = ToUtf8(file);
            if (answering != Answering::Simulator)
            {
                return file.empty() ? std::vector<Finding>()
                                    : std::vector<Finding>{
                                          {check, Verdict::Warning,
                                           "VORLINK_SCENARIO names " + name + ", but the simulator does not answer",
                                           "Unset the variable, or run the simulator."}};
            }
            if (!complaint.empty())
            {
                return {{check, Verdict::Problem, complaint,
                         "Mend the scenario; nothing is wrong with the radio. \"vorlinkctl scenario check FILE\" tells "
                         "all that is wrong."}};
            }
            return {{check, Verdict::Ok, file.empty() ? "the simulator's own: VORLINK_SCENARIO names none" : name, {}}};
        }

        // In one line, without the simulator's name before each.
        std::string FaultsOf(std::string const& complaint)
        {
            constexpr std::string_view mark = "vorlink_simulator: ";
            std::istringstream lines(complaint);
            std::string faults;
            for (std::string line; std::getline(lines, line);)
            {
                line.erase(line.find_last_not_of('\r') + 1);
                faults.append(faults.empty() ? "" : "; ").append(line, line.starts_with(mark) ? mark.size() : 0);
            }
            return faults;
        }

        void CheckPlatformAndSearch(Findings& findings)
        {
            auto const [platform, answering] = CheckPlatform();
            findings.Add(platform);
            std::vector<Finding> search;
            CapturedErrors errors;
            if (answering == Answering::Windows || answering == Answering::Simulator)
            {
                search = CheckSearch();
            }
            auto const faults = FaultsOf(errors.Take());
            if (!faults.empty() && search.front().verdict == Verdict::Problem)
            {
                search.front().hint = "The scenario is to blame.";
            }
            findings.Add(CheckScenario(answering, faults));
            findings.Add(std::move(search));
        }

        ExitCode RunDoctor(Options const& options)
        {
            Interruption const interruption;
            Findings findings(options.output);
            std::error_code ignored;
            auto const folder = std::filesystem::current_path(ignored);
            std::function<void()> const checks[] = {
                [&] { findings.Add(CheckLibrary()); },
                [&] { CheckPlatformAndSearch(findings); },
                [&] { findings.Add(CheckAdapter()); },
                [&] { findings.Add(CheckTool()); },
                [&] { findings.Add(CheckFolder(folder)); },
                [&] { findings.Add(CheckDataFile(folder)); },
                [&] { findings.Add(CheckCodePage(GetACP(), GetOEMCP())); },
            };
            for (auto const& check : checks)
            {
                check();
                if (interruption.Requested())
                {
                    return PrintOutcome({ExitCode::NoAnswer,
                                         "Interrupted",
                                         "Interrupted: not all was checked.",
                                         {},
                                         {},
                                         Json::object()},
                                        "doctor", options.output);
                }
            }

            auto const& all = findings.All();
            auto const count = [&](Verdict verdict) { return std::ranges::count(all, verdict, &Finding::verdict); };
            bool const sick = HasProblem(all);
            Outcome const outcome{
                sick ? ExitCode::Failed : ExitCode::Done,
                sick ? "Problem" : "Healthy",
                Summary(all),
                {},
                {},
                {{"checks", all.size()}, {"problems", count(Verdict::Problem)}, {"warned", count(Verdict::Warning)}}};
            Print(options.output.json ? "" : "\n");
            return PrintOutcome(outcome, "doctor", options.output);
        }
    } // namespace

    void AddDoctor(CLI::App& app, Action& chosen)
    {
        auto const command = AddSubcommand<Options>(
            app, chosen, "doctor", "Checks all that pairing needs, from the library to the radio", RunDoctor);
        SetFooter(command.app, {"doctor", "doctor --json"},
                  "It takes some seconds, in which it looks around; it pairs nothing and changes nothing.");
    }
} // namespace host
