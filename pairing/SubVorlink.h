// The one implementation of Vorlink.
#pragma once

#include "interface/Vorlink.h"
#include "pairing/Enumeration.h"

#include <map>
#include <string>

namespace vorlink
{
    class SubVorlink final : public Vorlink
    {
    public:
        bool Initialize() override;
        bool Uninitialize() override;
        void SetLogEnabled(bool enabled) override;
        void PairedDevice(std::string name, PairResultCallback callback) override;
        void UnpairedCurrent(std::string name, UnpairResultCallback callback) override;
        bool StartIosWatcher(IosDeviceCallback callback) override;
        void IosPairedDevicce(std::string name, PairResultCallback callback) override;

        // Begins a run over Bluetooth LE or Classic endpoints and returns at once; the devices arrive in the
        // queue. A run ends when the platform has enumerated the endpoints; one over all of them 3 seconds after its
        // start at the latest.
        void StartDiscovery(bool le, bool allEndpoints);

        // Takes devices until one matches, which stays in currentDevice as well; null when the run ended without.
        // le: an identifier that contains `name`. Otherwise: the device of that name.
        enumeration::DeviceInformation GetDeviceforName(std::string name, bool le);

        // Pairs a device; destDeviceName and pairResultCallback are set before. Returns once the request is
        // issued, and no longer needs `device` then.
        winrt::fire_and_forget PairingDevice(enumeration::DeviceInformation const& device);

        // Unpairs the LE endpoint whose identifier contains `destStr`, and reports through `callback` on the thread
        // that completes it. An error of the platform is logged and not reported.
        winrt::fire_and_forget UnpairBleDevice(std::string destStr, UnpairResultCallback callback);

    private:
        winrt::fire_and_forget UnpairClassicDevice(std::string name, UnpairResultCallback callback);

        // The host releases the storage without a destructor: what these hold is not given back then.
        enumeration::DeviceWatcher discoveryWatcher{nullptr};  // of the latest run
        std::map<std::string, std::string> unusedMap;          // stays empty
        enumeration::DeviceInformation currentDevice{nullptr}; // the latest taken
        std::string unusedText;                                // stays empty
    };
} // namespace vorlink
