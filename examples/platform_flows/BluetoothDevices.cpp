// Lists Bluetooth devices by protocol and by whether they are paired, with their addresses, and tells who is connected.
// Usage: flow_bluetooth_devices
#include "Common.h"

#include <winrt/Windows.Devices.Bluetooth.h>

using namespace winrt::Windows::Devices::Bluetooth;

static std::string AddressText(std::uint64_t address)
{
    char text[18];
    std::snprintf(text, sizeof text, "%02x:%02x:%02x:%02x:%02x:%02x", static_cast<unsigned>(address >> 40 & 0xFF),
                  static_cast<unsigned>(address >> 32 & 0xFF), static_cast<unsigned>(address >> 24 & 0xFF),
                  static_cast<unsigned>(address >> 16 & 0xFF), static_cast<unsigned>(address >> 8 & 0xFF),
                  static_cast<unsigned>(address & 0xFF));
    return text;
}

// The selector names the kind of device, so that none has to be given.
template <typename Device>
void List(char const* title, bool paired)
{
    Say(title);
    for (auto const& found : DeviceInformation::FindAllAsync(Device::GetDeviceSelectorFromPairingState(paired)).get())
    {
        auto const device = Device::FromIdAsync(found.Id()).get();
        if (!device) // it has left meanwhile
        {
            continue;
        }
        bool const connected = device.ConnectionStatus() == BluetoothConnectionStatus::Connected;
        Say("  " + winrt::to_string(device.Name()) + ", " + AddressText(device.BluetoothAddress()) +
            (connected ? ", connected" : ""));
        device.Close();
    }
}

extern "C" int wmain(int, wchar_t**)
{
    return Run([] {
        List<BluetoothDevice>("Classic, paired:", true);
        List<BluetoothDevice>("Classic, not paired:", false);
        List<BluetoothLEDevice>("LE, paired:", true);
        List<BluetoothLEDevice>("LE, not paired:", false);
    });
}
