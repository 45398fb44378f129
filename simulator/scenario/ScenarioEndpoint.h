// What a scenario says of one endpoint.
#pragma once

#include "simulator/scenario/TableReader.h"

namespace simulator
{
    inline constexpr std::string_view nameProperty = "System.ItemNameDisplay";
    inline constexpr std::string_view containerProperty = "System.Devices.Aep.ContainerId";

    // What endpoints of one protocol alone have: a key of the device's, and the properties that begin so.
    inline constexpr std::string_view classOfDeviceKey = "class-of-device";
    inline constexpr std::string_view classicProperties = "System.Devices.Aep.Bluetooth.Cod.";
    inline constexpr std::string_view appearanceKey = "appearance";
    inline constexpr std::string_view leProperties = "System.Devices.Aep.Bluetooth.Le.";

    // An endpoint of which nothing has been said yet.
    Endpoint DefaultEndpoint(std::string adapter);

    // The keys that a device may give for itself, and again for one protocol alone.
    void ReadEndpoint(TableReader& reader, Endpoint& endpoint);
} // namespace simulator
