// The vorlink.dll beside this code, and its one object.
#pragma once

#include "interface/Vorlink.h"
#include "interface/vorlink_c.h"

namespace wrapper
{
    // Loads it at the first call; one that fails throws a Failure, and the next call tries again. The object is never
    // released and neither DLL unloaded: an unpairing works on it until its report, which no host has to await, and
    // what the library has begun calls back into both.
    Vorlink& Library();

    // All zero before Library has loaded it.
    vorlink_version_number LibraryVersion();

    vorlink_version_number WrapperVersion();
} // namespace wrapper
