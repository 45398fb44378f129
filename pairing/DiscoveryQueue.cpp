#include "pairing/DiscoveryQueue.h"

#include "pairing/LibraryState.h"

#include <utility>

namespace vorlink
{
    namespace
    {
        bool IsCancelled()
        {
            std::lock_guard const lock(Library().enumerationMutex);
            return Library().enumerationCancelled;
        }
    } // namespace

    int TakeDevice(enumeration::DeviceInformation& slot)
    {
        auto& library = Library();
        std::unique_lock lock(library.completionMutex);
        if (library.deviceQueue.empty())
        {
            if (library.enumerationFinished || IsCancelled())
            {
                return RunFinished;
            }
            // Once, and without a condition: an update wakes the taker too, and the taker decides.
            library.completionSignal.wait(lock);
            if (IsCancelled())
            {
                return RunFinished;
            }
            if (library.deviceQueue.empty())
            {
                return library.enumerationFinished ? RunFinished : TookNothing;
            }
        }
        slot = std::move(library.deviceQueue.front());
        library.deviceQueue.pop_front();
        return TookDevice;
    }

    void FinishDiscovery()
    {
        auto& library = Library();
        std::unique_lock lock(library.completionMutex);
        if (library.enumerationWatcher)
        {
            library.enumerationAdded.revoke();
            library.enumerationUpdated.revoke();
            library.enumerationCompleted.revoke();
            library.enumerationStopped.revoke();
            library.enumerationWatcher.Stop();
            library.enumerationWatcher = nullptr;
        }
        library.enumerationFinished = true;
        library.completionSignal.notify_one(std::move(lock));
    }

    void OnDiscoveryAdded(enumeration::DeviceWatcher const&, enumeration::DeviceInformation const& device)
    {
        if (IsCancelled())
        {
            return;
        }
        auto& library = Library();
        std::unique_lock lock(library.completionMutex);
        library.deviceQueue.push_back(device);
        library.completionSignal.notify_one(std::move(lock));
    }

    void OnDiscoveryUpdated(enumeration::DeviceWatcher const&, enumeration::DeviceInformationUpdate const& update)
    {
        if (IsCancelled())
        {
            return;
        }
        auto& library = Library();
        std::unique_lock lock(library.completionMutex);
        // Only the next device to be taken is brought up to date, once for each queued device.
        for (std::size_t i = 0; i < library.deviceQueue.size(); ++i)
        {
            auto const& front = library.deviceQueue.front();
            if (update.Id() == front.Id())
            {
                front.Update(update);
            }
        }
        library.completionSignal.notify_one(std::move(lock));
    }

    void OnDiscoveryCompleted(enumeration::DeviceWatcher const&, winrt::Windows::Foundation::IInspectable const&)
    {
        FinishDiscovery();
    }
} // namespace vorlink
