// Scenarios for the simulated platform, written where a test needs them.
#pragma once

#include "simulator/VorlinkSimulator.h"

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

    // Enumeration that completes as soon as the present devices are reported.
    inline std::string const prompt = std::string("adapter = '") + adapter + "'\nenumeration-completes-ms = 0\n";

    // Enumeration that completes by SimulateEnumerationCompletes alone.
    inline std::string const patient = std::string("adapter = '") + adapter + "'\nenumeration-completes-ms = 'never'\n";

    inline constexpr char firstAddress[] = "00:00:00:00:00:01";
    inline constexpr char secondAddress[] = "00:00:00:00:00:02";

    inline std::string TwoDevices()
    {
        return prompt + Device("First", firstAddress) + Device("Second", secondAddress);
    }

    inline void Load(std::string const& scenario)
    {
        ASSERT_TRUE(SimulateScenario(scenario.c_str())) << SimulatorLastError();
    }

    inline bool WaitForCall(char const* text, std::uint32_t count = 1)
    {
        return SimulatorWaitForTrace(text, count, 20'000) != 0;
    }
} // namespace test
