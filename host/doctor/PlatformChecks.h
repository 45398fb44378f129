// The checks of what the platform does for the library.
#pragma once

#include "host/doctor/Finding.h"

#include <winrt/Windows.Devices.Bluetooth.h>
#include <winrt/Windows.Devices.Radios.h>

#include <string>
#include <vector>

namespace host
{
    enum class Answering
    {
        Windows,
        Simulator,
        Wine, // its own class, which finds nothing, and on which a watcher's handlers crash
        Nobody,
    };

    struct PlatformFinding
    {
        Finding finding;
        Answering answering;
    };

    // Which module has the class that finds devices.
    PlatformFinding CheckPlatform();

    // Looks around for some seconds, over both protocols.
    std::vector<Finding> CheckSearch();

    // The PC's adapter and its radio.
    std::vector<Finding> CheckAdapter();

    Finding Describe(winrt::Windows::Devices::Bluetooth::BluetoothAdapter const& adapter); // null: there is none
    Finding Describe(winrt::Windows::Devices::Radios::RadioState state);
} // namespace host
