#include "pairing/Log.h"
#include "pairing/NarrowText.h"
#include "pairing/PhoneWatcher.h"

#include <cstdint>
#include <mutex>
#include <string>

namespace vorlink
{
    using winrt::Windows::Foundation::IInspectable;

    winrt::fire_and_forget OnDeviceAdded(enumeration::DeviceWatcher, enumeration::DeviceInformation info)
    {
        auto& library = Library();
        std::wstring const name(info.Name());
        if (!info.Pairing().IsPaired() && info.Pairing().CanPair() && !name.empty())
        {
            std::string const narrowName = NarrowText(info.Name(), CodePage::Utf8);
            VORLINK_LOG(111, "OnDeviceAdded", "OnDeviceAdded    name = %s ", narrowName.c_str());
            library.iosDeviceCallback.load()(name.c_str(), static_cast<std::uint32_t>(name.size()));
        }
        std::lock_guard const walk(library.iosWalkMutex);
        library.IosDeviceList.Append(info);
        co_return;
    }

    winrt::fire_and_forget OnDeviceUpdated(enumeration::DeviceWatcher, enumeration::DeviceInformationUpdate update)
    {
        auto& library = Library();
        std::lock_guard const walk(library.iosWalkMutex);
        auto const& list = library.IosDeviceList;
        std::uint32_t const size = list.Size();
        for (std::uint32_t i = 0; i < size; ++i)
        {
            auto const entry = list.GetAt(i);
            if (entry.Id() == update.Id())
            {
                entry.Update(update);
                break;
            }
        }
        co_return;
    }

    winrt::fire_and_forget OnDeviceRemoved(enumeration::DeviceWatcher, enumeration::DeviceInformationUpdate update)
    {
        auto& library = Library();
        std::lock_guard const walk(library.iosWalkMutex);
        auto const& list = library.IosDeviceList;
        std::uint32_t const size = list.Size();
        for (std::uint32_t i = 0; i < size; ++i)
        {
            if (list.GetAt(i).Id() == update.Id())
            {
                std::lock_guard const lock(library.IosDeviceListMutex);
                list.RemoveAt(i);
                break;
            }
        }
        co_return;
    }

    winrt::fire_and_forget OnEnumerationCompleted(enumeration::DeviceWatcher sender, IInspectable)
    {
        TakeForStarted(sender);
        StopIosWatcher();
        co_return;
    }

    winrt::fire_and_forget OnWatcherStopped(enumeration::DeviceWatcher, IInspectable)
    {
        co_return; // not called for a stop of ours, which revokes it before
    }
} // namespace vorlink
