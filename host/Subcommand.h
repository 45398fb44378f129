// How a subcommand joins the command line.
#pragma once

#include "host/ExitCode.h"
#include "host/Terminal.h"

#include <CLI/CLI.hpp>

#include <functional>
#include <initializer_list>
#include <memory>
#include <string>

namespace host
{
    // What every subcommand takes.
    struct OutputOptions
    {
        bool json = false;
        bool quiet = false;
        bool verbose = false;
        ColourChoice colours = ColourChoice::Auto;
    };

    using Action = std::function<ExitCode()>;

    // What is the same for all of them: the options above, and a help text that ends with examples (command lines
    // without "vorlinkctl"), the notes and the exit codes.
    void AddOutputOptions(CLI::App& subcommand, OutputOptions& options);
    void SetFooter(CLI::App& subcommand, std::initializer_list<char const*> examples, std::string const& notes = {});

    // The exception being handled, on standard error, and with --json as an outcome too.
    ExitCode ReportException(char const* command, OutputOptions const& options);

    // Seconds; with the limits in the help text.
    CLI::Option* AddSeconds(CLI::App& subcommand, char const* option, int& seconds, std::string const& help);

    // The name of a device, which people paste as the program has shown it.
    CLI::Option* AddName(CLI::App& subcommand, std::string& name);

    void AddLogFlag(CLI::App& subcommand, bool& log);

    inline constexpr char longNames[] = "A name of 14 bytes or more also matches a device whose name contains it.";

    template <typename Options>
    struct Subcommand
    {
        CLI::App& app;
        Options& options; // with a member `output` of type OutputOptions
    };

    // When the line names this subcommand, `chosen` becomes `run` with its options.
    template <typename Options>
    Subcommand<Options> AddSubcommand(CLI::App& app, Action& chosen, char const* word, char const* purpose,
                                      ExitCode (*run)(Options const&))
    {
        auto const options = std::make_shared<Options>();
        auto* const added = app.add_subcommand(word, purpose);
        added->callback([&chosen, options, run, word] {
            chosen = [options, run, word] {
                ChooseColours(options->output.colours);
                try
                {
                    return run(*options);
                }
                catch (...)
                {
                    return ReportException(word, options->output);
                }
            };
        });
        AddOutputOptions(*added, options->output);
        return {*added, *options};
    }
} // namespace host
