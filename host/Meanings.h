// What each outcome means to a person. One table: the program's messages, its help and its documentation come from it.
#pragma once

#include "host/ExitCode.h"

#include <span>
#include <string_view>

namespace host
{
    enum class Family
    {
        Pairing,   // DevicePairingResultStatus
        Unpairing, // DeviceUnpairingResultStatus
        Silence,   // no answer came
    };

    struct Meaning
    {
        Family family;
        int value; // the platform's number; of a silence none, -1
        std::string_view name;
        std::string_view meaning; // follows "because", so to speak: small letter, no full stop
        std::string_view next;    // what to do: a sentence or two
        ExitCode code;
    };

    std::span<Meaning const> Meanings();

    // Null for one that the platform's documentation does not know.
    Meaning const* FindMeaning(Family family, std::string_view name);
} // namespace host
