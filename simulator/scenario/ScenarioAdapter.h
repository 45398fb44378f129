// What a scenario says of the PC's adapter and its radio.
#pragma once

#include "simulator/scenario/TableReader.h"

namespace simulator
{
    void ReadAdapter(TableReader& reader, Adapter& adapter);
    void ReadRadio(TableReader& reader, Radio& radio);
} // namespace simulator
