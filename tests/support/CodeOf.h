// How the platform's errors reach a caller.
#pragma once

#include "tests/support/Codes.h"

#include <winrt/base.h>

namespace test
{
    // The code of the error that leaves a call; 0 when none does.
    template <typename Action>
    std::int32_t CodeOf(Action action)
    {
        try
        {
            action();
        }
        catch (winrt::hresult_error const& error)
        {
            return error.code();
        }
        return 0;
    }
} // namespace test
