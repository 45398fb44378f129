// Texts that are hexadecimal digits in a fixed shape. Either letter case is read, lower case is kept.
#pragma once

#include "simulator/properties/Property.h"

#include <optional>
#include <string>
#include <string_view>

namespace simulator
{
    // "{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}"
    std::optional<Guid> ParseGuid(std::string_view text);

    // "a4:c1:38:5e:22:0f"
    std::optional<std::string> ParseAddress(std::string_view text);
} // namespace simulator
