#include "pairing/Ceremony.h"

#include "pairing/DetachedThread.h"
#include "pairing/EndpointAddress.h"
#include "pairing/HandlerRemoval.h"
#include "pairing/Log.h"
#include "pairing/NarrowText.h"
#include "pairing/ReadLine.h"
#include "pairing/Report.h"
#include "pairing/SubVorlink.h"

#include <cstddef>

namespace vorlink
{
    using enumeration::DevicePairingKinds;
    using enumeration::DevicePairingProtectionLevel;
    using enumeration::DevicePairingResultStatus;

    namespace
    {
        constexpr char function[] = "SubVorlink::PairingDevice";

        // The record of each outcome.
        struct Outcome
        {
            char const* message;
            int line;
        };

        constexpr Outcome outcomes[] = {
            {"DevicePairingResultStatus::Paired", 796},
            {"DevicePairingResultStatus::NotReadyToPair", 956},
            {"DevicePairingResultStatus::NotPaired", 942},
            {"DevicePairingResultStatus::AlreadyPaired", 825},
            {"DevicePairingResultStatus::ConnectionRejected", 877},
            {"DevicePairingResultStatus::TooManyConnections", 1036},
            {"DevicePairingResultStatus::HardwareFailure", 903},
            {"DevicePairingResultStatus::AuthenticationTimeout", 864},
            {"DevicePairingResultStatus::AuthenticationNotAllowed", 851},
            {"DevicePairingResultStatus::AuthenticationFailure", 838},
            {"DevicePairingResultStatus::NoSupportedProfiles", 929},
            {"DevicePairingResultStatus::ProtectionLevelCouldNotBeMet", 983},
            {"DevicePairingResultStatus::AccessDenied", 810},
            {"DevicePairingResultStatus::InvalidCeremonyData", 916},
            {"DevicePairingResultStatus::PairingCanceled", 969},
            {nullptr, 0}, // OperationAlreadyInProgress: the operation in progress reports
            {"DevicePairingResultStatus::RequiredHandlerNotRegistered", 1023},
            {"DevicePairingResultStatus::RejectedByHandler", 996},
            {"DevicePairingResultStatus::RemoteDeviceHasAssociation", 1010},
            {"DevicePairingResultStatus::Failed", 890},
        };

        // Null for an outcome that nobody is told.
        Outcome const* FindOutcome(DevicePairingResultStatus status)
        {
            auto const index = static_cast<std::size_t>(static_cast<std::uint32_t>(status));
            return index < std::size(outcomes) && outcomes[index].message ? &outcomes[index] : nullptr;
        }

        void ReportOutcome(DevicePairingResultStatus status, EndpointAddress const& address)
        {
            auto const* const outcome = FindOutcome(status);
            if (!outcome)
            {
                return;
            }
            if (status == DevicePairingResultStatus::AlreadyPaired)
            {
                VORLINK_LOG(818, function, "%llu     paired success\n",
                            static_cast<unsigned long long>(address.number));
            }
            auto& library = Library();
            bool const paired = status == DevicePairingResultStatus::Paired;
            // The name first: a newer call stores its callback before its name.
            PairReport const report = MakeReport(address.number, paired, library.destDeviceName.Read(),
                                                 paired ? std::string_view() : address.text);
            library.pairResultCallback.load()(report);
            if (paired)
            {
                // Read again: a pairing that the callback has begun leaves its own name.
                StartDetached([name = library.destDeviceName.Read()] { ReadLine(name); });
            }
            VORLINK_LOG(outcome->line, function, "%s", outcome->message);
        }
    } // namespace

    void OnPairingRequested(enumeration::DeviceInformationCustomPairing const&,
                            enumeration::DevicePairingRequestedEventArgs const& args)
    {
        auto const kind = args.PairingKind();
        if (kind == DevicePairingKinds::ConfirmOnly || kind == DevicePairingKinds::DisplayPin)
        {
            args.Accept();
        }
        // Any other kind is left to the platform, which then ends the ceremony by itself. None comes while ConfirmOnly
        // alone is offered: the platform refuses a device that wants more before it asks.
    }

    winrt::fire_and_forget SubVorlink::PairingDevice(enumeration::DeviceInformation const& device)
    {
        auto const address = AddressOf(NarrowText(device.Id(), CodePage::Utf8));
        auto const custom = device.Pairing().Custom();
        auto const token = custom.PairingRequested(OnPairingRequested);
        auto const result = co_await custom.PairAsync(DevicePairingKinds::ConfirmOnly,
                                                      DevicePairingProtectionLevel::EncryptionAndAuthentication);
        // From here on neither `device` nor this object need be alive.
        RemovePairingRequested(custom, token);
        ReportOutcome(result.Status(), address);
    }
} // namespace vorlink
