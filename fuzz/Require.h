// What must hold for any bytes: else the fuzzer stops and shows them.
#pragma once

#include <cstdlib>

namespace test
{
    inline void Require(bool condition)
    {
        if (!condition)
        {
            std::abort();
        }
    }
} // namespace test
