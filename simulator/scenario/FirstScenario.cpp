#include "simulator/scenario/FirstScenario.h"

#include "simulator/scenario/DefaultScenario.h"
#include "simulator/scenario/PairingState.h"

#ifdef _WIN32
#include <windows.h>
#endif

#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <system_error>
#include <utility>

namespace simulator
{
    namespace
    {
        std::filesystem::path FileNamedBy(char const* variable)
        {
#ifdef _WIN32
            // Not std::getenv: it may have copied the environment before the program set the variable.
            std::wstring name(32768, L'\0');
            auto const wide = std::filesystem::path(variable).wstring();
            name.resize(GetEnvironmentVariableW(wide.c_str(), name.data(), static_cast<DWORD>(name.size())));
            return name;
#else
            auto const* const name = std::getenv(variable);
            return name ? name : "";
#endif
        }

        std::string Utf8Name(std::filesystem::path const& path)
        {
            auto const utf8 = path.u8string();
            return {utf8.begin(), utf8.end()};
        }

        std::string ReadText(std::filesystem::path const& path)
        {
            std::ifstream stream(path, std::ios::binary);
            if (!stream)
            {
                throw ScenarioError(Utf8Name(path) + ":0: the file cannot be opened");
            }
            return {std::istreambuf_iterator<char>(stream), {}};
        }

        void Complain(std::string const& fault)
        {
            std::fprintf(stderr, "vorlink_simulator: %s\n", fault.c_str());
            std::fflush(stderr);
        }

        // A faulty file leaves the endpoints as the scenario has them.
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
                ApplyPairingState(ParsePairingState(ReadText(file), Utf8Name(file)), scenario);
            }
            catch (ScenarioError const& error)
            {
                Complain(error.what());
            }
        }
    } // namespace

    std::filesystem::path StateFile()
    {
        return FileNamedBy("VORLINK_SIMULATOR_STATE");
    }

    FirstScenario LoadFirstScenario()
    {
        auto const file = FileNamedBy("VORLINK_SCENARIO");
        try
        {
            auto scenario = file.empty() ? ParseScenario(DefaultScenario(), "default scenario")
                                         : ParseScenario(ReadText(file), Utf8Name(file));
            ApplyStateFile(scenario);
            return {std::move(scenario), {}};
        }
        catch (ScenarioError const& error)
        {
            Complain(error.what());
            return {{}, error.what()};
        }
    }
} // namespace simulator
