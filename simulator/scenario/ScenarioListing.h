// What a scenario says of the plug-and-play tool.
#pragma once

#include "simulator/scenario/TableReader.h"

namespace simulator
{
    void ReadListing(TableReader& reader, Listing& listing);
} // namespace simulator
