#pragma once

#include "simulator/scenario/Scenario.h"

#include <string>

namespace simulator
{
    // What the tool prints: the scenario's LE devices amid unrelated ones. Lines end in a line feed. What is not
    // ASCII comes out as question marks, one a UTF-16 unit, as in a code page that lacks the character.
    std::string ListingText(Scenario const& scenario);
} // namespace simulator
