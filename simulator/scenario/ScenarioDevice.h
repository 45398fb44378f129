// What a scenario says of one device.
#pragma once

#include "simulator/scenario/FaultStories.h"
#include "simulator/scenario/TableReader.h"

namespace simulator
{
    struct Device
    {
        std::vector<Endpoint> endpoints; // one a protocol
        Stories stories;
    };

    // `ids` are those that other devices have.
    Device ReadDevice(TableReader& reader, std::string const& adapter, Stories const& atTheTop,
                      std::set<std::string>& ids);

    // Of all devices, when all of them have been read, with those that their stories bring along. `taken` are the
    // identifiers that there are.
    std::vector<Endpoint> EndpointsOf(std::vector<Device> devices, std::set<std::string> taken);
} // namespace simulator
