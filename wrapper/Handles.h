// Which handles are open.
#pragma once

#include "interface/vorlink_c.h"

#include <cstdint>

namespace wrapper
{
    vorlink_t* OpenHandle();

    // A Failure when it is not open.
    void RequireOpen(vorlink_t const* handle);

    // These return whether a callback or a search still runs.
    bool CloseHandleAndForget(vorlink_t const* handle);
    bool Forget(vorlink_t const* handle, std::int32_t operation);
} // namespace wrapper
