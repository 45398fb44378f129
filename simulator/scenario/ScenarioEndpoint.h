// What a scenario says of one endpoint.
#pragma once

#include "simulator/scenario/TableReader.h"

namespace simulator
{
    // An endpoint of which nothing has been said yet.
    Endpoint DefaultEndpoint(std::string adapter);

    // The keys that a device may give for itself, and again for one protocol alone.
    void ReadEndpoint(TableReader& reader, Endpoint& endpoint);
} // namespace simulator
