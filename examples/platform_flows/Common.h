// What the programs of this folder share: how they say things, and how they find the device that their user names.
#pragma once

#include <winrt/Windows.Devices.Enumeration.h>
#include <winrt/Windows.Foundation.Collections.h>
#include <winrt/Windows.Foundation.h>

#include <windows.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

using namespace winrt::Windows::Devices::Enumeration;
using winrt::hstring;

inline constexpr wchar_t classicOrLe[] =
    LR"(System.Devices.Aep.ProtocolId:="{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}" OR )"
    LR"(System.Devices.Aep.ProtocolId:="{bb7bb05e-5972-42b5-94fc-76eaa7084d49}")";

// From several threads of the platform at a time, too.
inline void Say(std::string const& line)
{
    std::puts(line.c_str());
    std::fflush(stdout);
}

// A later Windows may know more values than there are names.
template <std::size_t count, typename Value>
std::string NameOf(char const* const (&names)[count], Value value)
{
    auto const number = static_cast<std::size_t>(value);
    return number < count ? names[number] : std::to_string(number);
}

inline std::string Text(DevicePairingResultStatus status)
{
    static constexpr char const* names[] = {"Paired",
                                            "NotReadyToPair",
                                            "NotPaired",
                                            "AlreadyPaired",
                                            "ConnectionRejected",
                                            "TooManyConnections",
                                            "HardwareFailure",
                                            "AuthenticationTimeout",
                                            "AuthenticationNotAllowed",
                                            "AuthenticationFailure",
                                            "NoSupportedProfiles",
                                            "ProtectionLevelCouldNotBeMet",
                                            "AccessDenied",
                                            "InvalidCeremonyData",
                                            "PairingCanceled",
                                            "OperationAlreadyInProgress",
                                            "RequiredHandlerNotRegistered",
                                            "RejectedByHandler",
                                            "RemoteDeviceHasAssociation",
                                            "Failed"};
    return NameOf(names, status);
}

inline std::string Text(DevicePairingProtectionLevel level)
{
    static constexpr char const* names[] = {"Default", "None", "Encryption", "EncryptionAndAuthentication"};
    return NameOf(names, level);
}

inline std::string Text(DeviceUnpairingResultStatus status)
{
    static constexpr char const* names[] = {"Unpaired", "AlreadyUnpaired", "OperationAlreadyInProgress", "AccessDenied",
                                            "Failed"};
    return NameOf(names, status);
}

inline std::string Text(DeviceInformation const& device)
{
    return device.Name().empty() ? "(no name yet)" : winrt::to_string(device.Name());
}

inline std::string Text(DevicePairingResult const& result)
{
    return Text(result.Status()) + ", protection " + Text(result.ProtectionLevelUsed());
}

// Null when nobody has the name.
inline DeviceInformation FindByName(wchar_t const* name)
{
    for (auto const& device :
         DeviceInformation::FindAllAsync(classicOrLe, nullptr, DeviceInformationKind::AssociationEndpoint).get())
    {
        if (device.Name() == name)
        {
            return device;
        }
    }
    Say("There is no " + winrt::to_string(name) + ".");
    return nullptr;
}

// A device object is a snapshot: to learn what became of the device takes a new one.
inline std::string StateOf(hstring const& id)
{
    try
    {
        return DeviceInformation::CreateFromIdAsync(id).get().Pairing().IsPaired() ? "paired" : "not paired";
    }
    catch (winrt::hresult_error const& error)
    {
        if (error.code() == HRESULT_FROM_WIN32(ERROR_FILE_NOT_FOUND))
        {
            return "gone";
        }
        throw;
    }
}

// A program's result from its work: an error of the platform is told by its code, for its text depends on the language.
template <typename Work>
int Run(Work work)
{
    SetConsoleOutputCP(CP_UTF8);
    try
    {
        winrt::init_apartment();
        work();
        return EXIT_SUCCESS;
    }
    catch (winrt::hresult_error const& error)
    {
        char code[16];
        std::snprintf(code, sizeof code, "0x%08X", static_cast<unsigned>(error.code().value));
        Say(std::string("Error ") + code);
        return EXIT_FAILURE;
    }
}

inline int Usage(char const* text)
{
    Say(std::string("Usage: ") + text);
    return EXIT_FAILURE;
}
