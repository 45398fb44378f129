// How a subcommand tells what came of it, as text or as JSON.
#pragma once

#include "host/Learning.h"
#include "host/Operation.h"
#include "host/Outcome.h"
#include "host/Session.h"
#include "host/Subcommand.h"

namespace host
{
    // Returns the outcome's exit code.
    ExitCode PrintOutcome(Outcome const& outcome, char const* command, OutputOptions const& options);

    void PrintLesson(Lesson const& lesson, OutputOptions const& options);

    // How it went, on standard error, for who wants to know more.
    void PrintCourse(Session const& session, std::string const& asked, Clock::duration taken);

    // Of this run, as the library's log has them.
    void PrintRecords(Session const& session, OutputOptions const& options);
} // namespace host
