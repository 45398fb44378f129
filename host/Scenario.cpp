// The subcommand scenario: faults of a file for the simulated platform.
#include "host/Commands.h"
#include "host/DataFile.h"
#include "host/Library.h"
#include "host/Report.h"
#include "host/Terminal.h"
#include "host/Text.h"
#include "host/WideText.h"

#include <filesystem>
#include <sstream>
#include <stdexcept>
#include <string>

namespace host
{
    namespace
    {
        struct Options
        {
            OutputOptions output;
            std::string file;
        };

        std::string Check(std::string const& text, std::string const& name)
        {
            using CheckScenario = std::size_t(char const*, char const*, char*, std::size_t);
            auto* const check =
                reinterpret_cast<CheckScenario*>(LoadOwn(L"vorlink_simulator.dll", "SimulatorCheckScenario"));
            std::string faults(check(text.c_str(), name.c_str(), nullptr, 0), '\0');
            check(text.c_str(), name.c_str(), faults.data(), faults.size());
            return faults.c_str();
        }

        // "kitchen.toml:22: 'adress': unknown key"
        Json FaultOf(std::string const& line, std::string const& name)
        {
            auto const rest = line.substr(std::min(line.size(), name.size() + 1));
            auto const colon = rest.find(": ");
            Json fault = {{"event", "fault"}, {"file", name}, {"line", std::atoi(rest.c_str())}};
            fault["text"] = colon == std::string::npos ? line : rest.substr(colon + 2);
            return fault;
        }

        ExitCode RunCheck(Options const& options)
        {
            auto const path = std::filesystem::path(ToUtf16(options.file));
            std::error_code missing;
            if (!std::filesystem::is_regular_file(path, missing))
            {
                throw std::runtime_error("There is no file " + Harmless(options.file) + ".");
            }
            auto const scenario = ReadFileText(path);
            if (scenario.find('\0') != std::string::npos)
            {
                throw std::runtime_error(Harmless(options.file) + " is no text: it holds zero bytes.");
            }
            auto const faults = Check(scenario, options.file);
            std::istringstream lines(faults);
            std::size_t count = 0;
            for (std::string line; std::getline(lines, line); ++count)
            {
                options.output.json ? PrintJson(FaultOf(line, options.file)) : Print(Harmless(line) + "\n");
            }
            auto const text =
                count == 0 ? "No fault in " : std::to_string(count) + (count == 1 ? " fault in " : " faults in ");
            return PrintOutcome({count == 0 ? ExitCode::Done : ExitCode::Failed,
                                 count == 0 ? "Sound" : "Faulty",
                                 text + Harmless(options.file) + ".",
                                 {},
                                 {},
                                 {{"count", count}}},
                                "scenario check", options.output);
        }
    } // namespace

    void AddScenario(CLI::App& app, Action& chosen)
    {
        auto* const scenario = app.add_subcommand("scenario", "Checks a scenario for the simulated platform");
        scenario->require_subcommand(1);
        SetFooter(*scenario, {"scenario check kitchen.toml"});
        auto const command = AddSubcommand<Options>(
            *scenario, chosen, "check", "Tells all faults of a scenario file, each with its line", RunCheck);
        command.app.add_option("FILE", command.options.file, "The scenario, a TOML file")->option_text(" ")->required();
        SetFooter(command.app, {"scenario check kitchen.toml", "scenario check kitchen.toml --json"});
    }
} // namespace host
