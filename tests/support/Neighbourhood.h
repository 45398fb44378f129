// Scenarios for the simulated platform, written where a test needs them.
#pragma once

#include "simulator/VorlinkSimulator.h"
#include "tests/support/Codes.h"
#include "tests/support/Patience.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace test
{
    inline constexpr char adapter[] = "00:1a:7d:da:71:13";

    inline std::string ClassicId(std::string const& address)
    {
        return std::string("Bluetooth#Bluetooth") + adapter + "-" + address;
    }

    inline std::string LeId(std::string const& address)
    {
        return std::string("BluetoothLE#BluetoothLE") + adapter + "-" + address;
    }

    // One device's table; `rest` continues it ("can-pair = false\n[device.pairing]\nduration-ms = 0").
    inline std::string Device(std::string const& name, std::string const& address, std::string const& rest = "")
    {
        return "[[device]]\nname = '''" + name + "'''\naddress = '" + address + "'\n" + rest + "\n";
    }

    // The rest of a device that agrees to a pairing at once, or when the test lets it.
    inline constexpr char pairsAtOnce[] = "[device.pairing]\nduration-ms = 0";
    inline constexpr char pairsOnDemand[] = "[device.pairing]\nduration-ms = 'never'";

    // Enumeration that completes as soon as the present devices are reported.
    inline std::string const prompt = std::string("adapter = '") + adapter + "'\nenumeration-completes-ms = 0\n";

    // Enumeration that completes by SimulateEnumerationCompletes alone.
    inline std::string const patient = std::string("adapter = '") + adapter + "'\nenumeration-completes-ms = 'never'\n";

    // Behind the above: a platform on which a watcher without a handler of Removed, as the library's lookups have, also
    // reports what comes after the enumeration. So a queue fills that nobody takes from any more.
    inline constexpr char generous[] = "[platform]\nlate-events-to-all = true\n";

    inline constexpr char firstAddress[] = "00:00:00:00:00:01";
    inline constexpr char secondAddress[] = "00:00:00:00:00:02";

    inline std::string TwoDevices()
    {
        return prompt + Device("First", firstAddress) + Device("Second", secondAddress);
    }

    // A device of both protocols, in many tests "Tag".
    inline constexpr char tagAddress[] = "c1:d2:e3:f4:a5:b6";

    inline void Load(std::string const& scenario)
    {
        ASSERT_TRUE(SimulateScenario(scenario.c_str())) << SimulatorLastError();
    }

    inline constexpr auto patienceInMs = static_cast<std::uint32_t>(std::chrono::milliseconds(patience).count());

    // Until the platform has nothing more to do.
    inline bool WaitIdle()
    {
        return SimulatorWaitIdle(patienceInMs) != 0;
    }

    inline bool WaitForCall(std::string const& text, std::uint32_t count = 1)
    {
        return SimulatorWaitForTrace(text.c_str(), count, patienceInMs) != 0;
    }
} // namespace test
