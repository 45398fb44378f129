// Pairs a device with a ceremony of the program's own: the user is asked for what the device wants. Here the command
// line answers.
// Usage: flow_custom_pair NAME ANSWER [KIND ...]
//   ANSWER  yes, no, or a PIN; nothing: the user has left; nobody: there is no handler
//   KIND    a ceremony that the program offers: ConfirmOnly, DisplayPin, ProvidePin, ConfirmPinMatch; if none, all
#include "Common.h"

#include <string_view>

struct Ceremony
{
    DevicePairingKinds kind;
    std::wstring_view name;
    char const* question;
};

static constexpr Ceremony ceremonies[] = {
    {DevicePairingKinds::ConfirmOnly, L"ConfirmOnly", "Pair?"},
    {DevicePairingKinds::DisplayPin, L"DisplayPin", "Type this PIN on the device: "},
    {DevicePairingKinds::ProvidePin, L"ProvidePin", "Which PIN does the device show?"},
    {DevicePairingKinds::ConfirmPinMatch, L"ConfirmPinMatch", "Does the device show the same PIN? "},
};

static std::string QuestionOf(DevicePairingRequestedEventArgs const& request)
{
    for (auto const& ceremony : ceremonies)
    {
        if (ceremony.kind == request.PairingKind())
        {
            return ceremony.question + winrt::to_string(request.Pin());
        }
    }
    return "?";
}

static DevicePairingKinds KindsOf(int count, wchar_t** names)
{
    auto kinds = DevicePairingKinds::None;
    for (auto const& ceremony : ceremonies)
    {
        bool offered = count == 0;
        for (int index = 0; index < count; ++index)
        {
            offered = offered || names[index] == ceremony.name;
        }
        kinds = offered ? kinds | ceremony.kind : kinds;
    }
    return kinds;
}

// Users take their time, and meanwhile the handler has to return. The deferral is completed in the multithreaded
// apartment: the system hangs if a thread with a window does it.
static winrt::fire_and_forget Ask(DevicePairingRequestedEventArgs request, hstring answer)
{
    auto const deferral = request.GetDeferral();
    co_await winrt::resume_background();
    Say(Text(request.DeviceInformation()) + ": " + QuestionOf(request));
    Say("> " + winrt::to_string(answer));
    if (answer == L"nothing")
    {
        co_return; // it is up to the device how long it waits
    }
    try
    {
        if (answer == L"yes")
        {
            request.Accept();
        }
        else if (answer != L"no")
        {
            request.Accept(answer);
        }
    }
    catch (winrt::hresult_error const&) // too late: the device would not wait for the user
    {
    }
    deferral.Complete(); // without an Accept that says no
}

extern "C" int wmain(int argc, wchar_t** argv)
{
    if (argc < 3)
    {
        return Usage("flow_custom_pair NAME ANSWER [KIND ...]");
    }
    return Run([&] {
        auto const device = FindByName(argv[1]);
        if (!device)
        {
            return;
        }
        auto const custom = device.Pairing().Custom();
        winrt::event_token token;
        if (hstring const answer = argv[2]; answer != L"nobody")
        {
            token = custom.PairingRequested(
                [answer](auto&&, DevicePairingRequestedEventArgs const& request) { Ask(request, answer); });
        }
        auto const result = custom.PairAsync(KindsOf(argc - 3, argv + 3)).get();
        if (token)
        {
            custom.PairingRequested(token);
        }
        Say(Text(device) + ": " + Text(result));
        Say("It is " + StateOf(device.Id()) + " now.");
    });
}
