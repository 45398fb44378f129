// What a fuzzer holds a piece to. The abort is reported with its stack and the input that led to it.
#pragma once

#include <cstdlib>

namespace fuzz
{
    inline void Require(bool condition)
    {
        if (!condition)
        {
            std::abort();
        }
    }
} // namespace fuzz
