// Where a discovery run meets its taker: watcher events come in on the platform's threads, the host's
// thread takes one device at a time.
#pragma once

#include "pairing/Enumeration.h"

namespace vorlink
{
    enum Taken : int
    {
        TookNothing = 0, // woken with nothing to take; the run goes on
        TookDevice = 1,  // the oldest device was moved into the slot
        RunFinished = 2, // the run has ended and nothing is queued
    };

    // Waits until there is something to tell, without a limit.
    int TakeDevice(enumeration::DeviceInformation& slot);

    // Ends the current run, whichever it is, and wakes one taker.
    void FinishDiscovery();

    void OnDiscoveryAdded(enumeration::DeviceWatcher const& sender, enumeration::DeviceInformation const& device);
    void OnDiscoveryUpdated(enumeration::DeviceWatcher const& sender,
                            enumeration::DeviceInformationUpdate const& update);
    void OnDiscoveryCompleted(enumeration::DeviceWatcher const& sender,
                              winrt::Windows::Foundation::IInspectable const& args);
} // namespace vorlink
