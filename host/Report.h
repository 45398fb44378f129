// How a subcommand tells what came of it, as text or as JSON.
#pragma once

#include "host/Learning.h"
#include "host/Outcome.h"
#include "host/Session.h"
#include "host/Subcommand.h"

namespace host
{
    // Returns the outcome's exit code.
    ExitCode PrintOutcome(Outcome const& outcome, char const* command, OutputOptions const& options);

    void PrintLesson(Lesson const& lesson, OutputOptions const& options);

    // Of this run, as the library's log has them.
    void PrintRecords(Session const& session, OutputOptions const& options);
} // namespace host
