// One event's registrations, and raising it.
#pragma once

#include "simulator/com/Codes.h"
#include "simulator/com/Ref.h"
#include "simulator/neighbourhood/Neighbourhood.h"
#include "simulator/trace/Call.h"

#include <algorithm>
#include <atomic>
#include <mutex>
#include <vector>

namespace simulator
{
    inline INT64 NextToken() noexcept
    {
        static constinit std::atomic<INT64> last{0};
        return ++last;
    }

    template <typename Handler>
    class EventSource
    {
    public:
        struct Registration
        {
            INT64 token;
            Ref<Handler> handler;
        };

        HRESULT Add(Method method, std::string const& instance, Handler* handler, EventRegistrationToken* token)
        {
            return Call(method, instance, [&](std::string& result) {
                if (!handler)
                {
                    return E_INVALIDARG;
                }
                if (!token)
                {
                    return E_POINTER;
                }
                token->value = NextToken();
                result = std::to_string(token->value);
                std::lock_guard const lock(m_mutex);
                m_registrations.push_back({token->value, Ref<Handler>(handler)});
                return S_OK;
            });
        }

        // A token that names nothing is no failure.
        HRESULT Remove(Method method, std::string const& instance, EventRegistrationToken token)
        {
            return Call(method, instance + ", " + std::to_string(token.value), [&](std::string&) {
                Forget(token.value);
                return S_OK;
            });
        }

        bool IsEmpty()
        {
            std::lock_guard const lock(m_mutex);
            return m_registrations.empty();
        }

        std::vector<Registration> Snapshot()
        {
            std::lock_guard const lock(m_mutex);
            return m_registrations;
        }

        void Forget(INT64 token)
        {
            Registration dropped{}; // released outside the lock: it may be the handler's last reference
            std::lock_guard const lock(m_mutex);
            auto const found = std::find_if(m_registrations.begin(), m_registrations.end(),
                                            [&](Registration const& one) { return one.token == token; });
            if (found != m_registrations.end())
            {
                std::swap(dropped, *found);
                m_registrations.erase(found);
            }
        }

        void Clear()
        {
            std::vector<Registration> dropped; // released outside the lock, as above
            std::lock_guard const lock(m_mutex);
            std::swap(dropped, m_registrations);
        }

    private:
        std::mutex m_mutex;
        std::vector<Registration> m_registrations;
    };

    // Calls the handlers that were registered when the event came up, with no lock held. A handler that is
    // removed meanwhile may still be called once, as on Windows. `begin` gives a Ref to the sender, null when
    // the sender is gone; `arguments` makes the second argument, one for all handlers.
    template <typename Handler, typename Begin, typename Arguments>
    void Raise(EventSource<Handler>& source, std::uint64_t generation, std::string_view event, std::string const& trace,
               Begin begin, Arguments arguments)
    {
        auto const handlers = source.Snapshot();
        if (handlers.empty())
        {
            PassGate(generation);
            return;
        }
        auto const sender = begin();
        if (!sender)
        {
            return;
        }
        decltype(arguments()) second;
        for (auto const& [token, handler] : handlers)
        {
            TraceEvent(event, trace); // even when it is held now: so a test sees that the event is in flight
            if (!PassGate(generation))
            {
                return;
            }
            if (!second)
            {
                second = arguments();
            }
            HRESULT const code = handler->Invoke(sender.Get(), second.Get());
            if (FAILED(code))
            {
                TraceEventFailure(event, trace, code);
            }
            if (code == disconnected)
            {
                source.Forget(token);
            }
        }
    }
} // namespace simulator
