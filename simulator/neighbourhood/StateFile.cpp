#include "simulator/neighbourhood/StateFile.h"

#include "simulator/scenario/FirstScenario.h"
#include "simulator/scenario/PairingState.h"

#include <cstdio>
#include <fstream>
#include <system_error>

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
            state[neighbour.endpoint.id] = IsTrue(neighbour.endpoint.properties, isPairedProperty);
        }
        // By way of a second file: a process that reads meanwhile finds the one before, whole.
        auto written = file;
        written += ".new";
        std::error_code error;
        bool const isWritten = Write(written, PairingStateText(state));
        if (isWritten)
        {
            std::filesystem::rename(written, file, error);
        }
        if (!isWritten || error)
        {
            std::fputs("vorlink_simulator: the file that VORLINK_SIMULATOR_STATE names cannot be written\n", stderr);
            std::fflush(stderr);
        }
    }
} // namespace simulator
