#include "pairing/Log.h"
#include "pairing/NarrowText.h"
#include "pairing/SubVorlink.h"
#include "pairing/UnpairLeThread.h"

#include <windows.h>

#include <new>
#include <string>

namespace vorlink
{
    using enumeration::DeviceUnpairingResultStatus;

    namespace
    {
        constexpr char function[] = "SubVorlink::UnpairBleDevice";

        void LogError(winrt::hresult_error const& error)
        {
            VORLINK_LOG(1101, function, "exception -> %s", NarrowText(error.message(), CodePage::Utf8).c_str());
        }
    } // namespace

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
            auto const device = GetDeviceforName(destStr, true);
            if (!device)
            {
                // Nothing is left to unpair: the host is told the same as after a success.
                VORLINK_LOG(1071, function, "unpaired device failed");
                callback(true, 0);
                co_return;
            }
            auto const result = co_await winrt::resume_agile(device.Pairing().UnpairAsync());
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
            LogError(error);
        }
        catch (std::bad_alloc const&)
        {
            LogError(winrt::hresult_error(E_OUTOFMEMORY)); // what the platform's code for it is raised as
        }
    }
} // namespace vorlink
