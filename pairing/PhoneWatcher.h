// The phone watcher: reports pairable Classic devices to the host, keeps every endpoint that it sees, and ends by
// itself. All its state is the library's, and no mutex of the library's guards it, but for one removal from the list.
#pragma once

#include "pairing/Enumeration.h"

namespace vorlink
{
    // Stops the watcher that runs, if one does; what it has seen stays. The handler of Removed stays registered: the
    // next start revokes it.
    void StopIosWatcher();

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
