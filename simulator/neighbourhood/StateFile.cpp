#include "simulator/neighbourhood/StateFile.h"

#include "simulator/scenario/FirstScenario.h"
#include "simulator/scenario/PairingState.h"

#include <windows.h>

#include <cstdio>
#include <fstream>

namespace simulator
{
    namespace
    {
        bool Write(std::filesystem::path const& file, std::string const& text)
        {
            std::ofstream stream(file, std::ios::binary);
            stream << text;
            stream.close();
            return !stream.fail();
        }
    } // namespace

    void SavePairingState(Neighbourhood const& neighbourhood)
    {
        auto const file = StateFile();
        if (file.empty())
        {
            return;
        }
        PairingState state;
        for (auto const& neighbour : neighbourhood.neighbours)
        {
            state[neighbour.endpoint.id] = IsTrue(neighbour.endpoint.properties, "System.Devices.Aep.IsPaired");
        }
        // By way of a second file: a process that reads meanwhile finds the one before, whole.
        auto written = file;
        written += L".new";
        if (!Write(written, PairingStateText(state)) ||
            !MoveFileExW(written.c_str(), file.c_str(), MOVEFILE_REPLACE_EXISTING))
        {
            std::fputs("vorlink_simulator: the file that VORLINK_SIMULATOR_STATE names cannot be written\n", stderr);
            std::fflush(stderr);
        }
    }
} // namespace simulator
