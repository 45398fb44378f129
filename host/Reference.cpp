#include "host/Reference.h"

#include "host/Commands.h"
#include "host/Nearest.h"
#include "host/Terminal.h"
#include "host/Text.h"

#include <vector>

namespace host
{
    namespace
    {
        std::vector<CLI::App*> SubcommandsOf(CLI::App& app)
        {
            return app.get_subcommands([](CLI::App*) { return true; });
        }

        std::vector<std::string> OptionsOf(CLI::App& app)
        {
            std::vector<std::string> names;
            for (auto const* const option : app.get_options())
            {
                for (auto const& name : option->get_lnames())
                {
                    names.push_back("--" + name);
                }
            }
            return names;
        }

        std::vector<std::string> NamesOf(std::vector<CLI::App*> const& subcommands)
        {
            std::vector<std::string> names;
            for (auto const* const each : subcommands)
            {
                names.push_back(each->get_name());
            }
            return names;
        }

        std::string Joined(std::vector<std::string> const& words, std::string const& separator)
        {
            std::string text;
            for (auto const& word : words)
            {
                text += (text.empty() ? "" : separator) + word;
            }
            return text;
        }

        // What may follow a subcommand's name.
        std::vector<std::string> WordsOf(CLI::App& app)
        {
            auto words = NamesOf(SubcommandsOf(app));
            for (auto const& option : OptionsOf(app))
            {
                words.push_back(option);
            }
            return words;
        }

        // For troff: a hyphen that is one, a backslash, and no dot or quotation mark at a line's beginning.
        std::string Roff(std::string const& text)
        {
            std::string roff;
            for (auto const byte : text)
            {
                bool const beginsLine = roff.empty() || roff.back() == '\n';
                roff += byte == '-'                                   ? "\\-"
                        : byte == '\\'                                ? "\\e"
                        : beginsLine && (byte == '.' || byte == '\'') ? std::string("\\&") + byte
                                                                      : std::string(1, byte);
            }
            return roff;
        }

        std::string Usage(CLI::Option const& option)
        {
            if (option.get_positional())
            {
                return "\\fI" + Roff(option.get_single_name()) + "\\fR";
            }
            auto const value = option.get_option_text();
            return "\\fB" + Roff("--" + option.get_lnames().front()) + "\\fR" +
                   (value.empty() ? "" : " \\fI" + Roff(value) + "\\fR");
        }

        std::string OptionsSection(CLI::App& app)
        {
            std::string text;
            for (auto const* const option : app.get_options())
            {
                text += ".TP\n" + Usage(*option) + "\n" + Roff(option->get_description()) + "\n";
            }
            return text;
        }

        // Notes and examples; the exit codes are the same for all.
        std::string FooterOf(CLI::App& app)
        {
            auto const footer = app.get_footer();
            return footer.substr(0, footer.find("\nExit codes:"));
        }

        std::string ExitCodes()
        {
            std::string text;
            for (auto const& [code, meaning] : exitCodeMeanings)
            {
                text += ".TP\n" + std::to_string(static_cast<int>(code)) + "\n" + Roff(meaning) + "\n";
            }
            return text;
        }

        std::string SubcommandSection(CLI::App& app, std::string const& before)
        {
            auto const name = before + app.get_name();
            auto text = ".SS " + Roff(name) + "\n" + Roff(app.get_description()) + ".\n" + OptionsSection(app) +
                        ".PP\n.nf\n" + Roff(FooterOf(app)) + "\n.fi\n";
            for (auto* const each : SubcommandsOf(app))
            {
                text += SubcommandSection(*each, name + " ");
            }
            return text;
        }

        // The command line is gone when an action runs: what is printed is made before.
        void AddPrinter(CLI::App& app, Action& chosen, char const* word, char const* purpose,
                        std::string (*make)(CLI::App&))
        {
            auto* const added = app.add_subcommand(word, purpose);
            added->callback([&app, &chosen, make] {
                auto* const root = app.get_parent() ? app.get_parent() : &app;
                chosen = [text = make(*root)] {
                    Print(text);
                    return ExitCode::Done;
                };
            });
            SetFooter(*added, {});
        }
    } // namespace

