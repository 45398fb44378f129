// Tells of the PC's adapter and its radio, and switches the radio.
// Usage: flow_radio [on|off]
#include "Common.h"

#include <winrt/Windows.Devices.Bluetooth.h>
#include <winrt/Windows.Devices.Radios.h>

#include <string_view>

using namespace winrt::Windows::Devices::Bluetooth;
using namespace winrt::Windows::Devices::Radios;

static std::string StateOf(Radio const& radio)
{
    static constexpr char const* names[] = {"Unknown", "On", "Off", "Disabled"};
    return winrt::to_string(radio.Name()) + ": " + NameOf(names, radio.State());
}

static std::string Text(RadioAccessStatus status)
{
    static constexpr char const* names[] = {"Unspecified", "Allowed", "DeniedByUser", "DeniedBySystem"};
    return NameOf(names, status);
}

extern "C" int wmain(int argc, wchar_t** argv)
{
    return Run([&] {
        auto const adapter = BluetoothAdapter::GetDefaultAsync().get();
        if (!adapter)
        {
            Say("There is no adapter.");
            return;
        }
        Say(std::string("Classic: ") + (adapter.IsClassicSupported() ? "yes" : "no") +
            ", LE: " + (adapter.IsLowEnergySupported() ? "yes" : "no"));
        auto const radio = adapter.GetRadioAsync().get();
        Say(StateOf(radio));
        if (argc > 1)
        {
            auto const state = std::wstring_view(argv[1]) == L"on" ? RadioState::On : RadioState::Off;
            Say("Access: " + Text(Radio::RequestAccessAsync().get()));
            Say("Switched: " + Text(radio.SetStateAsync(state).get()));
            Say(StateOf(radio));
        }
    });
}
