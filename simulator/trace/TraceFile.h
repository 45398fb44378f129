// The file that VORLINK_SIMULATOR_TRACE names, to which the trace goes while the program runs.
#pragma once

#include "simulator/trace/TraceLine.h"

namespace simulator
{
    // When the line is whole. A file that cannot be written is told once.
    void WriteToTraceFile(TraceLine const& line);

    // Whoever has changed the variable since then is heard.
    void ReopenTraceFile();
} // namespace simulator
