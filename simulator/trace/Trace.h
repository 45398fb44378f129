// The trace: what was called and what was raised, line by line.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace simulator
{
    struct TracedLine;

    // A call's line stands where the call began, whatever happens inside the call; its result is added at the
    // end, and from then on the line can be waited for. A line that was cleared away meanwhile stays away.
    // The names of methods and events are literals.
    std::shared_ptr<TracedLine> TraceCall(std::string_view method, std::string_view arguments);
    void TraceResult(TracedLine& line, HRESULT code, std::string const& result);

    void TraceEvent(std::string_view event, std::string_view arguments);
    void TraceEventFailure(std::string_view event, std::string_view arguments, HRESULT code);

    std::string TraceText();
    std::string TraceJson(); // an object a line
    void ClearTrace();
    bool WaitForTrace(std::string_view text, std::uint32_t count, std::uint32_t milliseconds);
} // namespace simulator
