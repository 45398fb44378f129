#include "pairing/Log.h"
#include "pairing/Report.h"
#include "pairing/SubVorlink.h"

namespace vorlink
{
    namespace
    {
        constexpr char function[] = "SubVorlink::PairedDevice";
    }

    void SubVorlink::PairedDevice(std::string name, PairResultCallback callback)
    {
        auto& library = Library();
        library.pairResultCallback = callback;
        VORLINK_LOG(1253, function, "Call  Pair entry name ->%s", name.c_str());
        StartDiscovery(false, false);
        if (auto const device = GetDeviceforName(name, false))
        {
            library.destDeviceName.Write(name);
            PairingDevice(device);
            return;
        }
        VORLINK_LOG(1260, function, "Not Found dest  device");
        callback(MakeReport(0, false, name, {}));
    }
} // namespace vorlink
