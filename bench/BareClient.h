// A client of the platform that does what any client that pairs a device by its name must do, and nothing else: no
// queue, no log, no report. What the library costs is told against it.
#pragma once

#include <winrt/Windows.Devices.Enumeration.h>
#include <winrt/Windows.Foundation.Collections.h>
#include <winrt/Windows.Foundation.h>

#include <string_view>

namespace bench
{
    namespace enumeration = winrt::Windows::Devices::Enumeration;

    class BareClient
    {
    public:
        using Outcome = void (*)(enumeration::DevicePairingResultStatus status);

        // What it does with a device before it asks for the pairing.
        enum class Reading
        {
            Nothing,
            AsTheLibrary, // the calls that the library promises, in its order
        };

        explicit BareClient(Reading reading = Reading::Nothing)
            : m_reading(reading)
        {
        }

        // Blocks until the device is found and asks for its pairing on this thread; throws when there is none.
        void Pair(std::wstring_view name, Outcome outcome);

    private:
        enumeration::DeviceInformation Find(std::wstring_view name);
        winrt::fire_and_forget Request(enumeration::DeviceInformation device, Outcome outcome) const;

        Reading m_reading;
        enumeration::DeviceWatcher m_watcher{nullptr};
        enumeration::DeviceWatcher::Added_revoker m_added;
        enumeration::DeviceWatcher::Updated_revoker m_updated;
        enumeration::DeviceWatcher::EnumerationCompleted_revoker m_completed;
    };
} // namespace bench
