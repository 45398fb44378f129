// Devices to ask queries about.
#pragma once

#include "simulator/query/Aqs.h"

#include <string>
#include <string_view>

namespace test
{
    inline constexpr std::string_view classicId = "{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}";
    inline constexpr std::string_view leId = "{bb7bb05e-5972-42b5-94fc-76eaa7084d49}";

    inline simulator::Properties Device(std::string_view protocol, bool canPair, bool isPaired)
    {
        return {
            {"System.Devices.Aep.ProtocolId", simulator::Guid{std::string(protocol)}},
            {"System.Devices.Aep.CanPair", canPair},
            {"System.Devices.Aep.IsPaired", isPaired},
        };
    }

    inline simulator::Properties Speaker()
    {
        return {
            {"System.ItemNameDisplay", "Kitchen Speaker"},
            {"System.Devices.Aep.DeviceAddress", "a4:c1:38:5e:22:0f"},
            {"System.Devices.Aep.ProtocolId", simulator::Guid{std::string(classicId)}},
            {"System.Devices.Aep.CanPair", true},
            {"System.Devices.Aep.IsPaired", false},
            {"System.Devices.Aep.SignalStrength", -60},
            {"System.Devices.Aep.ModelName", {}},
        };
    }

    inline bool Selects(std::string_view query, simulator::Properties const& properties)
    {
        return simulator::Query::Parse(query).Matches(properties);
    }
} // namespace test
