#include "wrapper/Operations.h"

#include "wrapper/Failure.h"
#include "wrapper/Text.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdio>
#include <memory>
#include <mutex>
#include <string_view>
#include <utility>
#include <vector>

struct vorlink_t
{
};

namespace wrapper
{
    namespace
    {
        enum class Kind
        {
            Pairing,
            Unpairing,
        };

        struct Listener
        {
            vorlink_t const* handle = nullptr;
            vorlink_phone_callback callback = nullptr;
            void* context = nullptr;
        };

        struct State
        {
            std::mutex mutex;
            std::vector<std::unique_ptr<vorlink_t>> handles;

            std::uint64_t ticket = 0; // of the latest pairing or unpairing
            Kind kind = Kind::Pairing;
            bool lasts = false;
            bool isInCall = false; // the library's function has not returned
            Waiter waiter;         // without callbacks when it was forgotten

            Listener listener;

            // Callbacks of the host.
            int reportsRunning = 0;
            int phonesRunning = 0;
        };

        // Never destroyed: the library may call back while the process ends.
        State& TheState()
        {
            static auto& state = *new State;
            return state;
        }

        auto FindHandle(State const& state, vorlink_t const* handle)
        {
            return std::ranges::find(state.handles, handle, [](auto const& each) { return each.get(); });
        }

        void RequireOpen(State const& state, vorlink_t const* handle)
        {
            RequireNotNull(handle, "The handle");
            if (FindHandle(state, handle) == state.handles.end())
            {
                throw Failure{VORLINK_INVALID_ARGUMENT, "The handle is not open."};
            }
        }

        bool ForgetPairing(State& state, vorlink_t const* handle)
        {
            bool isSearching = false;
            if (state.lasts && state.waiter.handle == handle)
            {
                state.waiter = {handle, {}, nullptr, nullptr, nullptr};
                isSearching = state.isInCall; // two searches at a time would take each other's devices
                state.lasts = isSearching;
            }
            return isSearching || state.reportsRunning != 0;
        }

        bool ForgetPhones(State& state, vorlink_t const* handle)
        {
            if (state.listener.handle == handle)
            {
                state.listener = {};
            }
            return state.phonesRunning != 0;
        }

        // Counts a callback of the host while it runs.
        class Running
        {
        public:
            Running(std::mutex& mutex, int& count) // the mutex is held
                : m_mutex(mutex)
                , m_count(count)
            {
                ++m_count;
            }
            Running(Running const&) = delete;
            Running& operator=(Running const&) = delete;
            ~Running()
            {
                std::lock_guard const lock(m_mutex);
                --m_count;
            }

        private:
            std::mutex& m_mutex;
            int& m_count;
        };

        // Hands what lasts to `tell` when the report is its own.
        template <typename IsOwn, typename Tell>
        void Report(IsOwn isOwn, Tell tell)
        {
            auto& state = TheState();
            std::unique_lock lock(state.mutex);
            if (!state.lasts || !isOwn(state))
            {
                return;
            }
            state.lasts = false;
            Waiter const waiter = std::exchange(state.waiter, {});
            Running const running(state.mutex, state.reportsRunning);
            lock.unlock();
            tell(waiter);
        }

        vorlink_pair_report MakeReport(PairReport const& from, std::string_view name)
        {
            vorlink_pair_report report{};
            report.struct_size = sizeof report;
            report.paired = from.paired;
            report.address = from.address;
            // Not the library's texts: a long name there runs on into the address.
            CopyText(report.name, name);
            if (from.address != 0)
            {
                std::snprintf(report.address_text, sizeof report.address_text, "%012llx",
                              static_cast<unsigned long long>(from.address));
            }
            return report;
        }

        // The library hands each unpairing's report to the callback of that very call.
        constexpr std::size_t unpairingsToldApart = 8;

        template <std::size_t Index>
        void OnUnpaired(bool success, int)
        {
            auto const isOwn = [](State const& state) {
                return state.kind == Kind::Unpairing && state.ticket % unpairingsToldApart == Index;
            };
            Report(isOwn, [success](Waiter const& waiter) {
                if (waiter.onUnpaired)
                {
                    waiter.onUnpaired(waiter.context, success ? 1 : 0);
                }
            });
        }

