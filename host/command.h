#pragma once

#include "host/arguments.h"
#include "host/exit_code.h"

// Lists, pairs or unpairs, and prints the outcome and, if asked for, the log's new records.
ExitCode RunCommand(Arguments const& arguments);
