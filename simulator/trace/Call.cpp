#include "simulator/trace/Call.h"

#include <deque>
#include <functional>
#include <map>
#include <mutex>

namespace simulator
{
    namespace
    {
        struct Failures
        {
            std::mutex mutex;
            std::map<std::string, std::deque<HRESULT>, std::less<>> queues;
        };

        // Never destroyed, as everything that threads share here.
        Failures& TheFailures()
        {
            static auto& failures = *new Failures;
            return failures;
        }
    } // namespace

    void QueueFailure(std::string_view method, HRESULT code)
    {
        auto& failures = TheFailures();
        std::lock_guard const lock(failures.mutex);
        failures.queues[std::string(method)].push_back(code);
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
        HRESULT const code = queue->second.front();
        queue->second.pop_front();
        return code;
    }
} // namespace simulator
