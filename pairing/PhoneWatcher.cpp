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
        constexpr std::chrono::seconds watchLimit(25);

        enum class Turn
        {
            Start,
            Stop,
            Nothing, // another thread is at it; a stop that meets a start is left to that
        };

        // What the caller has to do, decided in one step: between two, others might start or stop.
        Turn TakeTurn(bool mayStart)
        {
            auto& library = Library();
            std::lock_guard const lock(library.iosWatcherMutex);
            switch (library.iosWatch)
            {
            case PhoneWatch::Idle:
                if (mayStart)
                {
                    library.iosWatch = PhoneWatch::Starting;
                    library.iosStopLeft = false;
                    return Turn::Start;
                }
                break;
            case PhoneWatch::Starting:
                library.iosStopLeft = true;
                break;
            case PhoneWatch::Running:
                library.iosWatch = PhoneWatch::Stopping;
                return Turn::Stop;
            case PhoneWatch::Stopping:
                break;
            }
            return Turn::Nothing;
        }

        // A watcher that its own events have ended is no longer this start's affair.
        bool IsStarting(enumeration::DeviceWatcher const& watcher)
        {
            return Library().iosWatch == PhoneWatch::Starting &&
                   winrt::get_abi(Library().IosWatcher) == winrt::get_abi(watcher);
        }

        // Stop: one was left, and is the caller's to do.
        Turn EndStart(enumeration::DeviceWatcher const& watcher)
        {
            auto& library = Library();
            std::lock_guard const lock(library.iosWatcherMutex);
            if (!IsStarting(watcher))
            {
                return Turn::Nothing;
            }
            library.iosWatch = library.iosStopLeft ? PhoneWatch::Stopping : PhoneWatch::Running;
            return library.iosStopLeft ? Turn::Stop : Turn::Nothing;
        }

        // The watcher that it has made counts as running, and a stop that was left is dropped: the host, which hears of
        // the error, stops it by its next call.
        void GiveUpStart(enumeration::DeviceWatcher const& watcher)
        {
            auto& library = Library();
            std::lock_guard const lock(library.iosWatcherMutex);
            if (IsStarting(watcher))
            {
                library.iosWatch = watcher ? PhoneWatch::Running : PhoneWatch::Idle;
            }
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

        // Of the thread whose turn it is.
        void StopWatching()
        {
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
            auto const size = static_cast<int>(library.IosDeviceList.Size());
            // The message says "entry" although it comes last; readers of the log go by it.
            VORLINK_LOG(87, "StopIosWatcher", "entry StopIosWatcher  %d ", size);
        }
    } // namespace

    bool SubVorlink::StartIosWatcher(IosDeviceCallback callback)
    {
        Library().iosDeviceCallback = callback;
        auto const turn = TakeTurn(true);
        if (turn != Turn::Start)
        {
            if (turn == Turn::Stop)
            {
                StopWatching();
            }
            return false;
        }
        enumeration::DeviceWatcher watcher{nullptr};
        try
        {
            StartWatching(watcher);
            StartDetached(ThreadEndWatcher);
        }
        catch (...)
        {
            GiveUpStart(watcher);
            throw;
        }
        if (EndStart(watcher) == Turn::Stop)
        {
            StopWatching();
        }
        return true;
    }

    void StopIosWatcher()
    {
        if (TakeTurn(false) == Turn::Stop)
        {
            StopWatching();
        }
    }

    void TakeForStarted(enumeration::DeviceWatcher const& watcher)
    {
        auto& library = Library();
        std::lock_guard const lock(library.iosWatcherMutex);
        if (IsStarting(watcher))
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
        WaitOut(watchLimit);
        VORLINK_LOG(178, "ThreadEndWatcher", "Exit ,call StopIosWatcher");
        StopIosWatcher();
    }
} // namespace vorlink
