#pragma once

#include "interface/Vorlink.h"

#include <string>

namespace vorlink
{
    class SubVorlink;

    // A thread's body: unpairs the LE endpoint whose identifier contains `destStr`. Ends before the platform
    // has answered; `callback` hears the answer, and the host keeps `object` until then.
    void UnpairLeThread(SubVorlink& object, std::string destStr, UnpairResultCallback callback);
} // namespace vorlink
