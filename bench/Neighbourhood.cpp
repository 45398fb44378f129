#include "bench/Neighbourhood.h"

#include "simulator/VorlinkSimulator.h"

#include <array>
#include <cstdio>
#include <stdexcept>

namespace bench
{
    namespace
    {
        std::string AddressOf(std::int64_t index)
        {
            auto const number = static_cast<unsigned>(index);
            std::array<char, 18> text{};
            std::snprintf(text.data(), text.size(), "a4:c1:38:%02x:%02x:%02x", number >> 16 & 0xff, number >> 8 & 0xff,
                          number & 0xff);
            return text.data();
        }

        void Load(std::int64_t count, std::string scenario, std::string const& lastKeys)
        {
            for (std::int64_t index = 0; index < count; ++index)
            {
                scenario += "[[device]]\nname = '" + NameOf(index) + "'\naddress = '" + AddressOf(index) + "'\n";
                if (index + 1 == count)
                {
                    scenario += lastKeys + "[device.pairing]\nduration-ms = 'never'\n";
                }
            }
            if (!SimulateScenario(scenario.c_str()))
            {
                throw std::runtime_error(SimulatorLastError());
            }
        }
    } // namespace

    void LoadNeighbourhood(std::int64_t count)
    {
        Load(count, "enumeration-completes-ms = 0\n", "");
    }

    void LoadWaitingNeighbourhood(std::int64_t count)
    {
        Load(count, "enumeration-completes-ms = 'never'\n", "appears-ms = 5\n");
    }

    std::string NameOf(std::int64_t index)
    {
        return "Device " + std::to_string(index);
    }

    std::string IdentifierOf(std::int64_t index)
    {
        return "Bluetooth#Bluetooth00:1a:7d:da:71:13-" + AddressOf(index);
    }

    void Settle()
    {
        WaitForEvents();
        SimulateWatchersAbort();
        WaitForEvents();
        SimulatorClearTrace();
    }

    void WaitForEvents()
    {
        constexpr std::uint32_t patienceInMs = 60'000;
        if (!SimulatorWaitIdle(patienceInMs))
        {
            throw std::runtime_error("the simulator does not come to rest");
        }
    }
} // namespace bench
