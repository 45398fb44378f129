#include "pairing/Log.h"
#include "pairing/NarrowText.h"
#include "pairing/SubVorlink.h"
#include "pairing/UnpairLeThread.h"

#include <windows.h>

namespace vorlink
{
    using enumeration::DeviceUnpairingResultStatus;

    namespace
    {
        constexpr char function[] = "SubVorlink::UnpairBleDevice";
    }

    void UnpairLeThread(SubVorlink& object, std::string destStr, UnpairResultCallback callback)
    {
        object.UnpairBleDevice(destStr, callback);
        for (int i = 0; i < 4; ++i)
        {
            Sleep(100);
        }
    }

    winrt::fire_and_forget SubVorlink::UnpairBleDevice(std::string destStr, UnpairResultCallback callback)
    {
        try
        {
            StartDiscovery(true, true);
            VORLINK_LOG(1066, function, "ble   destStr is %s ", destStr.c_str());
            auto const* const found = GetDeviceforName(destStr, true);
            if (!found)
            {
                // Nothing is left to unpair: the host is told the same as after a success.
                VORLINK_LOG(1071, function, "unpaired device failed");
                callback(true, 0);
                co_return;
            }
            auto const pairing = found->Pairing();
            auto const result = co_await pairing.UnpairAsync();
            if (result.Status() == DeviceUnpairingResultStatus::Unpaired)
            {
                callback(true, 0);
                VORLINK_LOG(1083, function, "unpaired device success");
            }
            else
            {
                VORLINK_LOG(1089, function, "unpaired device failed");
                callback(false, 0);
            }
        }
        catch (winrt::hresult_error const& error)
        {
            VORLINK_LOG(1101, function, "exception -> %s", NarrowText(error.message(), CodePage::Utf8).c_str());
        }
    }
} // namespace vorlink
