#include "pairing/SubVorlink.h"

#include "pairing/LibraryState.h"

namespace vorlink
{
    void SubVorlink::SetLogEnabled(bool enabled)
    {
        Library().logEnabled = enabled;
    }

    bool SubVorlink::StartIosWatcher(IosDeviceCallback callback)
    {
        Library().iosDeviceCallback = callback;
        return false;
    }

    void SubVorlink::IosPairedDevicce(std::string, PairResultCallback) {}
} // namespace vorlink
