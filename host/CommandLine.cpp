#include "host/CommandLine.h"

#include "host/Commands.h"
#include "host/Library.h"
#include "host/Reference.h"
#include "host/WideText.h"

#include <windows.h>
#include <shellapi.h>

#include <cstddef>
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
        std::string Versions()
        {
            auto const library = OwnVersion(L"vorlink.dll");
            return "vorlinkctl " VORLINK_VERSION "\nvorlink.dll " +
                   (library.empty() ? "is not beside the program" : library);
        }

        std::string NearMisses(CLI::App& app)
        {
            std::string misses;
            for (auto const& word : app.remaining(true))
            {
                misses += NearMiss(app, word);
            }
            return misses;
        }
    } // namespace

    std::variant<Action, EarlyExit> ReadCommandLine()
    {
        CLI::App app("Finds, pairs and unpairs Bluetooth devices, and tells what came of it.", "vorlinkctl");
        app.allow_windows_style_options(false); // a device's name may begin with a slash
        app.set_version_flag("--version", Versions, "Print the versions of program and library");
        app.require_subcommand(1);
        SetFooter(app, {});
        Action chosen;
        AddPair(app, chosen);
        AddUnpair(app, chosen);
        AddList(app, chosen);
        AddPhones(app, chosen);
        AddPairPhone(app, chosen);
        AddExplain(app, chosen);
        AddDoctor(app, chosen);
        AddLog(app, chosen);
        AddTrace(app, chosen);
        AddScenario(app, chosen);
        AddReference(app, chosen);
        auto words = ReversedUtf8Words();
        bool const nothingAsked = words.empty();
        try
        {
            app.parse(words);
        }
        catch (CLI::ParseError const& error)
        {
            std::ostringstream shown;
            bool const isHelp = app.exit(error, shown, shown) == 0;
            if (nothingAsked)
            {
                return EarlyExit{ExitCode::Usage, app.help()};
            }
            return EarlyExit{isHelp ? ExitCode::Done : ExitCode::Usage, shown.str() + (isHelp ? "" : NearMisses(app))};
        }
        return chosen;
    }
} // namespace host
