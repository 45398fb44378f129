// How long a test waits.
#pragma once

#include <chrono>

namespace test
{
    // For what must happen: it comes at once, unless something is broken.
    inline constexpr std::chrono::seconds patience{20};

    // For what must not happen: a broken library would be done in a small part of it. A sound one never does it,
    // so the length decides how surely a fault is seen and never whether the test passes.
    inline constexpr std::chrono::milliseconds moment{300};
} // namespace test
