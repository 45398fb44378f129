// What is made of the command line itself: completion for shells, and the manual.
#pragma once

#include "host/Subcommand.h"

#include <string>

namespace host
{
    std::string BashCompletion(CLI::App& app);
    std::string PowerShellCompletion(CLI::App& app);

    // A page for man(1).
    std::string ManualPage(CLI::App& app);

    // What a word that nothing knows may have been meant to be, as a sentence.
    std::string NearMiss(CLI::App& app, std::string const& word);
} // namespace host
