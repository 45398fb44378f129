#include "pairing/DetachedThread.h"
#include "pairing/LeStore.h"
#include "pairing/Log.h"
#include "pairing/NarrowText.h"
#include "pairing/SplitText.h"
#include "pairing/SubVorlink.h"
#include "pairing/UnpairLeThread.h"

namespace vorlink
{
    using enumeration::DeviceUnpairingResultStatus;

    namespace
    {
        constexpr char function[] = "SubVorlink::UnpairedCurrent";

        // The device's address as the identifier has it; empty when the identifier has none. Its value as a number
        // would go nowhere, so it is not parsed.
        std::string AddressPiece(winrt::hstring const& id)
        {
            auto const pieces = SplitText(NarrowText(id, CodePage::Utf8), "-");
            return pieces.size() > 1 ? pieces[1] : std::string();
        }
    } // namespace

    void SubVorlink::UnpairedCurrent(std::string name, UnpairResultCallback callback)
    {
        UnpairClassicDevice(std::move(name), callback);
    }

    winrt::fire_and_forget SubVorlink::UnpairClassicDevice(std::string name, UnpairResultCallback callback)
    {
        VORLINK_LOG(1145, function, "Entery unpaired  name-> %s", name.c_str());
        StartDiscovery(false, true);
        auto const device = GetDeviceforName(name, false);
        if (!device)
        {
            co_return;
        }
        // A host in a single-threaded apartment need not pump messages to hear of it.
        auto const result = co_await winrt::resume_agile(device.Pairing().UnpairAsync());
        if (result.Status() != DeviceUnpairingResultStatus::Unpaired)
        {
            callback(false, 0);
            co_return;
        }
        winrt::hstring const id = device.Id();
        VORLINK_LOG(1174, function, "unpaired Classic Blueth,start unpaired ble device %s", AddressPiece(id).c_str());
        std::string const destStr = GetLeData(name);
        VORLINK_LOG(1177, function, "device Id -> %s", destStr.c_str());
        if (destStr.empty())
        {
            VORLINK_LOG(1180, function, "ble data is bad ");
            callback(true, 0);
            co_return;
        }
        StartDetached([this, destStr, callback] { UnpairLeThread(*this, destStr, callback); });
    }
} // namespace vorlink
