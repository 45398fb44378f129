#include "bench/BareClient.h"

#include "pairing/Selector.h"

#include <windows.h>

#include <memory>
#include <stdexcept>
#include <string>

namespace bench
{
    using enumeration::DevicePairingKinds;

    namespace
    {
        // The system's own lock and signal, which cost the least of all that can wait.
        struct Search
        {
            std::wstring name;
            SRWLOCK lock{};
            CONDITION_VARIABLE ended{};
            enumeration::DeviceInformation device{nullptr};
            bool isOver = false;

            void End(enumeration::DeviceInformation const& found)
            {
                AcquireSRWLockExclusive(&lock);
                if (!isOver)
                {
                    device = found;
                    isOver = true;
                }
                ReleaseSRWLockExclusive(&lock);
                WakeConditionVariable(&ended);
            }

            enumeration::DeviceInformation Wait()
            {
                AcquireSRWLockExclusive(&lock);
                while (!isOver)
                {
                    SleepConditionVariableSRW(&ended, &lock, INFINITE, 0);
                }
                auto found = device;
                ReleaseSRWLockExclusive(&lock);
                return found;
            }
        };

        void Accept(enumeration::DeviceInformationCustomPairing const&,
                    enumeration::DevicePairingRequestedEventArgs const& args)
        {
            args.Accept();
        }
    } // namespace

    void BareClient::Pair(std::wstring_view name, Outcome outcome)
    {
        auto const device = Find(name);
        if (!device)
        {
            throw std::runtime_error("the bare client has not found its device");
        }
        Request(device, outcome);
    }

    enumeration::DeviceInformation BareClient::Find(std::wstring_view name)
    {
        auto const search = std::make_shared<Search>();
        search->name = name;
        m_watcher = enumeration::DeviceInformation::CreateWatcher(
            vorlink::Selector(false, false), nullptr, enumeration::DeviceInformationKind::AssociationEndpoint);
        m_added =
            m_watcher.Added(winrt::auto_revoke, [search](auto const&, enumeration::DeviceInformation const& device) {
                if (std::wstring_view(device.Name()) == search->name)
                {
                    search->End(device);
                }
            });
        // Without it the platform may report a device incompletely.
        m_updated = m_watcher.Updated(winrt::auto_revoke, [](auto const&, auto const&) {});
        m_completed = m_watcher.EnumerationCompleted(winrt::auto_revoke,
                                                     [search](auto const&, auto const&) { search->End(nullptr); });
        m_watcher.Start();
        return search->Wait();
    }

    winrt::fire_and_forget BareClient::Request(enumeration::DeviceInformation device, Outcome outcome) const
    {
        if (m_reading == Reading::AsTheLibrary)
        {
            auto const pairing = device.Pairing();
            (void)pairing.IsPaired();
            (void)pairing.CanPair();
            (void)device.Id(); // for a record
            (void)device.Id(); // for the report's address
        }
        auto const custom = device.Pairing().Custom();
        auto const token = custom.PairingRequested(Accept);
        auto const result = co_await custom.PairAsync(
            DevicePairingKinds::ConfirmOnly, enumeration::DevicePairingProtectionLevel::EncryptionAndAuthentication);
        custom.PairingRequested(token);
        outcome(result.Status());
    }
} // namespace bench
