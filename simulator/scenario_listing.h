// What a scenario says of the plug-and-play tool.
#pragma once

#include "simulator/scenario_reader.h"

namespace simulator
{
    void ReadListing(TableReader& reader, Listing& listing);
} // namespace simulator
