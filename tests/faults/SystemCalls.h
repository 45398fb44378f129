// The operating system's own functions, failing the library on demand.
#pragma once

#include <string_view>

namespace test
{
    bool IsSystemCall(std::string_view call);

    // The library's call of it that comes after `passes` others fails; those after it go through.
    void FailSystemCall(std::string_view call, unsigned passes);
    bool HasFailedSystemCall();
} // namespace test
