#pragma once

#include "pairing/Enumeration.h"

namespace vorlink
{
    // Removes a PairingRequested handler and throws when the platform refuses, which C++/WinRT's own removal
    // passes over in silence. The one place of the library that calls the platform without it.
    void RemovePairingRequested(enumeration::DeviceInformationCustomPairing const& custom, winrt::event_token token);
} // namespace vorlink
