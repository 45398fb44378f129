#include "simulator/trace.h"

#include "simulator/texts.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace simulator
{
    namespace
    {
        struct Trace
        {
            std::mutex mutex;
            std::condition_variable grown;
            std::vector<std::string> lines;
            std::uint64_t cleared = 0; // how many lines came before the first one held
        };

        // Never destroyed: at process end a thread may have been killed while it held the lock.
        Trace& TheTrace()
        {
            static auto& trace = *new Trace;
            return trace;
        }

        std::uint64_t Append(std::string_view mark, std::string_view name, std::string_view arguments,
                             std::string_view result)
        {
            auto line = std::to_string(GetCurrentThreadId()).append(mark).append(name);
            line.append("(").append(arguments).append(")").append(result);
            // A line feed inside a text must not look like the end of the line.
            std::replace(line.begin(), line.end(), '\n', ' ');
            auto& trace = TheTrace();
            std::uint64_t number = 0;
            {
                std::lock_guard const lock(trace.mutex);
                number = trace.cleared + trace.lines.size();
                trace.lines.push_back(std::move(line));
            }
            trace.grown.notify_all();
            return number;
        }
    } // namespace

    std::uint64_t TraceCall(std::string_view method, std::string_view arguments)
    {
        return Append(" ", method, arguments, {});
    }

    void TraceResult(std::uint64_t line, std::string_view result)
    {
        if (result.empty())
        {
            return;
        }
        auto text = " -> " + std::string(result);
        std::replace(text.begin(), text.end(), '\n', ' ');
        auto& trace = TheTrace();
        {
            std::lock_guard const lock(trace.mutex);
            if (line < trace.cleared)
            {
                return;
            }
            trace.lines[line - trace.cleared] += text;
        }
        trace.grown.notify_all();
    }

    void TraceEvent(std::string_view event, std::string_view arguments)
    {
        Append(" ! ", event, arguments, {});
    }

    void TraceEventFailure(std::string_view event, std::string_view arguments, HRESULT code)
    {
        Append(" ! ", event, arguments, " -> " + CodeText(code));
    }

    std::string TraceText()
    {
        auto& trace = TheTrace();
        std::lock_guard const lock(trace.mutex);
        std::string text;
        for (auto const& line : trace.lines)
        {
            text.append(line).append("\n");
        }
        return text;
    }

    void ClearTrace()
    {
        auto& trace = TheTrace();
        std::lock_guard const lock(trace.mutex);
        trace.cleared += trace.lines.size();
        trace.lines.clear();
    }

    bool WaitForTrace(std::string_view text, std::uint32_t count, std::uint32_t milliseconds)
    {
        auto& trace = TheTrace();
        std::unique_lock lock(trace.mutex);
        return trace.grown.wait_for(lock, std::chrono::milliseconds(milliseconds), [&] {
            auto const matches = std::count_if(trace.lines.begin(), trace.lines.end(), [&](std::string const& line) {
                return line.find(text) != std::string::npos;
            });
            return matches >= static_cast<std::ptrdiff_t>(count);
        });
    }
} // namespace simulator
