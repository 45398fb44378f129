// The phone watcher: reports pairable Classic devices to the host, keeps every endpoint that it sees, and ends by
// itself. All its state is the library's.
#pragma once

#include "pairing/Enumeration.h"

namespace vorlink
{
    // Stops the watcher that runs, if one does; what it has seen stays. The handler of Removed stays registered: the
    // next start revokes it. Of several callers at a time one does it and the others find nothing to do; what comes
    // during a start is done when the watcher has started. When the platform refuses, the watcher counts as running.
    void StopIosWatcher();

    // An event of the watcher that is being started tells that it has started: from now on it can be stopped.
    void TakeForStarted(enumeration::DeviceWatcher const& watcher);

    // Does nothing to a list that is empty.
    void ClearIosDeviceList();

    // A thread's body: 25 seconds after its start, stops the watcher that runs then, which need not be the one that
    // the thread was started with.
    void ThreadEndWatcher();

    // The watcher's handlers. None ever suspends, so each is done when the platform's event thread gets back control;
    // being fire-and-forget, they end the process by an error instead of handing it to the platform.
    winrt::fire_and_forget OnDeviceAdded(enumeration::DeviceWatcher sender, enumeration::DeviceInformation info);
    winrt::fire_and_forget OnDeviceUpdated(enumeration::DeviceWatcher sender,
                                           enumeration::DeviceInformationUpdate update);
    winrt::fire_and_forget OnDeviceRemoved(enumeration::DeviceWatcher sender,
                                           enumeration::DeviceInformationUpdate update);
    winrt::fire_and_forget OnEnumerationCompleted(enumeration::DeviceWatcher sender,
                                                  winrt::Windows::Foundation::IInspectable args);
    winrt::fire_and_forget OnWatcherStopped(enumeration::DeviceWatcher sender,
                                            winrt::Windows::Foundation::IInspectable args);
} // namespace vorlink
