#include "simulator/trace/Call.h"

#include <deque>
#include <functional>
#include <map>
#include <mutex>

namespace simulator
{
    namespace
    {
        struct Failure
        {
            std::uint32_t passes;
            HRESULT code;
        };

        struct Failures
        {
            std::mutex mutex;
            std::map<std::string, std::deque<Failure>, std::less<>> queues;
        };

        // Never destroyed, as everything that threads share here.
        Failures& TheFailures()
        {
            static auto& failures = *new Failures;
            return failures;
        }
    } // namespace

    void QueueFailure(std::string_view method, std::uint32_t passes, HRESULT code)
    {
        auto& failures = TheFailures();
        std::lock_guard const lock(failures.mutex);
        failures.queues[std::string(method)].push_back({passes, code});
    }

    void ForgetFailures()
    {
        auto& failures = TheFailures();
        std::lock_guard const lock(failures.mutex);
        failures.queues.clear();
    }

    std::optional<HRESULT> TakeFailure(std::string_view method)
    {
        auto& failures = TheFailures();
        std::lock_guard const lock(failures.mutex);
        auto const queue = failures.queues.find(method);
        if (queue == failures.queues.end() || queue->second.empty())
        {
            return std::nullopt;
        }
        auto& next = queue->second.front();
        if (next.passes > 0)
        {
            --next.passes;
            return std::nullopt;
        }
        HRESULT const code = next.code;
        queue->second.pop_front();
        return code;
    }
} // namespace simulator
