#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace simulator
{
    inline constexpr std::size_t mostKeyParts = 32;

    // The line of TOML's first key that has more parts ("a.b.c" has three). Tables that are nested are destroyed by
    // recursion: on Windows, whose stack is small, some ten thousand end the process.
    std::optional<std::size_t> FindDeepKey(std::string_view toml);
} // namespace simulator
