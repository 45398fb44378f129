// How a failure becomes a code and a sentence: nothing thrown gets past Answer.
#pragma once

#include "interface/vorlink_c.h"

#include <cstdint>
#include <string>

namespace wrapper
{
    // The wrapper's own failures.
    struct Failure
    {
        std::int32_t code;
        std::string sentence;
    };

    char const* CodeText(std::int32_t code) noexcept;

    // What the thread is told when it asks.
    struct LastError
    {
        char sentence[1024] = "";
        std::int32_t hresult = 0;
    };

    LastError& TheLastError() noexcept;

    // Keeps this code for the thread, with its general text, and returns it.
    std::int32_t Remember(std::int32_t code) noexcept;

    // The same of the exception being handled.
    std::int32_t RememberException() noexcept;

    // Does what a function of the boundary does: `action` returns its code.
    template <typename Action>
    std::int32_t Answer(Action action) noexcept
    {
        try
        {
            return Remember(action());
        }
        catch (...)
        {
            return RememberException();
        }
    }

    template <typename Pointer>
    void RequireNotNull(Pointer pointer, char const* name)
    {
        if (!pointer)
        {
            throw Failure{VORLINK_INVALID_ARGUMENT, std::string(name) + " is null."};
        }
    }
} // namespace wrapper
