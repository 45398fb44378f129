// All that outlives a call and belongs to no object.
#pragma once

#include "interface/Vorlink.h"
#include "pairing/Enumeration.h"
#include "pairing/Guarded.h"
#include "pairing/LeData.h"
#include "pairing/SystemLock.h"

#include <atomic>
#include <deque>
#include <mutex>
#include <string>

namespace vorlink
{
    // Where the phone watcher is between two states, the thread that moves it has its watcher and its registrations for
    // itself.
    enum class PhoneWatch
    {
        Idle,
        Starting,
        Running,
        Stopping,
    };

    // Created when the library is loaded, destroyed in reverse order when it is unloaded.
    //
    // Several threads use all of it at a time: the host's, the platform's and the library's own. Locks keep the memory
    // sound; which of two concurrent operations is heard is the host's affair. Lock order: completionMutex may be held
    // while enumerationMutex is taken, iosWalkMutex while IosDeviceListMutex is, leFileMutex while leDataMutex is;
    // never the reverse, and no others together. None is held while a callback of the host runs.
    struct LibraryState
    {
        std::atomic<bool> logEnabled = false;
        std::atomic<IosDeviceCallback> iosDeviceCallback = nullptr;

        // Read by a pairing when its outcome arrives, not when it starts: the latest call's are reported.
        std::atomic<PairResultCallback> pairResultCallback = nullptr;
        Guarded<std::string> destDeviceName;

        // Never emptied between runs: what an earlier run left is taken first.
        std::deque<enumeration::DeviceInformation> deviceQueue;
        std::atomic<bool> enumerationFinished = false; // StartDiscovery clears it without the lock
        bool enumerationCancelled = false;             // cleared by each run; nothing sets it

        LeData leDataMap;       // the LE address piece of each paired device, by the device's name
        std::mutex leDataMutex; // guards leDataMap
        std::mutex leFileMutex; // held while the store's file is read or written: saves do not overtake each other

        SystemLock completionMutex; // guards deviceQueue and, but for that, enumerationFinished
        SystemSignal completionSignal;
        // Guards enumerationCancelled and each object's discoveryWatcher, and serialises the starts of runs.
        std::mutex enumerationMutex;
        std::mutex currentDeviceMutex; // guards each object's currentDevice, for a copy or a replacement

        std::mutex IosDeviceListMutex; // held for the removal of an entry, and for nothing else
        std::mutex iosWalkMutex;       // keeps apart what changes the list, or walks it where no error may come of it

        // Every endpoint that the phone watcher has seen, in order of arrival. Read and written on several threads
        // at a time: the vector keeps itself sound, but a walk by index may meet an end that has come nearer.
        winrt::Windows::Foundation::Collections::IObservableVector<enumeration::DeviceInformation> IosDeviceList =
            winrt::multi_threaded_observable_vector<enumeration::DeviceInformation>();

        std::mutex iosWatcherMutex; // guards these three, and is held for nothing longer
        PhoneWatch iosWatch = PhoneWatch::Idle;
        bool iosStopLeft = false;                       // a stop that came during a start: the start sees to it
        enumeration::DeviceWatcher IosWatcher{nullptr}; // the phone watcher, unless idle

        // Its registrations. The one for Removed stays after a stop, until the next start replaces it.
        enumeration::DeviceWatcher::Added_revoker iosAdded;
        enumeration::DeviceWatcher::Updated_revoker iosUpdated;
        enumeration::DeviceWatcher::Removed_revoker iosRemoved;
        enumeration::DeviceWatcher::EnumerationCompleted_revoker iosEnumerationCompleted;
        enumeration::DeviceWatcher::Stopped_revoker iosStopped;

        // The latest run's registrations. Nothing fills enumerationWatcher or registers for Stopped: a run's
        // watcher is its object's discoveryWatcher, which nobody stops.
        enumeration::DeviceWatcher enumerationWatcher{nullptr};
        enumeration::DeviceWatcher::Added_revoker enumerationAdded;
        enumeration::DeviceWatcher::Updated_revoker enumerationUpdated;
        enumeration::DeviceWatcher::EnumerationCompleted_revoker enumerationCompleted;
        enumeration::DeviceWatcher::Stopped_revoker enumerationStopped;
    };

    LibraryState& Library() noexcept;

    // From now on the state is not destroyed: at the end of a process the other threads are gone, some of
    // them with a lock in hand, and the platform's own modules may be gone too.
    void KeepLibraryState() noexcept;
} // namespace vorlink
