#include "simulator/trace/Trace.h"

#include "simulator/trace/TraceFile.h"
#include "simulator/trace/TraceLine.h"

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

namespace simulator
{
    struct TracedLine : TraceLine
    {
        std::chrono::steady_clock::time_point begun;
        bool isWhole; // nothing will be added: the call has returned
    };

    namespace
    {
        using Lines = std::vector<std::shared_ptr<TracedLine>>;

        struct Trace
        {
            std::mutex mutex;
            std::condition_variable grown;
            Lines lines;
            std::uint64_t begun = 0;   // how many lines there have been
            std::uint64_t cleared = 0; // how often
        };

        // Never destroyed: at process end a thread may have been killed while it held the lock.
        Trace& TheTrace()
        {
            static auto& trace = *new Trace;
            return trace;
        }

        std::shared_ptr<TracedLine> Append(std::string_view name, std::string_view arguments, bool isEvent,
                                           std::optional<HRESULT> code = {})
        {
            auto const line = std::make_shared<TracedLine>();
            line->thread = GetCurrentThreadId();
            line->isEvent = isEvent;
            line->name = name;
            line->arguments = arguments;
            line->code = code;
            line->isWhole = isEvent;
            auto& trace = TheTrace();
            {
                std::lock_guard const lock(trace.mutex);
                line->time = std::chrono::system_clock::now();
                line->begun = std::chrono::steady_clock::now();
                line->number = trace.begun++;
                trace.lines.push_back(line);
            }
            trace.grown.notify_all();
            if (isEvent)
            {
                WriteToTraceFile(*line);
            }
            return line;
        }

        template <typename Form>
        std::string AllLines(Form form)
        {
            auto& trace = TheTrace();
            std::lock_guard const lock(trace.mutex);
            std::string text;
            for (auto const& line : trace.lines)
            {
                text.append(form(*line)).append("\n");
            }
            return text;
        }

        // Counts the lines with a text, each once: a line that is not whole when it is met is looked at again.
        class Count
        {
        public:
            explicit Count(std::string_view text)
                : m_text(text)
            {
            }

            std::uint64_t Update(Trace const& trace)
            {
                if (m_cleared != trace.cleared)
                {
                    *this = Count(m_text);
                    m_cleared = trace.cleared;
                }
                std::erase_if(m_unfinished, [&](auto const& line) { return Take(*line); });
                for (; m_next < trace.lines.size(); ++m_next)
                {
                    if (!Take(*trace.lines[m_next]))
                    {
                        m_unfinished.push_back(trace.lines[m_next]);
                    }
                }
                return m_count;
            }

        private:
            bool Take(TracedLine const& line)
            {
                if (line.isWhole && TextOf(line).find(m_text) != std::string::npos)
                {
                    ++m_count;
                }
                return line.isWhole;
            }

            std::string_view m_text;
            std::uint64_t m_cleared = 0;
            std::uint64_t m_count = 0;
            std::size_t m_next = 0;
            Lines m_unfinished;
        };
    } // namespace

    std::shared_ptr<TracedLine> TraceCall(std::string_view method, std::string_view arguments)
    {
        return Append(method, arguments, false);
    }

    void TraceResult(TracedLine& line, HRESULT code, std::string const& result)
    {
        auto const took = std::chrono::steady_clock::now() - line.begun;
        auto& trace = TheTrace();
        {
            std::lock_guard const lock(trace.mutex);
            line.code = code;
            line.result = FAILED(code) ? "" : result;
            line.took = std::chrono::duration_cast<std::chrono::microseconds>(took);
            line.isWhole = true;
        }
        trace.grown.notify_all();
        WriteToTraceFile(line);
    }

    void TraceEvent(std::string_view event, std::string_view arguments)
    {
        Append(event, arguments, true);
    }

    void TraceEventFailure(std::string_view event, std::string_view arguments, HRESULT code)
    {
        Append(event, arguments, true, code);
    }

    std::string TraceText()
    {
        return AllLines(TextOf);
    }

    std::string TraceJson()
    {
        return AllLines(JsonOf);
    }

    void ClearTrace()
    {
        auto& trace = TheTrace();
        std::lock_guard const lock(trace.mutex);
        trace.lines.clear();
        ++trace.cleared;
    }

    bool WaitForTrace(std::string_view text, std::uint32_t count, std::uint32_t milliseconds)
    {
        auto& trace = TheTrace();
        Count found(text);
        std::unique_lock lock(trace.mutex);
        return trace.grown.wait_for(lock, std::chrono::milliseconds(milliseconds),
                                    [&] { return found.Update(trace) >= count; });
    }
} // namespace simulator
