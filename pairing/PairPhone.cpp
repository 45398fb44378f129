#include "pairing/Log.h"
#include "pairing/NarrowText.h"
#include "pairing/Report.h"
#include "pairing/SubVorlink.h"

#include <cstdint>

namespace vorlink
{
    namespace
    {
        constexpr char function[] = "SubVorlink::IosPairedDevicce";

        // The first endpoint of that name among those that the phone watcher has seen; null when there is none. The
        // size of the list is read once: an entry that the watcher removes meanwhile makes GetAt fail.
        enumeration::DeviceInformation FindPhone(std::string const& name)
        {
            auto const& list = Library().IosDeviceList;
            std::uint32_t const size = list.Size();
            for (std::uint32_t i = 0; i < size; ++i)
            {
                auto entry = list.GetAt(i);
                std::string const entryName = NarrowText(entry.Name(), CodePage::Utf8);
                VORLINK_LOG(1222, function, "tname is %s param name is %s", entryName.c_str(), name.c_str());
                if (entryName == name)
                {
                    VORLINK_LOG(1225, function, "find device ");
                    return entry;
                }
            }
            return nullptr;
        }
    } // namespace

    void SubVorlink::IosPairedDevicce(std::string name, PairResultCallback callback)
    {
        auto& library = Library();
        library.pairResultCallback = callback;
        if (auto const phone = FindPhone(name))
        {
            library.destDeviceName.Write(name);
            PairingDevice(phone);
            return;
        }
        VORLINK_LOG(1233, function, "Not Found dest  device");
        library.pairResultCallback.load()(MakeReport(0, false, name, {}));
    }
} // namespace vorlink
