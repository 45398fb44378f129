// Lets a test stand in for one method of a class of the platform, for all of its objects.
#pragma once

#include <windows.h>

#include <cstddef>

namespace test
{
    // From now on calls of the method in this slot of the object's interface go to `replacement`, which gets the
    // object as its first argument. Returns the method's own function.
    template <typename Function>
    Function* ReplaceMethod(void* object, std::size_t slot, Function* replacement)
    {
        auto** const method = *static_cast<Function***>(object) + slot;
        auto* const own = *method;
        DWORD before = 0;
        VirtualProtect(method, sizeof *method, PAGE_READWRITE, &before);
        *method = replacement;
        VirtualProtect(method, sizeof *method, before, &before);
        return own;
    }
} // namespace test
