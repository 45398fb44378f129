#include "host/Arguments.h"

#include "host/Text.h"

#include <CLI/CLI.hpp>

#include <windows.h>
#include <shellapi.h>

#include <cstddef>
#include <memory>
#include <sstream>
#include <vector>

namespace host
{
    namespace
    {
        // Last word first, without the program's own name: the order that CLI11 takes.
        std::vector<std::string> ReversedUtf8Words()
        {
            int count = 0;
            std::unique_ptr<wchar_t*[], decltype(&LocalFree)> const words(CommandLineToArgvW(GetCommandLineW(), &count),
                                                                          LocalFree);
            std::vector<std::string> reversed;
            for (int index = count - 1; index > 0; --index)
            {
                reversed.push_back(ToUtf8(words[static_cast<std::size_t>(index)]));
            }
            return reversed;
        }

        std::string ExitCodeHelp()
        {
            std::string help = "Exit codes:\n";
            for (auto const& [code, meaning] : exitCodeMeanings)
            {
                help += "  " + std::to_string(static_cast<int>(code)) + "  " + meaning + "\n";
            }
            return help;
        }

        std::string NotEmpty(std::string const& name)
        {
            return name.empty() ? "the name is empty" : "";
        }

        struct CommandText
        {
            char const* word;
            char const* purpose;
            char const* timeoutHelp;
            char const* footer;
            Command command;
            bool takesName;
            bool pairs;
        };

        constexpr char timeoutHelp[] = "Seconds to wait for the answer, search included; 60 unless given";
        constexpr char longNames[] = "A name of 14 bytes or more also matches a device whose name contains it.";

        constexpr CommandText commandTexts[] = {
            {"pair", "Finds a Bluetooth device by its name and pairs it", timeoutHelp, longNames, Command::Pair, true,
             true},
            {"unpair", "Finds a Bluetooth device by its name and unpairs its Classic and LE endpoints", timeoutHelp,
             longNames, Command::Unpair, true, false},
            {"phones", "Lists the phones and other Bluetooth Classic devices that can be paired",
             "Seconds to search at most; the search ends by itself after 25",
             "Each name is printed as soon as it is seen. Ctrl+C ends the search early.", Command::Phones, false,
             false},
            {"pair-phone", "Waits until a phone of this name is seen and pairs it", timeoutHelp,
             "The name must be exactly the one that \"vorlinkctl phones\" lists.", Command::PairPhone, true, true},
        };

        struct Options
        {
            Arguments arguments;
            int timeoutSeconds = 60;
            bool noLearn = false;
        };

        void AddCommand(CLI::App& app, CommandText const& text, Options& options)
        {
            auto* const added = app.add_subcommand(text.word, text.purpose);
            if (text.takesName)
            {
                added
                    ->add_option("NAME", options.arguments.name,
                                 "The name that the device shows; in quotes when it holds blanks")
                    ->option_text(" ")
                    ->required()
                    ->check(CLI::Validator(NotEmpty, ""));
            }
            added->add_flag("--log", options.arguments.log,
                            "Write the library's log (log.log, in this folder) and show its new records");
            added->add_option("--timeout", options.timeoutSeconds, text.timeoutHelp)
                ->option_text("S")
                ->check(CLI::Range(1, 86400));
            if (text.pairs)
            {
                added->add_flag(
                    "--no-learn", options.noLearn,
                    "Do not wait, after the pairing, for what the library learns of the device's LE side (MyLEData)");
            }
            added->footer(std::string(text.footer) + "\n\n" + ExitCodeHelp());
        }
    } // namespace

    std::variant<Arguments, EarlyExit> ReadArguments()
    {
        CLI::App app("Lists, pairs and unpairs Bluetooth devices by name.", "vorlinkctl");
        app.allow_windows_style_options(false); // a device's name may begin with a slash
        app.set_version_flag("--version", "vorlinkctl " VORLINK_VERSION);
        app.require_subcommand(1);
        app.footer("\n" + ExitCodeHelp());
        Options options;
        for (auto const& text : commandTexts)
        {
            AddCommand(app, text, options);
        }

        try
        {
            app.parse(ReversedUtf8Words());
        }
        catch (CLI::ParseError const& error)
        {
            std::ostringstream shown;
            bool const isHelp = app.exit(error, shown, shown) == 0;
            return EarlyExit{isHelp ? ExitCode::Done : ExitCode::Usage, shown.str()};
        }
        auto arguments = options.arguments;
        arguments.timeout = std::chrono::seconds(options.timeoutSeconds);
        for (auto const& text : commandTexts)
        {
            if (app.got_subcommand(text.word))
            {
                arguments.command = text.command;
                arguments.learn = text.pairs && !options.noLearn;
            }
        }
        return arguments;
    }
} // namespace host
