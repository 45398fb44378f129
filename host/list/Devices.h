// What is around, device by device. Nothing here needs Windows.
#pragma once

#include "host/Seen.h"

#include <cstddef>
#include <string>
#include <vector>

namespace host
{
    // The endpoints of one address, Classic before LE; there is at least one.
    using Device = std::vector<Seen>;

    // Those that are paired first, then by the signal's strength, then by name.
    std::vector<Device> ToDevices(std::vector<Seen> const& endpoints);

    // The Classic endpoint's, unless it has none.
    std::string const& NameOf(Device const& device);

    std::optional<int> SignalOf(Device const& device);

    bool IsPaired(Device const& device);
    bool IsConnected(Device const& device);
    bool CanPair(Device const& device);

    // "Classic", "LE".
    char const* TextOf(Protocol protocol);

    // "Classic paired, connected"; a protocol is named where the endpoints differ in being paired.
    std::string StateOf(Device const& device);

    // "-48 dBm"; empty where it is unknown.
    std::string SignalText(std::optional<int> signal);

    // Fit for a terminal; what stands for it where there is none.
    std::string ShownName(std::string const& name);

    struct Table
    {
        std::string heading;
        std::vector<std::string> rows;
    };

    // Where there is no room for all of it, protocols are left out first, then the signal, then the address.
    Table LayOut(std::vector<Device> const& devices, std::size_t columns);

    // One endpoint in a line: "Kitchen Speaker  a4:c1:38:5e:22:0f  LE  can pair  -48 dBm".
    std::string LineOf(Seen const& endpoint);
} // namespace host
