#pragma once

#include "host/Interruption.h"
#include "host/Json.h"
#include "host/Progress.h"
#include "host/Session.h"

#include <string>
#include <vector>

namespace host
{
    // What the library has learnt of a device that was paired.
    struct Lesson
    {
        std::string name; // "Learnt", "NoListing", ...
        std::string text;
        std::vector<std::string> warnings;
        Json facts;
    };

    // After a pairing the library's reader notes the device's LE side in its data store, some 4 s later and on a thread
    // that ends with the process. Waits for it, and keeps the entry for `name` in the user's data store. `address`: the
    // paired device's.
    Lesson Learn(Session& session, std::string const& name, std::string const& address,
                 Interruption const& interruption, Progress& progress);
} // namespace host
