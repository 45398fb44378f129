// The codes of the platform's errors.
#pragma once

#include <cstdint>

namespace test
{
    constexpr std::int32_t Code(std::uint32_t value)
    {
        return static_cast<std::int32_t>(value);
    }

    // What the tests let the platform fail with: none of the calls in question does so by itself.
    inline constexpr auto platformCode = Code(0x80070490);

    inline constexpr auto outOfBounds = Code(0x8000000B);
    inline constexpr auto changedState = Code(0x8000000C);
    inline constexpr auto illegalMethodCall = Code(0x8000000E);
} // namespace test