    std::string BashCompletion(CLI::App& app)
    {
        auto const subcommands = SubcommandsOf(app);
        std::string text =
            "# bash completion for vorlinkctl: source this file, or put it where bash looks for such files.\n"
            "_vorlinkctl()\n{\n    local words\n    case ${COMP_WORDS[1]-} in\n";
        for (auto* const each : subcommands)
        {
            text += "    " + each->get_name() + ") words=\"" + Joined(WordsOf(*each), " ") + "\" ;;\n";
        }
        text += "    *) words= ;;\n    esac\n    ((COMP_CWORD > 1)) || words=\"" + Joined(WordsOf(app), " ") +
                "\"\n    mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"${COMP_WORDS[COMP_CWORD]}\")\n}\n"
                "complete -o default -F _vorlinkctl vorlinkctl vorlinkctl.exe\n";
        return text;
    }

    std::string PowerShellCompletion(CLI::App& app)
    {
        std::string text =
            "# PowerShell completion for vorlinkctl: dot-source this file, from your profile for example.\n"
            "Register-ArgumentCompleter -Native -CommandName vorlinkctl, vorlinkctl.exe -ScriptBlock {\n"
            "    param($wordToComplete, $commandAst, $cursorPosition)\n    $words = @{\n";
        text += "        '' = '" + Joined(WordsOf(app), "', '") + "'\n";
        for (auto* const each : SubcommandsOf(app))
        {
            text += "        '" + each->get_name() + "' = '" + Joined(WordsOf(*each), "', '") + "'\n";
        }
        text += "    }\n    $subcommand = $commandAst.CommandElements | Select-Object -Skip 1 -First 1\n"
                "    $known = if ($subcommand -and $words.ContainsKey(\"$subcommand\")) { $words[\"$subcommand\"] } "
                "else { $words[''] }\n"
                "    $known | Where-Object { $_ -like \"$wordToComplete*\" } | ForEach-Object {\n"
                "        [System.Management.Automation.CompletionResult]::new($_)\n    }\n}\n";
        return text;
    }

    std::string ManualPage(CLI::App& app)
    {
        std::string text = ".TH VORLINKCTL 1 \"\" \"Vorlink " VORLINK_VERSION
                           "\" \"User Commands\"\n.SH NAME\nvorlinkctl \\- " +
                           Roff(app.get_description()) +
                           "\n.SH SYNOPSIS\n\\fBvorlinkctl\\fR \\fISUBCOMMAND\\fR [\\fIOPTION\\fR ...]\n"
                           ".SH OPTIONS\n" +
                           OptionsSection(app) + ".SH SUBCOMMANDS\n";
        for (auto* const each : SubcommandsOf(app))
        {
            text += SubcommandSection(*each, "");
        }
        text +=
            ".SH EXIT STATUS\n" + ExitCodes() +
            ".SH ENVIRONMENT\n.TP\n\\fBNO_COLOR\\fR\nWhere it is set, no colours unless \\-\\-color asks for them.\n"
            ".TP\n\\fBVORLINK_SCENARIO\\fR\nThe scenario of the simulated platform, where that one answers.\n"
            ".TP\n\\fBVORLINK_SIMULATOR_TRACE\\fR\nThe file in which the simulated platform leaves its trace.\n"
            ".SH FILES\n.TP\n\\fIMyLEData\\fR\nWhat the library has learnt of devices' LE sides, in the current "
            "folder.\n"
            ".TP\n\\fIlog.log\\fR\nThe library's log, with \\-\\-log, in the current folder.\n";
        return text;
    }

    std::string NearMiss(CLI::App& app, std::string const& word)
    {
        auto const chosen = app.get_subcommands();
        auto& where = chosen.empty() ? app : *chosen.front();
        auto const known = word.starts_with('-') ? OptionsOf(where) : NamesOf(SubcommandsOf(where));
        if (auto const nearest = Nearest(word, known))
        {
            return "Did you mean " + *nearest + "?\n";
        }
        if (word.starts_with('-'))
        {
            return "A name that begins with \"-\" goes behind \"--\".\n";
        }
        return chosen.empty() ? "There are: " + Joined(known, ", ") + ".\n"
                              : "A name that holds blanks goes in quotes.\n";
    }

    void AddReference(CLI::App& app, Action& chosen)
    {
        auto* const completion = app.add_subcommand("completion", "Prints completion for a shell");
        completion->require_subcommand(1);
        AddPrinter(*completion, chosen, "bash", "For bash", BashCompletion);
        AddPrinter(*completion, chosen, "powershell", "For PowerShell", PowerShellCompletion);
        SetFooter(*completion, {"completion bash", "completion powershell"});
        AddPrinter(app, chosen, "manual", "Prints the manual, a page for man(1)", ManualPage);
    }
} // namespace host
