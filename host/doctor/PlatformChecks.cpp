#include "host/doctor/PlatformChecks.h"

#include "host/Failure.h"
#include "host/Surroundings.h"
#include "host/WideText.h"

#include <winrt/Windows.Foundation.h>

#include <windows.h>
#include <roapi.h>
#include <winstring.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string_view>
#include <thread>

namespace host
{
    using winrt::Windows::Devices::Bluetooth::BluetoothAdapter;
    using winrt::Windows::Devices::Radios::RadioState;
    using winrt::Windows::Foundation::IAsyncOperation;

    namespace
    {
        using Clock = std::chrono::steady_clock;

        std::string CodeText(HRESULT code)
        {
            std::array<char, 16> text{};
            std::snprintf(text.data(), text.size(), "0x%08lX", static_cast<unsigned long>(code));
            return text.data();
        }

        // The interface of the class's statics by which watchers are made.
        HRESULT GetFactory(::IUnknown** factory)
        {
            constexpr wchar_t name[] = L"Windows.Devices.Enumeration.DeviceInformation";
            constexpr GUID watcherStatics{0x493B4F34, 0xA84F, 0x45FD, {0x91, 0x67, 0x15, 0xD1, 0xCB, 0x1B, 0xD1, 0xF9}};
            HSTRING_HEADER header{};
            HSTRING text = nullptr;
            WindowsCreateStringReference(name, static_cast<UINT32>(std::size(name) - 1), &header, &text);
            auto const get = [&] {
                return RoGetActivationFactory(text, watcherStatics, reinterpret_cast<void**>(factory));
            };
            HRESULT result = get();
            if (result == CO_E_NOTINITIALIZED)
            {
                CO_MTA_USAGE_COOKIE cookie = nullptr;
                CoIncrementMTAUsage(&cookie);
                result = get();
            }
            return result;
        }

        // An object's first word is the address of its class's table of functions.
        std::filesystem::path ModuleOf(::IUnknown* object)
        {
            HMODULE module = nullptr;
            GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                               *reinterpret_cast<LPCWSTR*>(object), &module);
            std::wstring path(32'768, L'\0'); // longer than any path
            path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
            return path;
        }

        bool IsWine()
        {
            return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
        }

        struct CodeMeaning
        {
            HRESULT code;
            char const* meaning;
            char const* hint;
        };

        constexpr CodeMeaning meanings[] = {
            {REGDB_E_CLASSNOTREG, "the class is not registered",
             "It comes with Windows 10. On a later Windows, compare the manifest beside vorlinkctl.exe with that of "
             "the "
             "same build."},
            {E_NOINTERFACE, "the class lacks the interface that makes watchers",
             "This Windows is too old, or the manifest beside vorlinkctl.exe names a module that is something else."},
            {static_cast<HRESULT>(0x8007007E), "its module is missing",
             "The manifest beside vorlinkctl.exe names a module that is not there: put vorlink_simulator.dll beside "
             "the "
             "program, or take the manifest for the real platform."},
        };

        Finding DescribeRefusal(HRESULT code)
        {
            auto const* const known = std::ranges::find(meanings, code, &CodeMeaning::code);
            bool const isKnown = known != std::end(meanings);
            return {"platform", Verdict::Problem,
                    "Windows.Devices.Enumeration does not answer: " + CodeText(code) +
                        (isKnown ? std::string(", ") + known->meaning : ""),
                    isKnown ? known->hint : "Try again after a restart of the PC."};
        }

        template <typename T>
        T Await(IAsyncOperation<T> const& operation)
        {
            constexpr std::chrono::seconds limit{3};
            constexpr std::chrono::milliseconds pause{5};
            auto const end = Clock::now() + limit;
            while (operation.Status() == winrt::Windows::Foundation::AsyncStatus::Started)
            {
                if (Clock::now() > end)
                {
                    throw std::runtime_error("no answer within 3 s");
                }
                std::this_thread::sleep_for(pause);
            }
            return operation.GetResults();
        }

        // Of the exception being handled.
        Finding Unanswered(char const* check)
        {
            try
            {
                throw;
            }
            catch (winrt::hresult_error const& error)
            {
                if (error.code() == REGDB_E_CLASSNOTREG)
                {
                    return {check,
                            Verdict::Unknown,
                            "it cannot be asked here: nothing answers for Windows.Devices.Bluetooth",
                            {}};
                }
            }
            catch (...) // told below
            {
            }
            return {check, Verdict::Unknown, "it does not tell: " + DescribeCurrentException(), {}};
        }

