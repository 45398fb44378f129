#include "pairing/DiscoveryQueue.h"
#include "pairing/FormatText.h"
#include "pairing/Log.h"
#include "pairing/NarrowText.h"
#include "pairing/SubVorlink.h"

#include <mutex>
#include <string_view>
#include <utility>

namespace vorlink
{
    namespace
    {
        constexpr char function[] = "SubVorlink::GetDeviceforName";
        constexpr std::string_view leMarker = "BluetoothLE#BluetoothLE";

        // A name this long names a device by being part of its name; a shorter one must be all of it.
        constexpr std::size_t containmentLength = 14;

        bool Contains(std::string_view text, std::string_view part)
        {
            return text.find(part) != std::string_view::npos;
        }

        bool Matches(std::string_view candidate, std::string_view name, bool le)
        {
            if (le)
            {
                return Contains(candidate, name) && Contains(candidate, leMarker);
            }
            return name.size() < containmentLength ? candidate == name : Contains(candidate, name);
        }

        // The lines of the two records of a match.
        struct MatchLines
        {
            int names;
            int state;
        };

        MatchLines LinesFor(std::string_view name, bool le)
        {
            if (le)
            {
                return {423, 425};
            }
            return name.size() < containmentLength ? MatchLines{435, 437} : MatchLines{444, 446};
        }

        void LogMatch(enumeration::DeviceInformation const& device, std::string const& candidate,
                      std::string const& name, bool le)
        {
            auto const lines = LinesFor(name, le);
            VORLINK_LOG(lines.names, function, "tname  is %s ,name is %s ", candidate.c_str(), name.c_str());
            auto const pairing = device.Pairing();
            bool const isPaired = pairing.IsPaired();
            bool const canPair = pairing.CanPair();
            winrt::hstring const id = device.Id();
            VORLINK_LOG(lines.state, function, "%s id is: %s  ,pair status : %d , isPaired is:  %d",
                        le ? "BLE   " : "CLassic", NarrowText(id, CodePage::Utf8).c_str(), canPair, isPaired);
        }

        // An unpairing's LE side uses the object's slot while the host calls again: each lookup has references of its
        // own, and the slot is read and replaced whole.
        enumeration::DeviceInformation Held(enumeration::DeviceInformation const& slot)
        {
            std::lock_guard const lock(Library().currentDeviceMutex);
            return slot;
        }

        void Hold(enumeration::DeviceInformation& slot, enumeration::DeviceInformation device)
        {
            std::lock_guard const lock(Library().currentDeviceMutex);
            std::swap(slot, device);
        }
    } // namespace

    enumeration::DeviceInformation SubVorlink::GetDeviceforName(std::string name, bool le)
    {
        VORLINK_LOG(399, function, "%s", FormatWithoutArguments(name).c_str());
        // Woken with nothing new, the device already held is tested again, also one of an earlier lookup.
        auto device = Held(currentDevice);
        for (int taken = TakeDevice(device); taken != RunFinished; taken = TakeDevice(device))
        {
            if (!device)
            {
                continue; // woken before the first device ever
            }
            if (taken == TookDevice)
            {
                Hold(currentDevice, device);
            }
            winrt::hstring const text = le ? device.Id() : device.Name();
            std::string const candidate = NarrowText(text, CodePage::Oem);
            VORLINK_LOG(416, function, "%s", NarrowText(text, CodePage::Ansi).c_str());
            if (Matches(candidate, name, le))
            {
                if (le)
                {
                    FinishDiscovery();
                }
                LogMatch(device, candidate, name, le);
                return device;
            }
        }
        return nullptr;
    }
} // namespace vorlink
