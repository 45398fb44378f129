#include "simulator/scenario/StateFile.h"

#include "simulator/scenario/FileLock.h"
#include "simulator/scenario/NamedFile.h"

#include <chrono>
#include <fstream>
#include <system_error>
#include <thread>

namespace simulator
{
    namespace
    {
        std::filesystem::path StateFile()
        {
            return FileNamedBy("VORLINK_SIMULATOR_STATE");
        }

        PairingState Read(std::filesystem::path const& file)
        {
            std::error_code missing;
            return std::filesystem::exists(file, missing) ? ParsePairingState(ReadText(file), Utf8Name(file))
                                                          : PairingState();
        }

        bool Write(std::filesystem::path const& file, std::string const& text)
        {
            std::ofstream stream(file, std::ios::binary);
            stream << text;
            stream.close();
            return !stream.fail();
        }

        // Fails for as long as a stranger has the file open, who knows of no lock.
        bool Rename(std::filesystem::path const& from, std::filesystem::path const& to)
        {
            std::error_code error;
            for (int attempt = 0; attempt < 100; ++attempt)
            {
                std::filesystem::rename(from, to, error);
                if (!error)
                {
                    return true;
                }
                std::this_thread::sleep_for(std::chrono::milliseconds(10));
            }
            return false;
        }

        // By way of a second file: who reads without the lock, or after a process that has ended here, finds it whole.
        bool Replace(std::filesystem::path const& file, std::string const& text)
        {
            auto written = file;
            written += ".new";
            return Write(written, text) && Rename(written, file);
        }
    } // namespace

    void ApplyStateFile(Scenario& scenario)
    {
        auto const file = StateFile();
        std::error_code missing;
        if (file.empty() || !std::filesystem::exists(file, missing))
        {
            return;
        }
        try
        {
            // Unheld, in a folder that cannot be written to, the file is not replaced either.
            FileLock const lock(file);
            ApplyPairingState(Read(file), scenario);
        }
        catch (ScenarioError const& error)
        {
            Complain(error.what());
        }
    }

    bool HasStateFile()
    {
        return !StateFile().empty();
    }

    void ChangeStateFile(std::string const& id, PairingState const& now)
    {
        auto const file = StateFile();
        try
        {
            FileLock const lock(file);
            auto state = Read(file);
            state[id] = now.at(id);
            state.insert(now.begin(), now.end());
            if (!lock.IsHeld() || !Replace(file, PairingStateText(state)))
            {
                Complain("the file that VORLINK_SIMULATOR_STATE names cannot be written");
            }
        }
        catch (ScenarioError const& error)
        {
            Complain(error.what());
        }
    }
} // namespace simulator
