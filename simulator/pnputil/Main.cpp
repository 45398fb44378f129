// Plays the system's plug-and-play tool for the simulated neighbourhood.
#include "simulator/pnputil/Listing.h"
#include "simulator/scenario/FirstScenario.h"

#include <windows.h>

#include <cstdio>
#include <string>
#include <string_view>

namespace
{
    std::string WithCarriageReturns(std::string_view lines)
    {
        std::string text;
        for (char const each : lines)
        {
            text.append(each == '\n' ? "\r" : "").append(1, each);
        }
        return text;
    }
} // namespace

int main(int argc, char** argv)
{
    if (argc != 2 || std::string_view(argv[1]) != "/enum-devices")
    {
        std::puts("Microsoft PnP Utility\n\nPNPUTIL /enum-devices\n\n  Here this is all that it can do.");
        return 1;
    }
    auto const first = simulator::LoadFirstScenario();
    if (!first.fault.empty())
    {
        return 1;
    }
    auto const& listing = first.scenario.listing;
    Sleep(static_cast<DWORD>(listing.durationMs));
    if (listing.missing)
    {
        std::fputs("The system cannot find the path specified.\n", stderr);
        return 1;
    }
    auto const text = WithCarriageReturns(simulator::ListingText(first.scenario));
    DWORD written = 0; // in one piece: whoever reads too early sees all of it or nothing
    return WriteFile(GetStdHandle(STD_OUTPUT_HANDLE), text.data(), static_cast<DWORD>(text.size()), &written, nullptr)
               ? 0
               : 1;
}
