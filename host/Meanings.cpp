#include "host/Meanings.h"

#include <algorithm>

namespace host
{
    namespace
    {
        using enum ExitCode;

        // The platform's statuses mean what its documentation says of them; what to do is ours.
        constexpr Meaning meanings[] = {
            {Family::Pairing, 0, "Paired", "the device is paired now", "Use it.", Done},
            {Family::Pairing, 1, "NotReadyToPair", "the device is in no state in which it can be paired",
             "Put it into its pairing mode (often a long press until a light blinks) and try again.", Refused},
            {Family::Pairing, 2, "NotPaired", "the device is not paired, and the platform gives no further reason",
             "Put it into its pairing mode, keep it near and try again.", Refused},
            {Family::Pairing, 3, "AlreadyPaired", "the device has been paired with this PC before",
             "Nothing is left to do. If it does not work, unpair it and pair it again.", Refused},
            {Family::Pairing, 4, "ConnectionRejected", "the device turned the connection down",
             "Put it into its pairing mode, end its connections with other phones or PCs, and try again.", Refused},
            {Family::Pairing, 5, "TooManyConnections", "the device takes no more connections",
             "Disconnect it from another phone or PC first.", Refused},
            {Family::Pairing, 6, "HardwareFailure", "the platform reports a failure of the hardware",
             "Switch the device off and on; then the PC's Bluetooth. If it stays, try another PC or another device.",
             Refused},
            {Family::Pairing, 7, "AuthenticationTimeout", "nobody confirmed in time",
             "Try again, and confirm on the device at once if it asks.", Refused},
            {Family::Pairing, 8, "AuthenticationNotAllowed", "the device does not support this way of authenticating",
             "Pair it in the system's settings, which know other ways.", Refused},
            {Family::Pairing, 9, "AuthenticationFailure", "device and PC did not agree on the authentication",
             "Remove this PC from the device's own list of paired devices, then try again.", Refused},
            {Family::Pairing, 10, "NoSupportedProfiles", "the device offers nothing that this PC has a use for",
             "Look for the maker's driver or program; without it there is nothing to pair for.", Refused},
            {Family::Pairing, 11, "ProtectionLevelCouldNotBeMet",
             "the device cannot do the encryption with authentication that the library asks for",
             "Pair it in the system's settings, if its weaker protection is acceptable.", Refused},
            {Family::Pairing, 12, "AccessDenied", "this program may not pair the device",
             "Run it as a user who may change the PC's devices; ask the administrator about a policy.", Refused},
            {Family::Pairing, 13, "InvalidCeremonyData",
             "what was exchanged for the pairing, a PIN for example, was wrong",
             "Try again; a device that wants a PIN typed is paired in the system's settings.", Refused},
            {Family::Pairing, 14, "PairingCanceled", "the pairing was cancelled before it was complete",
             "Try again, and cancel neither on the device nor in the system's own window.", Refused},
            {Family::Pairing, 15, "OperationAlreadyInProgress",
             "another pairing or unpairing of this device is under way; the library reports nothing then",
             "Close the system's own Bluetooth window and other programs that pair, wait a minute, and try again.",
             NoAnswer},
            {Family::Pairing, 16, "RequiredHandlerNotRegistered",
             "the device asks for something that the library does not answer: a PIN to show, compare or type",
             "Pair it in the system's settings, which can show and take a PIN.", Refused},
            {Family::Pairing, 17, "RejectedByHandler", "the library left the device's request unanswered",
             "Pair it in the system's settings, which can show and take a PIN.", Refused},
            {Family::Pairing, 18, "RemoteDeviceHasAssociation", "the device is tied to something else already",
             "Remove the old pairing on the device itself, or reset it, then try again.", Refused},
            {Family::Pairing, 19, "Failed", "the platform failed without a known reason",
             "Bring the device near, switch Bluetooth off and on at both ends, and try again.", Refused},

            {Family::Unpairing, 0, "Unpaired", "the device is unpaired now",
             "On the device itself, remove this PC as well before you pair them again.", Done},
            {Family::Unpairing, 1, "AlreadyUnpaired", "the device was not paired", "Nothing is left to do.", Refused},
            {Family::Unpairing, 2, "OperationAlreadyInProgress",
             "another pairing or unpairing of this device is under way",
             "Close the system's own Bluetooth window and other programs that pair, wait a minute, and try again.",
             Refused},
            {Family::Unpairing, 3, "AccessDenied", "this program may not unpair the device",
             "Run it as a user who may change the PC's devices; ask the administrator about a policy.", Refused},
            {Family::Unpairing, 4, "Failed", "the platform failed without a known reason",
             "Switch Bluetooth off and on and try again, or remove the device in the system's settings.", Refused},

            {Family::Silence, -1, "NotFound", "no Classic device of this name was seen",
             "The library looks for Classic devices alone. Switch it on, bring it near, make it discoverable, and "
             "write its name exactly as it shows it; "
             "\"vorlinkctl "
             "list\" shows what is around.",
             NotFound},
            {Family::Silence, -1, "SearchPending", "the platform had not ended its search when the time was up",
             "Try again with a longer --timeout: a search takes up to 30 s. \"vorlinkctl doctor\" tests the radio.",
             NoAnswer},
            {Family::Silence, -1, "PairingPending",
             "the device was found and asked, and no answer came: it waits for a confirmation, is out of range, or "
             "another pairing of it is under way (which the library does not report)",
             "Look at the device and at the system's own windows, then \"vorlinkctl list\" whether it is paired; try "
             "again.",
             NoAnswer},
            {Family::Silence, -1, "UnpairingPending", "the platform was asked to unpair the device and did not answer",
             "Look with \"vorlinkctl list\" whether it is still paired; switch Bluetooth off and on and try again.",
             NoAnswer},
            {Family::Silence, -1, "LePending", "the Classic side is unpaired, and for the LE side no answer came",
             "Look with \"vorlinkctl list --le\" whether it is still paired; remove it in the system's settings if so.",
             NoAnswer},
            {Family::Silence, -1, "LeFailed", "the Classic side is unpaired, and on the LE side the platform failed",
             "Look with \"vorlinkctl list --le\" whether it is still paired; remove it in the system's settings if so.",
             Refused},
            {Family::Silence, -1, "Unclear",
             "the operation went silent, and a device whose name imitates the library's log hides how far it came",
             "Look with \"vorlinkctl list\" what is paired; keep the device with the strange name away and try again.",
             NoAnswer},
            {Family::Silence, -1, "Interrupted", "Ctrl+C ended the program before the answer came",
             "What was asked of the platform by then may still happen: look with \"vorlinkctl list\".", NoAnswer},
        };
    } // namespace

    std::span<Meaning const> Meanings()
    {
        return meanings;
    }

    Meaning const* FindMeaning(Family family, std::string_view name)
    {
        auto const* const found = std::ranges::find_if(
            meanings, [&](Meaning const& meaning) { return meaning.family == family && meaning.name == name; });
        return found == std::end(meanings) ? nullptr : found;
    }
} // namespace host
