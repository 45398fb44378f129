#include "host/Subcommand.h"

#include "host/Failure.h"
#include "host/Text.h"

#include <map>

namespace host
{
    namespace
    {
        std::string NotEmpty(std::string const& name)
        {
            return name.empty() ? "the name is empty" : "";
        }
    } // namespace

    void AddOutputOptions(CLI::App& subcommand, OutputOptions& options)
    {
        std::map<std::string, ColourChoice> const choices = {
            {"auto", ColourChoice::Auto}, {"always", ColourChoice::Always}, {"never", ColourChoice::Never}};
        subcommand.add_flag("--json", options.json,
                            "Print JSON, an object a line, and nothing else on standard output");
        auto* const quiet =
            subcommand.add_flag("--quiet", options.quiet, "No progress and no advice: the result alone");
        subcommand.add_flag("--verbose", options.verbose, "Tell also how it went")->excludes(quiet);
        subcommand
            .add_option_function<std::string>(
                "--color", [&options, choices](std::string const& choice) { options.colours = choices.at(choice); },
                "Colours: auto (on a console, and not with NO_COLOR), always, never")
            ->option_text("WHEN")
            ->check(CLI::IsMember({"auto", "always", "never"}).description(""));
    }

    void SetFooter(CLI::App& subcommand, std::initializer_list<char const*> examples, std::string const& notes)
    {
        std::string footer = notes.empty() ? "" : notes + "\n\n";
        footer += examples.size() == 0 ? "" : "Examples:\n";
        for (auto const* const example : examples)
        {
            footer += "  vorlinkctl " + std::string(example) + "\n";
        }
        footer += "\nExit codes:\n";
        for (auto const& [code, meaning] : exitCodeMeanings)
        {
            footer += "  " + std::to_string(static_cast<int>(code)) + "  " + meaning + "\n";
        }
        subcommand.footer(footer);
    }

    CLI::Option* AddSeconds(CLI::App& subcommand, char const* option, int& seconds, std::string const& help)
    {
        constexpr int most = 86'400;
        return subcommand.add_option(option, seconds, help + " (1 to " + std::to_string(most) + ")")
            ->option_text("S")
            ->check(CLI::Range(1, most).description(""));
    }

    CLI::Option* AddName(CLI::App& subcommand, std::string& name)
    {
        auto const* const literal =
            subcommand.add_flag("--literal")->description("Take NAME as it stands: no \\x1B or \\u202E in it is read");
        return subcommand
            .add_option_function<std::string>(
                "NAME",
                [&name, literal](std::string const& shown) {
                    name = literal->count() > 0 ? shown : FromHarmless(shown);
                },
                "The name that the device shows; in quotes when it holds blanks, behind \"--\" when it begins with "
                "\"-\"")
            ->option_text(" ")
            ->required()
            ->check(CLI::Validator(NotEmpty, ""));
    }

    void AddLogFlag(CLI::App& subcommand, bool& log)
    {
        subcommand.add_flag("--log", log, "Write the library's log (log.log, in this folder) and show its new records");
    }

    ExitCode ReportException(char const* command, OutputOptions const& options)
    {
        auto const text = DescribeCurrentException();
        PrintError("vorlinkctl: " + text + "\n");
        if (options.json)
        {
            PrintJson({{"event", "outcome"},
                       {"command", command},
                       {"outcome", "Failed"},
                       {"exit_code", static_cast<int>(ExitCode::Failed)},
                       {"text", text},
                       {"next", ""},
                       {"warnings", Json::array()}});
        }
        return ExitCode::Failed;
    }
} // namespace host
