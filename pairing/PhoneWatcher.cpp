#include "pairing/PhoneWatcher.h"

#include "pairing/DetachedThread.h"
#include "pairing/FixedWait.h"
#include "pairing/Log.h"
#include "pairing/Selector.h"
#include "pairing/SubVorlink.h"

#include <mutex>
#include <utility>

namespace vorlink
{
    namespace
    {
        // False when a watcher is there already, or is on its way in or out.
        bool BeginStart()
        {
            auto& library = Library();
            std::lock_guard const lock(library.iosWatcherMutex);
            if (library.iosWatch != PhoneWatch::Idle)
            {
                return false;
            }
            library.iosWatch = PhoneWatch::Starting;
            library.iosStopLeft = false;
            return true;
        }

        // True when a stop has come meanwhile and is still to be done. A watcher that could not be started counts as
        // running. One that its own events have ended is no longer this start's affair.
        bool EndStart(enumeration::DeviceWatcher const& watcher)
        {
            auto& library = Library();
            std::lock_guard const lock(library.iosWatcherMutex);
            if (library.iosWatch != PhoneWatch::Starting || library.IosWatcher != watcher)
            {
                return false;
            }
            library.iosWatch = watcher ? PhoneWatch::Running : PhoneWatch::Idle;
            return std::exchange(library.iosStopLeft, false);
        }

        // `watcher` has it also when an error leaves this.
        void StartWatching(enumeration::DeviceWatcher& watcher)
        {
            auto& library = Library();
            ClearIosDeviceList();
            watcher = enumeration::DeviceInformation::CreateWatcher(
                Selector(false, false), nullptr, enumeration::DeviceInformationKind::AssociationEndpoint);
            {
                std::lock_guard const lock(library.iosWatcherMutex);
                library.IosWatcher = watcher;
            }
            library.iosAdded = watcher.Added(winrt::auto_revoke, OnDeviceAdded);
            library.iosUpdated = watcher.Updated(winrt::auto_revoke, OnDeviceUpdated);
            library.iosRemoved = watcher.Removed(winrt::auto_revoke, OnDeviceRemoved);
            library.iosEnumerationCompleted = watcher.EnumerationCompleted(winrt::auto_revoke, OnEnumerationCompleted);
            library.iosStopped = watcher.Stopped(winrt::auto_revoke, OnWatcherStopped);
            watcher.Start(); // its events may empty IosWatcher before this returns
        }

        // False when there is nothing to stop, or another thread sees to it.
        bool BeginStop()
        {
            auto& library = Library();
            std::lock_guard const lock(library.iosWatcherMutex);
            library.iosStopLeft = library.iosWatch == PhoneWatch::Starting;
            if (library.iosWatch != PhoneWatch::Running)
            {
                return false;
            }
            library.iosWatch = PhoneWatch::Stopping;
            return true;
        }

        void EndStop(PhoneWatch watch)
        {
            auto& library = Library();
            enumeration::DeviceWatcher stopped{nullptr}; // released when the lock is free
            std::lock_guard const lock(library.iosWatcherMutex);
            library.iosWatch = watch;
            if (watch == PhoneWatch::Idle)
            {
                std::swap(stopped, library.IosWatcher);
            }
        }
    } // namespace

    bool SubVorlink::StartIosWatcher(IosDeviceCallback callback)
    {
        Library().iosDeviceCallback = callback;
        if (!BeginStart())
        {
            StopIosWatcher();
            return false;
        }
        enumeration::DeviceWatcher watcher{nullptr};
        try
        {
            StartWatching(watcher);
        }
        catch (...)
        {
            EndStart(watcher);
            throw;
        }
        if (EndStart(watcher))
        {
            StopIosWatcher();
        }
        StartDetached(ThreadEndWatcher);
        return true;
    }

    void StopIosWatcher()
    {
        if (!BeginStop())
        {
            return;
        }
        auto& library = Library();
        library.iosAdded.revoke();
        library.iosUpdated.revoke();
        library.iosEnumerationCompleted.revoke();
        library.iosStopped.revoke();
        try
        {
            library.IosWatcher.Stop();
        }
        catch (...)
        {
            EndStop(PhoneWatch::Running);
            throw;
        }
        EndStop(PhoneWatch::Idle);
        // The message says "entry" although it comes last; readers of the log go by it.
        VORLINK_LOG(87, "StopIosWatcher", "entry StopIosWatcher  %d ", static_cast<int>(library.IosDeviceList.Size()));
    }

    void TakeForStarted(enumeration::DeviceWatcher const& watcher)
    {
        auto& library = Library();
        std::lock_guard const lock(library.iosWatcherMutex);
        if (library.iosWatch == PhoneWatch::Starting && library.IosWatcher == watcher)
        {
            library.iosWatch = PhoneWatch::Running;
        }
    }

    void ClearIosDeviceList()
    {
        auto& library = Library();
        std::lock_guard const walk(library.iosWalkMutex);
        if (library.IosDeviceList.Size() != 0)
        {
            library.IosDeviceList.Clear();
        }
    }

    void ThreadEndWatcher()
    {
        WaitOut(std::chrono::seconds(25));
        VORLINK_LOG(178, "ThreadEndWatcher", "Exit ,call StopIosWatcher");
        StopIosWatcher();
    }
} // namespace vorlink
