// The subcommands; each adds itself to the command line.
#pragma once

#include "host/Subcommand.h"

namespace host
{
    void AddPair(CLI::App& app, Action& chosen);
    void AddUnpair(CLI::App& app, Action& chosen);
    void AddList(CLI::App& app, Action& chosen);
    void AddPhones(CLI::App& app, Action& chosen);
    void AddPairPhone(CLI::App& app, Action& chosen);
    void AddExplain(CLI::App& app, Action& chosen);
    void AddDoctor(CLI::App& app, Action& chosen);
    void AddLog(CLI::App& app, Action& chosen);
    void AddTrace(CLI::App& app, Action& chosen);
    void AddScenario(CLI::App& app, Action& chosen);

    // completion and manual; after all others, which they tell of.
    void AddReference(CLI::App& app, Action& chosen);
} // namespace host
