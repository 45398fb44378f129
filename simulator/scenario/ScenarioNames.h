// The platform's names for what a scenario may choose.
#pragma once

#include "simulator/scenario/TableReader.h"

namespace simulator::names
{
    inline constexpr Name protocols[] = {
        {"classic", static_cast<std::int64_t>(Protocol::Classic)},
        {"le", static_cast<std::int64_t>(Protocol::Le)},
    };

    inline constexpr Name pairingKinds[] = {
        {"ConfirmOnly", 1},
        {"DisplayPin", 2},
        {"ProvidePin", 4},
        {"ConfirmPinMatch", 8},
        {"ProvidePasswordCredential", 16},
        {"ProvideAddress", 32},
    };

    inline constexpr Name pairingStatuses[] = {
        {"Paired", 0},
        {"NotReadyToPair", 1},
        {"NotPaired", 2},
        {"AlreadyPaired", 3},
        {"ConnectionRejected", 4},
        {"TooManyConnections", 5},
        {"HardwareFailure", 6},
        {"AuthenticationTimeout", 7},
        {"AuthenticationNotAllowed", 8},
        {"AuthenticationFailure", 9},
        {"NoSupportedProfiles", 10},
        {"ProtectionLevelCouldNotBeMet", 11},
        {"AccessDenied", 12},
        {"InvalidCeremonyData", 13},
        {"PairingCanceled", 14},
        {"OperationAlreadyInProgress", 15},
        {"RequiredHandlerNotRegistered", 16},
        {"RejectedByHandler", 17},
        {"RemoteDeviceHasAssociation", 18},
        {"Failed", 19},
    };

    inline constexpr Name unpairingStatuses[] = {
        {"Unpaired", 0}, {"AlreadyUnpaired", 1}, {"OperationAlreadyInProgress", 2}, {"AccessDenied", 3}, {"Failed", 4},
    };

    inline constexpr Name protectionLevels[] = {
        {"Default", 0},
        {"None", 1},
        {"Encryption", 2},
        {"EncryptionAndAuthentication", 3},
    };

    inline constexpr Name listingLanguages[] = {
        {"English", static_cast<std::int64_t>(ListingLanguage::English)},
        {"German", static_cast<std::int64_t>(ListingLanguage::German)},
        {"Chinese", static_cast<std::int64_t>(ListingLanguage::Chinese)},
    };

    inline constexpr Name earlyCloses[] = {
        {"Refused", static_cast<std::int64_t>(EarlyClose::Refused)},
        {"Abandoned", static_cast<std::int64_t>(EarlyClose::Abandoned)},
    };

    inline constexpr Name radioStates[] = {
        {"Unknown", 0},
        {"On", 1},
        {"Off", 2},
        {"Disabled", 3},
    };

    inline constexpr Name radioAccess[] = {
        {"Unspecified", 0},
        {"Allowed", 1},
        {"DeniedByUser", 2},
        {"DeniedBySystem", 3},
    };

    inline constexpr Name offWatchers[] = {
        {"Silent", 0},
        {"Abort", 1},
    };

    inline constexpr Name unpairEffects[] = {
        {"Updated", static_cast<std::int64_t>(UnpairEffect::Updated)},
        {"Removed", static_cast<std::int64_t>(UnpairEffect::Removed)},
    };
} // namespace simulator::names
