// Looks once for the devices that there are, and lists them.
// Usage: flow_snapshot [FILTER]
#include "Common.h"

static constexpr wchar_t address[] = L"System.Devices.Aep.DeviceAddress";
static constexpr wchar_t signalStrength[] = L"System.Devices.Aep.SignalStrength";

static std::string Line(DeviceInformation const& device)
{
    auto const properties = device.Properties();
    auto const pairing = device.Pairing();
    auto const strength = winrt::unbox_value_or<std::int32_t>(properties.Lookup(signalStrength), 0);
    return Text(device) + " | " + winrt::to_string(device.Id()) + " | " +
           winrt::to_string(winrt::unbox_value_or<hstring>(properties.Lookup(address), L"?")) + " | " +
           std::to_string(strength) + " dBm | " + (pairing.IsPaired() ? "paired" : "not paired") + ", " +
           (pairing.CanPair() ? "can pair" : "cannot pair");
}

extern "C" int wmain(int argc, wchar_t** argv)
{
    return Run([&] {
        auto const requested = winrt::single_threaded_vector<hstring>({address, signalStrength});
        auto const devices = DeviceInformation::FindAllAsync(argc > 1 ? argv[1] : classicOrLe, requested,
                                                             DeviceInformationKind::AssociationEndpoint)
                                 .get();
        for (auto const& device : devices)
        {
            Say(Line(device));
        }
        Say(std::to_string(devices.Size()) + " found");
    });
}
