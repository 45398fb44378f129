// The trace: what was called and what was raised, line by line.
#pragma once

#include <windows.h>

#include <cstdint>
#include <string>
#include <string_view>

namespace simulator
{
    // A call's line stands where the call began, whatever happens inside the call; its result is added at the
    // end, and from then on the line can be waited for. A line that was cleared away meanwhile stays away.
    std::uint64_t TraceCall(std::string_view method, std::string_view arguments);
    void TraceResult(std::uint64_t line, std::string_view result);

    void TraceEvent(std::string_view event, std::string_view arguments);
    void TraceEventFailure(std::string_view event, std::string_view arguments, HRESULT code);

    std::string TraceText();
    void ClearTrace();
    bool WaitForTrace(std::string_view text, std::uint32_t count, std::uint32_t milliseconds);
} // namespace simulator
