#include "pairing/PhoneWatcher.h"

#include "pairing/DetachedThread.h"
#include "pairing/Log.h"
#include "pairing/Selector.h"
#include "pairing/SubVorlink.h"

#include <windows.h>

#include <chrono>

namespace vorlink
{
    bool SubVorlink::StartIosWatcher(IosDeviceCallback callback)
    {
        auto& library = Library();
        library.iosDeviceCallback = callback;
        if (library.IosWatcher)
        {
            StopIosWatcher();
            return false;
        }
        if (library.IosDeviceList.Size() != 0)
        {
            library.IosDeviceList.Clear();
        }
        // Once started, its events may let go of IosWatcher before Start has returned.
        auto const watcher = enumeration::DeviceInformation::CreateWatcher(
            Selector(false, false), nullptr, enumeration::DeviceInformationKind::AssociationEndpoint);
        library.IosWatcher = watcher;
        library.iosAdded = watcher.Added(winrt::auto_revoke, OnDeviceAdded);
        library.iosUpdated = watcher.Updated(winrt::auto_revoke, OnDeviceUpdated);
        library.iosRemoved = watcher.Removed(winrt::auto_revoke, OnDeviceRemoved);
        library.iosEnumerationCompleted = watcher.EnumerationCompleted(winrt::auto_revoke, OnEnumerationCompleted);
        library.iosStopped = watcher.Stopped(winrt::auto_revoke, OnWatcherStopped);
        watcher.Start();
        StartDetached(ThreadEndWatcher);
        return true;
    }

    void StopIosWatcher()
    {
        auto& library = Library();
        if (!library.IosWatcher)
        {
            return;
        }
        library.iosAdded.revoke();
        library.iosUpdated.revoke();
        library.iosEnumerationCompleted.revoke();
        library.iosStopped.revoke();
        library.IosWatcher.Stop();
        library.IosWatcher = nullptr;
        // The message says "entry" although it comes last; readers of the log go by it.
        VORLINK_LOG(87, "StopIosWatcher", "entry StopIosWatcher  %d ", static_cast<int>(library.IosDeviceList.Size()));
    }

    void ThreadEndWatcher()
    {
        using Clock = std::chrono::steady_clock; // the system's time may be set meanwhile
        auto const start = Clock::now();
        while (Clock::now() - start < std::chrono::seconds(25))
        {
            Sleep(1);
        }
        VORLINK_LOG(178, "ThreadEndWatcher", "Exit ,call StopIosWatcher");
        StopIosWatcher();
    }
} // namespace vorlink
