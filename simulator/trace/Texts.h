// How values read in the trace.
#pragma once

#include "platform/abi/BluetoothValues.h"
#include "platform/abi/Enumeration.h"
#include "platform/abi/RadioValues.h"

#include <string>
#include <string_view>
#include <vector>

namespace simulator
{
    // An enumerated value without a name reads as its number.
    std::string Text(platform::AsyncStatus value);
    std::string Text(platform::DeviceInformationKind value);
    std::string Text(platform::DevicePairingKinds value);
    std::string Text(platform::DevicePairingProtectionLevel value);
    std::string Text(platform::DevicePairingResultStatus value);
    std::string Text(platform::DeviceUnpairingResultStatus value);
    std::string Text(platform::DeviceWatcherStatus value);
    std::string Text(platform::BluetoothAddressType value);
    std::string Text(platform::BluetoothConnectionStatus value);
    std::string Text(platform::BluetoothMajorClass value);
    std::string Text(platform::RadioAccessStatus value);
    std::string Text(platform::RadioKind value);
    std::string Text(platform::RadioState value);
    std::string Text(boolean value);
    std::string Text(UINT16 value);
    std::string Text(UINT32 value);
    std::string Text(INT32 value);
    std::string Text(UINT64 value);
    std::string CodeText(HRESULT value);                           // 0x8000000E
    std::string Quoted(std::string_view text);                     // "text", verbatim between the quotes
    std::string QuotedList(std::vector<std::string> const& texts); // ["a", "b"]
    std::string PlainList(std::vector<std::string> const& texts);  // [a, b]
} // namespace simulator
