#pragma once

#include "interface/Vorlink.h"

#include <string>

namespace host
{
    using VorlinkFactory = decltype(&getVorlinkPtr);

    // The function that a DLL in the program's own folder exports, and never one from anywhere else. The
    // std::runtime_error of one that cannot be used says why and what to do.
    void* LoadOwn(wchar_t const* library, char const* function);

    // The file version of one there, "1.0.0"; empty where it has none.
    std::string OwnVersion(wchar_t const* library);

    // Loads vorlink.dll from there.
    VorlinkFactory LoadVorlink();
} // namespace host