        std::string AddressText(std::uint64_t address)
        {
            std::string text;
            for (int shift = 40; shift >= 0; shift -= 8)
            {
                std::array<char, 4> byte{};
                std::snprintf(byte.data(), byte.size(), "%02x", static_cast<unsigned>(address >> shift & 0xFF));
                text.append(text.empty() ? "" : ":").append(byte.data());
            }
            return text;
        }
    } // namespace

    PlatformFinding CheckPlatform()
    {
        ::IUnknown* factory = nullptr;
        HRESULT const result = GetFactory(&factory);
        if (FAILED(result))
        {
            return {DescribeRefusal(result), Answering::Nobody};
        }
        auto const module = ModuleOf(factory);
        factory->Release();
        auto const path = ToUtf8(module.native());
        if (module.filename() == "vorlink_simulator.dll")
        {
            return {{"platform", Verdict::Ok, "the simulator (vorlink_simulator.dll)",
                     "For real devices, put the vorlinkctl.exe.manifest for the real platform beside the program: the "
                     "package's, or "
                     "host/ of the sources."},
                    Answering::Simulator};
        }
        if (IsWine())
        {
            return {{"platform", Verdict::Problem, "Wine's own (" + path + "), which finds no devices",
                     "Put vorlink_simulator.dll beside the program, and the manifest that names it (share/vorlink/"
                     "simulator.manifest, or host/simulated.manifest of the sources) as vorlinkctl.exe.manifest."},
                    Answering::Wine};
        }
        return {{"platform", Verdict::Ok, "the real one (" + path + ")", {}}, Answering::Windows};
    }

    std::vector<Finding> CheckSearch()
    {
        constexpr std::chrono::seconds limit{3};
        auto const end = Clock::now() + limit;
        std::vector<Seen> seen;
        try
        {
            Surroundings surroundings({{Protocol::Classic}, {Protocol::Le}});
            while (!surroundings.IsComplete() && Clock::now() < end)
            {
                surroundings.Take(std::chrono::milliseconds(50));
            }
            seen = surroundings.All();
        }
        catch (...)
        {
            return {{"search", Verdict::Problem, "it does not run: " + DescribeCurrentException(),
                     "Check that Bluetooth is switched on and working."}};
        }
        auto const le = std::ranges::count(seen, Protocol::Le, &Seen::protocol);
        auto const all = static_cast<std::ptrdiff_t>(seen.size());
        auto const text = "Classic: " + std::to_string(all - le) + ", LE: " + std::to_string(le);
        return {{"search", Verdict::Ok, "it runs over both protocols", {}},
                {"endpoints", seen.empty() ? Verdict::Warning : Verdict::Ok, text,
                 seen.empty() ? "None within 3 s. Switch a device on, bring it near, and make it discoverable." : ""}};
    }

    Finding Describe(BluetoothAdapter const& adapter)
    {
        if (!adapter)
        {
            return {"adapter", Verdict::Problem, "none",
                    "Plug one in, or enable the one that is built in: the device manager shows it."};
        }
        bool const classic = adapter.IsClassicSupported();
        bool const le = adapter.IsLowEnergySupported();
        auto const address = AddressText(adapter.BluetoothAddress());
        if (classic && le)
        {
            return {"adapter", Verdict::Ok, address + ", for Classic and LE", {}};
        }
        auto const protocols = classic ? "Classic alone" : le ? "LE alone" : "neither Classic nor LE";
        return {"adapter", Verdict::Warning, address + ", for " + protocols,
                "Devices of the other protocol are not found: they need another adapter."};
    }

    Finding Describe(RadioState state)
    {
        switch (state)
        {
        case RadioState::On:
            return {"radio", Verdict::Ok, "on", {}};
        case RadioState::Off:
            return {"radio", Verdict::Problem, "off",
                    "Switch Bluetooth on in the PC's settings; flight mode is off then."};
        case RadioState::Disabled:
            return {"radio", Verdict::Problem, "disabled",
                    "Enable it by the PC's switch or key, in the device manager, or in its firmware."};
        default:
            return {"radio", Verdict::Unknown, "in a state that the platform does not tell", {}};
        }
    }

    std::vector<Finding> CheckAdapter()
    {
        std::vector<Finding> findings;
        try
        {
            auto const adapter = Await(BluetoothAdapter::GetDefaultAsync());
            findings.push_back(Describe(adapter));
            if (adapter)
            {
                findings.push_back(Describe(Await(adapter.GetRadioAsync()).State()));
            }
        }
        catch (...)
        {
            findings.push_back(Unanswered(findings.empty() ? "adapter" : "radio"));
        }
        return findings;
    }
} // namespace host
