#pragma once

#include <string>

namespace vorlink
{
    // A thread's body: learns from the system's plug-and-play utility the LE address piece of a device that was
    // just paired and keeps it in the data store under `name`. Takes about 4 seconds. Always true.
    bool ReadLine(std::string name);
} // namespace vorlink
