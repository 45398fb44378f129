// The values that Windows.Devices.Radios enumerates. Nothing here needs Windows.
#pragma once

#include <cstdint>

namespace platform
{
    enum class RadioState : std::int32_t
    {
        Unknown = 0,
        On = 1,
        Off = 2,
        Disabled = 3,
    };

    enum class RadioKind : std::int32_t
    {
        Other = 0,
        WiFi = 1,
        MobileBroadband = 2,
        Bluetooth = 3,
        FM = 4,
    };

    enum class RadioAccessStatus : std::int32_t
    {
        Unspecified = 0,
        Allowed = 1,
        DeniedByUser = 2,
        DeniedBySystem = 3,
    };
} // namespace platform
