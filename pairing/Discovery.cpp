#include "pairing/DetachedThread.h"
#include "pairing/DiscoveryQueue.h"
#include "pairing/DiscoveryTimer.h"
#include "pairing/FixedWait.h"
#include "pairing/LibraryState.h"
#include "pairing/Selector.h"
#include "pairing/SubVorlink.h"

namespace vorlink
{
    using winrt::Windows::Foundation::Collections::IIterable;

    namespace
    {
        constexpr std::chrono::seconds searchLimit(3);
    }

    void DiscoveryTimer()
    {
        WaitOut(searchLimit);
        FinishDiscovery();
    }

    void SubVorlink::StartDiscovery(bool le, bool allEndpoints)
    {
        auto& library = Library();
        // Held to the end: the handlers of Added and Updated wait for it.
        std::lock_guard const lock(library.enumerationMutex);
        library.enumerationCancelled = false;

        IIterable<winrt::hstring> properties{nullptr};
        if (allEndpoints)
        {
            properties = winrt::single_threaded_vector<winrt::hstring>(
                {L"System.Devices.Aep.DeviceAddress", L"System.Devices.Aep.IsConnected"});
        }
        // The previous run's watcher is let go, not stopped.
        discoveryWatcher = enumeration::DeviceInformation::CreateWatcher(
            Selector(le, allEndpoints), properties, enumeration::DeviceInformationKind::AssociationEndpoint);
        library.enumerationAdded = discoveryWatcher.Added(winrt::auto_revoke, OnDiscoveryAdded);
        library.enumerationUpdated = discoveryWatcher.Updated(winrt::auto_revoke, OnDiscoveryUpdated);
        library.enumerationCompleted = discoveryWatcher.EnumerationCompleted(winrt::auto_revoke, OnDiscoveryCompleted);
        library.enumerationFinished = false;
        discoveryWatcher.Start();
        if (allEndpoints)
        {
            StartDetached(DiscoveryTimer);
        }
    }
} // namespace vorlink
