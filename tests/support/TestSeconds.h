// How long the tests of the library under load go on.
#pragma once

#include <chrono>
#include <cstdlib>

namespace test
{
    // VORLINK_TEST_SECONDS: for a longer look than the tests' own.
    inline std::chrono::seconds TestSeconds(std::chrono::seconds own)
    {
        char const* const seconds = std::getenv("VORLINK_TEST_SECONDS");
        return seconds ? std::chrono::seconds(std::strtol(seconds, nullptr, 10)) : own;
    }
} // namespace test
