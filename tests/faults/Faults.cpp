#include "tests/faults/Faults.h"

#include <cstddef>

namespace test
{
    namespace
    {
        // The log's own calls fail in the first round alone: later the reader of the round before writes records as
        // well.
        // clang-format off: one row a line
        constexpr Fault faults[] = {
            {Flow::PairByName, "DeviceInformation.GetActivationFactory", 0, Learns::Host, 1, 0},
            {Flow::PairByName, "DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties", 0,
             Learns::Host, 1, 0},
            {Flow::PairByName, "DeviceWatcher.add_Added", 0, Learns::Host, 1, 0},
            {Flow::PairByName, "DeviceWatcher.add_Updated", 0, Learns::Host, 1, 0},
            {Flow::PairByName, "DeviceWatcher.add_EnumerationCompleted", 0, Learns::Host, 1, 0},
            {Flow::PairByName, "DeviceWatcher.Start", 0, Learns::Host, 1, 0},
            {Flow::PairByName, "DeviceInformation.get_Name", 0, Learns::Host, 2, 0},
            {Flow::PairByName, "DeviceInformation.get_Name", 1, Learns::Host, 3, 0},
            {Flow::PairByName, "DeviceInformation.get_Pairing", 0, Learns::Host, 5, 0},
            {Flow::PairByName, "DeviceInformationPairing.get_IsPaired", 0, Learns::Host, 5, 0},
            {Flow::PairByName, "DeviceInformationPairing.get_CanPair", 0, Learns::Host, 5, 0},
            {Flow::PairByName, "DeviceInformation.get_Id", 0, Learns::Host, 5, 0},
            {Flow::PairByName, "DeviceInformation.get_Id", 1, Learns::FailFast, 6, 0},
            {Flow::PairByName, "DeviceInformation.get_Pairing", 1, Learns::FailFast, 6, 0},
            {Flow::PairByName, "DeviceInformationPairing.get_Custom", 0, Learns::FailFast, 6, 0},
            {Flow::PairByName, "DeviceInformationCustomPairing.add_PairingRequested", 0, Learns::FailFast, 6, 0},
            {Flow::PairByName, "DeviceInformationCustomPairing.PairWithProtectionLevelAsync", 0, Learns::FailFast, 6,
             0},
            {Flow::PairByName, "AsyncOperation.get_Status", 0, Learns::FailFast, 6, 0},
            {Flow::PairByName, "AsyncOperation.put_Completed", 0, Learns::FailFast, 6, 0},
            {Flow::PairByName, "AsyncOperation.GetResults", 0, Learns::FailFast, 6, 0},
            {Flow::PairByName, "DeviceInformationCustomPairing.remove_PairingRequested", 0, Learns::FailFast, 6, 0},
            {Flow::PairByName, "DevicePairingResult.get_Status", 0, Learns::FailFast, 6, 0},
            {Flow::PairByName, "DevicePairingRequestedEventArgs.get_PairingKind", 0, Learns::Platform, 7, 1},
            {Flow::PairByName, "DevicePairingRequestedEventArgs.Accept", 0, Learns::Platform, 7, 1},
            {Flow::PairByName, "CreateThread", 0, Learns::FailFast, 6, 1},
            {Flow::PairByName, "fopen", 0, Learns::Nobody, 7, 1, When::FirstAlone},
            {Flow::PairByName, "fopen", 1, Learns::Nobody, 6, 1, When::FirstAlone},
            {Flow::PairByName, "_getcwd", 0, Learns::Nobody, 7, 1, When::FirstAlone},
            {Flow::PairPhone, "DeviceInformation.get_Name", 0, Learns::Host, 0, 0},
            {Flow::PairPhone, "DeviceInformation.get_Name", 1, Learns::Host, 1, 0},
            {Flow::PairPhone, "DeviceInformation.get_Id", 0, Learns::FailFast, 3, 0},
            {Flow::PairPhone, "DeviceInformation.get_Pairing", 0, Learns::FailFast, 3, 0},
            {Flow::PairPhone, "DeviceInformationPairing.get_Custom", 0, Learns::FailFast, 3, 0},
            {Flow::PairPhone, "DeviceInformationCustomPairing.add_PairingRequested", 0, Learns::FailFast, 3, 0},
            {Flow::PairPhone, "DeviceInformationCustomPairing.PairWithProtectionLevelAsync", 0, Learns::FailFast, 3, 0},
            {Flow::PairPhone, "AsyncOperation.get_Status", 0, Learns::FailFast, 3, 0},
            {Flow::PairPhone, "AsyncOperation.put_Completed", 0, Learns::FailFast, 3, 0},
            {Flow::PairPhone, "AsyncOperation.GetResults", 0, Learns::FailFast, 3, 0},
            {Flow::PairPhone, "DeviceInformationCustomPairing.remove_PairingRequested", 0, Learns::FailFast, 3, 0},
            {Flow::PairPhone, "DevicePairingResult.get_Status", 0, Learns::FailFast, 3, 0},
            {Flow::PairPhone, "DevicePairingRequestedEventArgs.get_PairingKind", 0, Learns::Platform, 4, 1},
            {Flow::PairPhone, "DevicePairingRequestedEventArgs.Accept", 0, Learns::Platform, 4, 1},
            {Flow::PairPhone, "CreateThread", 0, Learns::FailFast, 3, 1},
            {Flow::Unpair, "DeviceInformation.GetActivationFactory", 0, Learns::FailFast, 1, 0},
            {Flow::Unpair, "DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties", 0,
             Learns::FailFast, 1, 0},
            {Flow::Unpair, "DeviceWatcher.add_Added", 0, Learns::FailFast, 1, 0},
            {Flow::Unpair, "DeviceWatcher.add_Updated", 0, Learns::FailFast, 1, 0},
            {Flow::Unpair, "DeviceWatcher.add_EnumerationCompleted", 0, Learns::FailFast, 1, 0},
            {Flow::Unpair, "DeviceWatcher.Start", 0, Learns::FailFast, 1, 0},
            {Flow::Unpair, "CreateThread", 0, Learns::FailFast, 1, 0},
            {Flow::Unpair, "DeviceInformation.get_Name", 0, Learns::FailFast, 2, 0},
            {Flow::Unpair, "DeviceInformation.get_Pairing", 0, Learns::FailFast, 4, 0},
            {Flow::Unpair, "DeviceInformationPairing.get_IsPaired", 0, Learns::FailFast, 4, 0},
            {Flow::Unpair, "DeviceInformationPairing.get_CanPair", 0, Learns::FailFast, 4, 0},
            {Flow::Unpair, "DeviceInformation.get_Id", 0, Learns::FailFast, 4, 0},
            {Flow::Unpair, "DeviceInformation.get_Pairing", 1, Learns::FailFast, 5, 0},
            {Flow::Unpair, "DeviceInformationPairing.UnpairAsync", 0, Learns::FailFast, 5, 0},
            {Flow::Unpair, "AsyncOperation.get_Status", 0, Learns::FailFast, 5, 0},
            {Flow::Unpair, "AsyncOperation.put_Completed", 0, Learns::FailFast, 5, 0},
            {Flow::Unpair, "AsyncOperation.GetResults", 0, Learns::FailFast, 5, 0},
            {Flow::Unpair, "DeviceUnpairingResult.get_Status", 0, Learns::FailFast, 5, 0},
            {Flow::Unpair, "DeviceInformation.get_Id", 1, Learns::FailFast, 5, 0},
            {Flow::Unpair, "CreateThread", 1, Learns::FailFast, 7, 0},
            {Flow::Unpair, "DeviceInformation.GetActivationFactory", 2, Learns::Log, 8, 0, When::FirstAlone},
            {Flow::Unpair, "DeviceInformation.GetActivationFactory", 1, Learns::Log, 8, 0, When::LaterAlone},
            {Flow::Unpair, "DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties", 1, Learns::Log, 8,
             0},
            {Flow::Unpair, "DeviceWatcher.add_Added", 1, Learns::Log, 8, 0},
            {Flow::Unpair, "DeviceWatcher.add_Updated", 1, Learns::Log, 8, 0},
            {Flow::Unpair, "DeviceWatcher.add_EnumerationCompleted", 1, Learns::Log, 8, 0},
            {Flow::Unpair, "DeviceWatcher.Start", 1, Learns::Log, 8, 0},
            {Flow::Unpair, "CreateThread", 2, Learns::FailFast, 7, 0},
            {Flow::Unpair, "DeviceInformation.get_Id", 2, Learns::Log, 10, 0},
            {Flow::Unpair, "DeviceInformation.get_Pairing", 2, Learns::Log, 12, 0},
            {Flow::Unpair, "DeviceInformationPairing.get_IsPaired", 1, Learns::Log, 12, 0},
            {Flow::Unpair, "DeviceInformationPairing.get_CanPair", 1, Learns::Log, 12, 0},
            {Flow::Unpair, "DeviceInformation.get_Id", 3, Learns::Log, 12, 0},
            {Flow::Unpair, "DeviceInformation.get_Pairing", 3, Learns::Log, 13, 0},
            {Flow::Unpair, "DeviceInformationPairing.UnpairAsync", 1, Learns::Log, 13, 0},
            {Flow::Unpair, "AsyncOperation.get_Status", 1, Learns::Log, 13, 0},
            {Flow::Unpair, "AsyncOperation.put_Completed", 1, Learns::Log, 13, 0},
            {Flow::Unpair, "AsyncOperation.GetResults", 1, Learns::Log, 13, 0},
            {Flow::Unpair, "DeviceUnpairingResult.get_Status", 1, Learns::Log, 13, 0},
            {Flow::StartPhones, "DeviceInformation.GetActivationFactory", 0, Learns::Host, 0, 0},
            {Flow::StartPhones, "DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties", 0,
             Learns::Host, 0, 0},
            {Flow::StartPhones, "DeviceWatcher.add_Added", 0, Learns::Host, 0, 0, When::Both, 1},
            {Flow::StartPhones, "DeviceWatcher.add_Updated", 0, Learns::Host, 0, 0, When::Both, 1},
            {Flow::StartPhones, "DeviceWatcher.add_Removed", 0, Learns::Host, 0, 0, When::Both, 1},
            {Flow::StartPhones, "DeviceWatcher.add_EnumerationCompleted", 0, Learns::Host, 0, 0, When::Both, 1},
            {Flow::StartPhones, "DeviceWatcher.add_Stopped", 0, Learns::Host, 0, 0, When::Both, 1},
            {Flow::StartPhones, "DeviceWatcher.Start", 0, Learns::Host, 0, 0, When::Both, 1},
            {Flow::StartPhones, "CreateThread", 0, Learns::Host, 0, 0},
            {Flow::StopPhones, "DeviceWatcher.remove_Added", 0, Learns::Nobody, 1, 0},
            {Flow::StopPhones, "DeviceWatcher.remove_Updated", 0, Learns::Nobody, 1, 0},
            {Flow::StopPhones, "DeviceWatcher.remove_EnumerationCompleted", 0, Learns::Nobody, 1, 0},
            {Flow::StopPhones, "DeviceWatcher.remove_Stopped", 0, Learns::Nobody, 1, 0},
            {Flow::StopPhones, "DeviceWatcher.Stop", 0, Learns::Host, 0, 0},
            {Flow::CompletePhones, "DeviceWatcher.remove_Added", 0, Learns::Nobody, 1, 0},
            {Flow::CompletePhones, "DeviceWatcher.remove_Updated", 0, Learns::Nobody, 1, 0},
            {Flow::CompletePhones, "DeviceWatcher.remove_EnumerationCompleted", 0, Learns::Nobody, 1, 0},
            {Flow::CompletePhones, "DeviceWatcher.remove_Stopped", 0, Learns::Nobody, 1, 0},
            {Flow::CompletePhones, "DeviceWatcher.Stop", 0, Learns::FailFast, 0, 0},
            {Flow::AddPhone, "DeviceInformation.get_Name", 0, Learns::FailFast, 0, 0},
            {Flow::AddPhone, "DeviceInformation.get_Pairing", 0, Learns::FailFast, 0, 0},
            {Flow::AddPhone, "DeviceInformationPairing.get_IsPaired", 0, Learns::FailFast, 0, 0},
            {Flow::AddPhone, "DeviceInformation.get_Pairing", 1, Learns::FailFast, 0, 0},
            {Flow::AddPhone, "DeviceInformationPairing.get_CanPair", 0, Learns::FailFast, 0, 0},
            {Flow::AddPhone, "DeviceInformation.get_Name", 1, Learns::FailFast, 0, 0},
            {Flow::UpdatePhone, "DeviceInformationUpdate.get_Id", 0, Learns::FailFast, 0, 0},
            {Flow::UpdatePhone, "DeviceInformation.get_Id", 0, Learns::FailFast, 0, 0},
            {Flow::UpdatePhone, "DeviceInformationUpdate.get_Id", 1, Learns::FailFast, 0, 0},
            {Flow::UpdatePhone, "DeviceInformation.get_Id", 1, Learns::FailFast, 0, 0},
            {Flow::RemovePhone, "DeviceInformationUpdate.get_Id", 0, Learns::FailFast, 0, 0},
            {Flow::RemovePhone, "DeviceInformation.get_Id", 0, Learns::FailFast, 0, 0},
            {Flow::RemovePhone, "DeviceInformationUpdate.get_Id", 1, Learns::FailFast, 0, 0},
            {Flow::RemovePhone, "DeviceInformation.get_Id", 1, Learns::FailFast, 0, 0},
            {Flow::UpdatePhone, "DeviceInformation.Update", 0, Learns::FailFast, 0, 0},
            {Flow::UpdateQueued, "DeviceInformation.get_Id", 0, Learns::Platform, 0, 0},
            {Flow::UpdateQueued, "DeviceInformationUpdate.get_Id", 0, Learns::Platform, 0, 0},
            {Flow::UpdateQueued, "DeviceInformation.Update", 0, Learns::Platform, 0, 0},
        };