        template <std::size_t... Index>
        constexpr std::array<UnpairResultCallback, sizeof...(Index)> MakeCallbacks(std::index_sequence<Index...>)
        {
            return {OnUnpaired<Index>...};
        }

        constexpr auto unpairCallbacks = MakeCallbacks(std::make_index_sequence<unpairingsToldApart>());
    } // namespace

    vorlink_t* OpenHandle()
    {
        auto handle = std::make_unique<vorlink_t>();
        auto& state = TheState();
        std::lock_guard const lock(state.mutex);
        return state.handles.emplace_back(std::move(handle)).get();
    }

    void RequireOpen(vorlink_t const* handle)
    {
        auto& state = TheState();
        std::lock_guard const lock(state.mutex);
        RequireOpen(state, handle);
    }

    bool CloseHandleAndForget(vorlink_t const* handle)
    {
        auto& state = TheState();
        std::lock_guard const lock(state.mutex);
        RequireOpen(state, handle);
        bool const reports = ForgetPairing(state, handle);
        bool const phones = ForgetPhones(state, handle);
        state.handles.erase(FindHandle(state, handle));
        return reports || phones;
    }

    bool Forget(vorlink_t const* handle, std::int32_t operation)
    {
        auto& state = TheState();
        std::lock_guard const lock(state.mutex);
        RequireOpen(state, handle);
        switch (operation)
        {
        case VORLINK_PAIRING:
            return ForgetPairing(state, handle);
        case VORLINK_PHONE_WATCHER:
            return ForgetPhones(state, handle);
        default:
            throw Failure{VORLINK_INVALID_ARGUMENT, std::to_string(operation) + " is no operation to forget."};
        }
    }

    Call::Call(Waiter waiter)
    {
        auto& state = TheState();
        std::lock_guard const lock(state.mutex);
        RequireOpen(state, waiter.handle);
        if (state.lasts)
        {
            throw Failure{VORLINK_BUSY, CodeText(VORLINK_BUSY)};
        }
        m_ticket = ++state.ticket;
        state.kind = waiter.onPaired ? Kind::Pairing : Kind::Unpairing;
        state.lasts = true;
        state.isInCall = true;
        state.waiter = std::move(waiter);
    }

    Call::~Call()
    {
        auto& state = TheState();
        std::lock_guard const lock(state.mutex);
        if (!state.lasts || state.ticket != m_ticket)
        {
            return;
        }
        state.isInCall = false;
        bool const isForgotten = !state.waiter.onPaired && !state.waiter.onUnpaired;
        state.lasts = m_succeeded && !isForgotten;
    }

    UnpairResultCallback Call::UnpairCallback() const
    {
        return unpairCallbacks[m_ticket % unpairingsToldApart];
    }

    void OnPaired(PairReport report)
    {
        Report([](State const& state) { return state.kind == Kind::Pairing; },
               [&report](Waiter const& waiter) {
                   if (waiter.onPaired)
                   {
                       auto const told = MakeReport(report, waiter.name);
                       waiter.onPaired(waiter.context, &told);
                   }
               });
    }

    void ListenForPhones(vorlink_t const* handle, vorlink_phone_callback callback, void* context)
    {
        auto& state = TheState();
        std::lock_guard const lock(state.mutex);
        RequireOpen(state, handle);
        state.listener = {handle, callback, context};
    }

    void OnPhone(wchar_t const* name, std::uint32_t length)
    {
        std::string utf8;
        try
        {
            utf8 = ToUtf8({name, length});
        }
        catch (std::bad_alloc const&)
        {
            return; // an exception here would end the process
        }
        auto& state = TheState();
        std::unique_lock lock(state.mutex);
        auto const listener = state.listener;
        if (!listener.callback)
        {
            return;
        }
        Running const running(state.mutex, state.phonesRunning);
        lock.unlock();
        listener.callback(listener.context, utf8.c_str());
    }
} // namespace wrapper
