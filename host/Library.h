#pragma once

#include "interface/Vorlink.h"

namespace host
{
    using VorlinkFactory = decltype(&getVorlinkPtr);

    // Loads vorlink.dll from the program's own folder, and never from anywhere else. The std::runtime_error of one that
    // cannot be used says why and what to do.
    VorlinkFactory LoadVorlink();
} // namespace host
