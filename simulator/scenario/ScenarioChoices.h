// What a scenario says of the platform itself.
#pragma once

#include "simulator/scenario/TableReader.h"

namespace simulator
{
    void ReadChoices(TableReader& reader, Choices& choices);
} // namespace simulator