        constexpr LeftOut leftOut[] = {
            {Flow::PairPhone, "DeviceInformationUpdate.get_Id", "the pairing changes the device: as when one changes"},
            {Flow::PairPhone, "DeviceInformation.Update", "the pairing changes the device: as when one changes"},
        };
        // clang-format on

        struct Word
        {
            std::string_view name;
            std::string_view meaning;
        };

        constexpr Word flows[] = {
            {"PairByName", "`PairedDevice`, of the second of two devices"},
            {"PairPhone", "`IosPairedDevicce`, of the second of two that the phone watcher has seen"},
            {"Unpair", "`UnpairedCurrent`, of a device whose LE side is known: Classic first, then LE on a thread"},
            {"StartPhones", "`StartIosWatcher`"},
            {"StopPhones", "`StartIosWatcher` while the watcher runs, which stops it"},
            {"CompletePhones", "the platform completes the phone watcher's enumeration"},
            {"AddPhone", "a device appears to the phone watcher"},
            {"UpdatePhone", "a device that the phone watcher has seen changes"},
            {"RemovePhone", "a device that the phone watcher has seen leaves"},
            {"UpdateQueued", "a device changes that a search has found and nobody has taken"},
        };

        constexpr Word learners[] = {
            {"host", "an exception with this code leaves the operation"},
            {"fail-fast", "the process ends by the platform's fail-fast, with this code"},
            {"platform", "the handler returns this code"},
            {"log", "a record of it is written, and nothing is reported"},
            {"nobody", "the round goes on"},
        };
    } // namespace

    std::span<Fault const> Faults()
    {
        return faults;
    }

    std::span<LeftOut const> LeftOutFaults()
    {
        return leftOut;
    }

    std::string_view Name(Flow flow)
    {
        return flows[static_cast<std::size_t>(flow)].name;
    }

    std::string_view Meaning(Flow flow)
    {
        return flows[static_cast<std::size_t>(flow)].meaning;
    }

    std::string_view Name(Learns learns)
    {
        return learners[static_cast<std::size_t>(learns)].name;
    }

    std::string_view Meaning(Learns learns)
    {
        return learners[static_cast<std::size_t>(learns)].meaning;
    }
} // namespace test
