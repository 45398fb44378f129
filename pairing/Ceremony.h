#pragma once

#include "pairing/Enumeration.h"

namespace vorlink
{
    // Answers the platform's pairing request without a user: accepts what needs a confirmation at most.
    void OnPairingRequested(enumeration::DeviceInformationCustomPairing const& sender,
                            enumeration::DevicePairingRequestedEventArgs const& args);
} // namespace vorlink
