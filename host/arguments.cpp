#include "host/arguments.h"

#include <CLI/CLI.hpp>

#include <windows.h>

#include <shellapi.h>

#include <memory>
#include <sstream>
#include <vector>

#include "host/text.h"

namespace
{
    // Last word first, without the program's own name: the order that CLI11 takes.
    std::vector<std::string> ReversedUtf8Words()
    {
        int count = 0;
        std::unique_ptr<wchar_t* [], decltype(&LocalFree)> const words {
            CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree
        };
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

    CLI::App* AddCommand(CLI::App& app, char const* command, char const* purpose, Arguments& arguments,
                         int& timeoutSeconds)
    {
        auto* const added = app.add_subcommand(command, purpose);
        added->add_option("NAME", arguments.name, "The name that the device shows; in quotes when it holds blanks")
            ->option_text(" ")
            ->required()
            ->check(CLI::Validator{NotEmpty, ""});
        added->add_flag("--log", arguments.log,
                        "Write the library's log (log.log, in this folder) and show its new records");
        added
            ->add_option("--timeout", timeoutSeconds,
                         "Seconds to wait for the answer, search included; 60 unless given")
            ->option_text("S")
            ->check(CLI::Range(1, 86400));
        added->footer("A name of 14 bytes or more also matches a device whose name contains it.\n\n" + ExitCodeHelp());
        return added;
    }
} // namespace

std::variant<Arguments, EarlyExit> ReadArguments()
{
    Arguments arguments;
    int timeoutSeconds = static_cast<int>(arguments.timeout.count());

    CLI::App app{"Pairs and unpairs Bluetooth devices by name.", "vorlinkctl"};
    app.allow_windows_style_options(false); // a device's name may begin with a slash
    app.set_version_flag("--version", "vorlinkctl " VORLINK_VERSION);
    app.require_subcommand(1);
    app.footer("\n" + ExitCodeHelp());

    auto* const pair =
        AddCommand(app, "pair", "Finds a Bluetooth device by its name and pairs it", arguments, timeoutSeconds);
    bool noLearn = false;
    pair->add_flag("--no-learn", noLearn,
                   "Do not wait, after the pairing, for what the library learns of the device's LE side (MyLEData)");
    auto const* const unpair =
        AddCommand(app, "unpair", "Finds a Bluetooth device by its name and unpairs its Classic and LE endpoints",
                   arguments, timeoutSeconds);

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
    arguments.command = unpair->parsed() ? Command::Unpair : Command::Pair;
    arguments.learn = !noLearn;
    arguments.timeout = std::chrono::seconds{timeoutSeconds};
    return arguments;
}
