// The subcommand explain.
#include "host/Commands.h"
#include "host/Meanings.h"
#include "host/Nearest.h"
#include "host/Terminal.h"
#include "host/Text.h"

#include <algorithm>
#include <cctype>
#include <stdexcept>
#include <string>
#include <vector>

namespace host
{
    namespace
    {
        struct Options
        {
            OutputOptions output;
            std::string status;
            bool markdown = false;
        };

        char const* NameOf(Family family)
        {
            constexpr char const* names[] = {"pairing", "unpairing", "silence"};
            return names[static_cast<std::size_t>(family)];
        }

        char const* TitleOf(Family family)
        {
            constexpr char const* titles[] = {"What the platform answers to a pairing (DevicePairingResultStatus)",
                                              "What it answers to an unpairing (DeviceUnpairingResultStatus)",
                                              "When no answer comes"};
            return titles[static_cast<std::size_t>(family)];
        }

        std::string NewSentence(std::string_view text)
        {
            auto sentence = std::string(text) + ".";
            sentence[0] = static_cast<char>(std::toupper(static_cast<unsigned char>(sentence[0])));
            return sentence;
        }

        // A paragraph below its heading.
        std::string Indented(std::string const& text)
        {
            auto wrapped = "  " + (OutputIsConsole() ? WrapColumns(text, OutputColumns() - 3) : text);
            for (auto at = wrapped.find('\n'); at != std::string::npos; at = wrapped.find('\n', at + 1))
            {
                wrapped.insert(at + 1, "  ");
            }
            return wrapped + "\n";
        }

        void PrintMeaning(Meaning const& meaning, OutputOptions const& output)
        {
            if (output.json)
            {
                PrintJson({{"event", "meaning"},
                           {"family", NameOf(meaning.family)},
                           {"name", meaning.name},
                           {"value", meaning.value < 0 ? Json() : Json(meaning.value)},
                           {"meaning", NewSentence(meaning.meaning)},
                           {"next", meaning.next},
                           {"exit_code", static_cast<int>(meaning.code)}});
                return;
            }
            auto const colour = meaning.code == ExitCode::Done ? Colour::Good : Colour::Caution;
            auto const number = meaning.value < 0 ? "" : std::to_string(meaning.value) + ", ";
            Print(Coloured(colour, meaning.name) +
                  Coloured(Colour::Faint,
                           " (" + number + "exit code " + std::to_string(static_cast<int>(meaning.code)) + ")") +
                  "\n");
            Print(Indented(NewSentence(meaning.meaning)) + Indented(std::string(meaning.next)));
        }

        // For documents.
        void PrintMarkdown()
        {
            Print("| outcome | exit code | meaning | what to do next |\n| --- | --- | --- | --- |\n");
            for (auto const& meaning : Meanings())
            {
                auto const number = meaning.value < 0 ? "" : " (" + std::to_string(meaning.value) + ")";
                Print("| `" + std::string(meaning.name) + "`" + number + " | " +
                      std::to_string(static_cast<int>(meaning.code)) + " | " + NewSentence(meaning.meaning) + " | " +
                      std::string(meaning.next) + " |\n");
            }
        }

        bool IsNamed(Meaning const& meaning, std::string const& name)
        {
            return std::ranges::equal(meaning.name, name, [](char one, char other) {
                return std::tolower(static_cast<unsigned char>(one)) == std::tolower(static_cast<unsigned char>(other));
            });
        }

        std::string NotAStatus(std::string const& name)
        {
            std::vector<std::string> names;
            for (auto const& meaning : Meanings())
            {
                if (IsNamed(meaning, name))
                {
                    return {};
                }
                names.emplace_back(meaning.name);
            }
            auto const nearest = Nearest(name, names);
            return "no outcome is called " + Quoted(name) +
                   (nearest ? "; did you mean " + *nearest + "?" : "; \"vorlinkctl explain\" lists them");
        }

        // "DevicePairingResultStatus::Failed" is what the log says.
        std::string WithoutType(std::string name)
        {
            auto const colons = name.rfind("::");
            return colons == std::string::npos ? name : name.substr(colons + 2);
        }

        ExitCode RunExplain(Options const& options)
        {
            if (options.markdown)
            {
                PrintMarkdown();
                return ExitCode::Done;
            }
            char const* title = nullptr;
            for (auto const& meaning : Meanings())
            {
                if (!options.status.empty() && !IsNamed(meaning, options.status))
                {
                    continue;
                }
                if (title != TitleOf(meaning.family) && !options.output.json)
                {
                    Print((title ? "\n" : "") + Coloured(Colour::Bold, TitleOf(meaning.family)) + "\n\n");
                    title = TitleOf(meaning.family);
                }
                PrintMeaning(meaning, options.output);
            }
            return ExitCode::Done;
        }
    } // namespace

    void AddExplain(CLI::App& app, Action& chosen)
    {
        auto const command = AddSubcommand<Options>(app, chosen, "explain",
                                                    "Says what an outcome means, and what to do next", RunExplain);
        command.app.add_option("STATUS", command.options.status, "Its name; without one, all of them")
            ->option_text(" ")
            ->transform(WithoutType)
            ->check(CLI::Validator(NotAStatus, ""));
        command.app.add_flag("--markdown", command.options.markdown, "All of them as a table for a document");
        SetFooter(command.app, {"explain", "explain ConnectionRejected"});
    }
} // namespace host
