// The subcommands that ask something of the library.
#include "host/Command.h"
#include "host/Commands.h"
#include "host/Request.h"

namespace host
{
    namespace
    {
        struct Options
        {
            OutputOptions output;
            std::string name;
            bool log = false;
            bool noLearn = false;
            int timeoutSeconds = 60;
        };

        constexpr char answerTimeout[] = "Seconds to wait for the answer, search included; 60 unless given";
        constexpr char longNames[] = "A name of 14 bytes or more also matches a device whose name contains it.";

        void AddLog(Subcommand<Options> const& command)
        {
            command.app.add_flag("--log", command.options.log,
                                 "Write the library's log (log.log, in this folder) and show its new records");
        }

        void AddNoLearn(Subcommand<Options> const& command)
        {
            command.app.add_flag(
                "--no-learn", command.options.noLearn,
                "Do not wait, after the pairing, for what the library learns of the device's LE side (MyLEData)");
        }

        template <Command command, bool pairs>
        ExitCode Run(Options const& options)
        {
            return RunCommand({command, options.name, options.log, pairs && !options.noLearn,
                               std::chrono::seconds(options.timeoutSeconds), options.output});
        }
    } // namespace

    void AddPair(CLI::App& app, Action& chosen)
    {
        auto const command = AddSubcommand<Options>(
            app, chosen, "pair", "Finds a Bluetooth device by its name and pairs it", Run<Command::Pair, true>);
        AddName(command.app, command.options.name);
        AddLog(command);
        AddSeconds(command.app, "--timeout", command.options.timeoutSeconds, answerTimeout);
        AddNoLearn(command);
        SetFooter(command.app, {"pair \"Kitchen Speaker\""}, longNames);
    }

    void AddUnpair(CLI::App& app, Action& chosen)
    {
        auto const command = AddSubcommand<Options>(
            app, chosen, "unpair", "Finds a Bluetooth device by its name and unpairs its Classic and LE endpoints",
            Run<Command::Unpair, false>);
        AddName(command.app, command.options.name);
        AddLog(command);
        AddSeconds(command.app, "--timeout", command.options.timeoutSeconds, answerTimeout);
        SetFooter(command.app, {"unpair \"Kitchen Speaker\""}, longNames);
    }

    void AddPhones(CLI::App& app, Action& chosen)
    {
        auto const command = AddSubcommand<Options>(
            app, chosen, "phones", "Lists the phones and other Bluetooth Classic devices that can be paired",
            Run<Command::Phones, false>);
        AddLog(command);
        AddSeconds(command.app, "--timeout", command.options.timeoutSeconds,
                   "Seconds to search at most; the search ends by itself after 25");
        SetFooter(command.app, {"phones", "phones --timeout 10"},
                  "Each name is printed as soon as it is seen. Ctrl+C ends the search early.");
    }

    void AddPairPhone(CLI::App& app, Action& chosen)
    {
        auto const command =
            AddSubcommand<Options>(app, chosen, "pair-phone", "Waits until a phone of this name is seen and pairs it",
                                   Run<Command::PairPhone, true>);
        AddName(command.app, command.options.name);
        AddLog(command);
        AddSeconds(command.app, "--timeout", command.options.timeoutSeconds, answerTimeout);
        AddNoLearn(command);
        SetFooter(command.app, {"pair-phone \"Zoë's Phone\""},
                  "The name must be exactly the one that \"vorlinkctl phones\" lists.");
    }
} // namespace host
