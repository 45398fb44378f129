// The phone watcher's callback.
#pragma once

#include "interface/vorlink_c.h"

#include <cstdint>

namespace wrapper
{
    // From now on this one hears of phones. A Failure when the handle is not open.
    void ListenForPhones(vorlink_t const* handle, vorlink_phone_callback callback, void* context);

    // What the library gets in its place.
    void OnPhone(wchar_t const* name, std::uint32_t length);
} // namespace wrapper
