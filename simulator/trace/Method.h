// The names of the platform's methods, as the trace prints them and SimulateFailure takes them.
#pragma once

#include <algorithm>
#include <iterator>
#include <span>
#include <string_view>

namespace simulator
{
    inline constexpr std::string_view methodNames[] = {
        "AsyncOperation.Cancel",
        "AsyncOperation.Close",
        "AsyncOperation.GetResults",
        "AsyncOperation.get_Completed",
        "AsyncOperation.get_ErrorCode",
        "AsyncOperation.get_Id",
        "AsyncOperation.get_Status",
        "AsyncOperation.put_Completed",
        "Deferral.Close",
        "Deferral.Complete",
        "DeviceInformation.ActivateInstance",
        "DeviceInformation.CreateFromIdAsync",
        "DeviceInformation.CreateFromIdAsyncAdditionalProperties",
        "DeviceInformation.CreateFromIdAsyncWithKindAndAdditionalProperties",
        "DeviceInformation.CreateWatcher",
        "DeviceInformation.CreateWatcherAqsFilter",
        "DeviceInformation.CreateWatcherAqsFilterAndAdditionalProperties",
        "DeviceInformation.CreateWatcherDeviceClass",
        "DeviceInformation.CreateWatcherWithKindAqsFilterAndAdditionalProperties",
        "DeviceInformation.FindAllAsync",
        "DeviceInformation.FindAllAsyncAqsFilter",
        "DeviceInformation.FindAllAsyncAqsFilterAndAdditionalProperties",
        "DeviceInformation.FindAllAsyncDeviceClass",
        "DeviceInformation.FindAllAsyncWithKindAqsFilterAndAdditionalProperties",
        "DeviceInformation.GetActivationFactory",
        "DeviceInformation.GetAqsFilterFromDeviceClass",
        "DeviceInformation.GetGlyphThumbnailAsync",
        "DeviceInformation.GetThumbnailAsync",
        "DeviceInformation.Update",
        "DeviceInformation.get_EnclosureLocation",
        "DeviceInformation.get_Id",
        "DeviceInformation.get_IsDefault",
        "DeviceInformation.get_IsEnabled",
        "DeviceInformation.get_Kind",
        "DeviceInformation.get_Name",
        "DeviceInformation.get_Pairing",
        "DeviceInformation.get_Properties",
        "DeviceInformationCustomPairing.PairAsync",
        "DeviceInformationCustomPairing.PairWithProtectionLevelAndSettingsAsync",
        "DeviceInformationCustomPairing.PairWithProtectionLevelAsync",
        "DeviceInformationCustomPairing.add_PairingRequested",
        "DeviceInformationCustomPairing.remove_PairingRequested",
        "DeviceInformationPairing.ActivateInstance",
        "DeviceInformationPairing.GetActivationFactory",
        "DeviceInformationPairing.PairAsync",
        "DeviceInformationPairing.PairWithProtectionLevelAndSettingsAsync",
        "DeviceInformationPairing.PairWithProtectionLevelAsync",
        "DeviceInformationPairing.TryRegisterForAllInboundPairingRequests",
        "DeviceInformationPairing.TryRegisterForAllInboundPairingRequestsWithProtectionLevel",
        "DeviceInformationPairing.UnpairAsync",
        "DeviceInformationPairing.get_CanPair",
        "DeviceInformationPairing.get_Custom",
        "DeviceInformationPairing.get_IsPaired",
        "DeviceInformationPairing.get_ProtectionLevel",
        "DeviceInformationUpdate.get_Id",
        "DeviceInformationUpdate.get_Kind",
        "DeviceInformationUpdate.get_Properties",
        "DevicePairingRequestedEventArgs.Accept",
        "DevicePairingRequestedEventArgs.AcceptWithPasswordCredential",
        "DevicePairingRequestedEventArgs.AcceptWithPin",
        "DevicePairingRequestedEventArgs.GetDeferral",
        "DevicePairingRequestedEventArgs.get_DeviceInformation",
        "DevicePairingRequestedEventArgs.get_PairingKind",
        "DevicePairingRequestedEventArgs.get_Pin",
        "DevicePairingResult.get_ProtectionLevelUsed",
        "DevicePairingResult.get_Status",
        "DeviceUnpairingResult.get_Status",
        "DeviceWatcher.GetBackgroundTrigger",
        "DeviceWatcher.Start",
        "DeviceWatcher.Stop",
        "DeviceWatcher.add_Added",
        "DeviceWatcher.add_EnumerationCompleted",
        "DeviceWatcher.add_Removed",
        "DeviceWatcher.add_Stopped",
        "DeviceWatcher.add_Updated",
        "DeviceWatcher.get_Status",
        "DeviceWatcher.remove_Added",
        "DeviceWatcher.remove_EnumerationCompleted",
        "DeviceWatcher.remove_Removed",
        "DeviceWatcher.remove_Stopped",
        "DeviceWatcher.remove_Updated",
    };

    constexpr bool IsMethod(std::string_view name) noexcept
    {
        return std::ranges::find(methodNames, name) != std::end(methodNames);
    }

    // A method of the table: a name that is not in it does not compile.
    class Method
    {
    public:
        consteval Method(char const* name)
            : m_name(name)
        {
            if (!IsMethod(m_name))
            {
                throw "not in the table of methods";
            }
        }

        constexpr std::string_view Name() const noexcept
        {
            return m_name;
        }

    private:
        std::string_view m_name;
    };
} // namespace simulator
