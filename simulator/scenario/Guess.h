#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace simulator
{
    // "; did you mean 'address'?" where one of the names is near to what was given, else nothing.
    std::string Guess(std::string_view given, std::vector<std::string_view> const& names);
} // namespace simulator
