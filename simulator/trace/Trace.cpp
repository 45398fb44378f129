#include "simulator/trace/Trace.h"

#include "simulator/trace/Texts.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <utility>
#include <vector>

namespace simulator
{
    namespace
    {
        struct Line
        {
            std::string text;
            bool isWhole; // nothing will be added: the call has returned
        };

        struct Trace
        {
            std::mutex mutex;
            std::condition_variable grown;
            std::vector<Line> lines;
            std::uint64_t cleared = 0; // how many lines came before the first one held
        };

        // Never destroyed: at process end a thread may have been killed while it held the lock.
        Trace& TheTrace()
        {
            static auto& trace = *new Trace;
            return trace;
        }

        std::uint64_t Append(std::string_view mark, std::string_view name, std::string_view arguments,
                             std::string_view result, bool isWhole)
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
                trace.lines.push_back({std::move(line), isWhole});
            }
            trace.grown.notify_all();
            return number;
        }
    } // namespace

    std::uint64_t TraceCall(std::string_view method, std::string_view arguments)
    {
        return Append(" ", method, arguments, {}, false);
    }

    void TraceResult(std::uint64_t line, std::string_view result)
    {
        auto text = result.empty() ? std::string() : " -> " + std::string(result);
        std::replace(text.begin(), text.end(), '\n', ' ');
        auto& trace = TheTrace();
        {
            std::lock_guard const lock(trace.mutex);
            if (line < trace.cleared)
            {
                return;
            }
            auto& whole = trace.lines[line - trace.cleared];
            whole.text += text;
            whole.isWhole = true;
        }
        trace.grown.notify_all();
    }

    void TraceEvent(std::string_view event, std::string_view arguments)
    {
        Append(" ! ", event, arguments, {}, true);
    }

    void TraceEventFailure(std::string_view event, std::string_view arguments, HRESULT code)
    {
        Append(" ! ", event, arguments, " -> " + CodeText(code), true);
    }

    std::string TraceText()
    {
        auto& trace = TheTrace();
        std::lock_guard const lock(trace.mutex);
        std::string text;
        for (auto const& line : trace.lines)
        {
            text.append(line.text).append("\n");
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
            auto const matches = std::count_if(trace.lines.begin(), trace.lines.end(), [&](Line const& line) {
                return line.isWhole && line.text.find(text) != std::string::npos;
            });
            return matches >= static_cast<std::ptrdiff_t>(count);
        });
    }
} // namespace simulator
