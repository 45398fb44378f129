#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace host
{
    // The one that a word was most likely meant to be; nothing where none is near. Letters of either case count as
    // equal.
    std::optional<std::string> Nearest(std::string_view word, std::vector<std::string> const& known);
} // namespace host
