#pragma once

#include "interface/Vorlink.h"

#include <stdexcept>

namespace host
{
    using VorlinkFactory = decltype(&getVorlinkPtr);

    // vorlink.dll cannot be used; what() says why and what to do.
    struct LibraryError : std::runtime_error
    {
        using std::runtime_error::runtime_error;
    };

    // Loads vorlink.dll from the program's own folder, and never from anywhere else.
    VorlinkFactory LoadVorlink();
} // namespace host
