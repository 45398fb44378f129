#include "wrapper/Pairings.h"

#include "wrapper/Failure.h"
#include "wrapper/Text.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdio>
#include <string_view>
#include <utility>

namespace wrapper
{
    namespace
    {
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
            if (state.inCall.thread == std::this_thread::get_id())
            {
                state.inCall = {};
            }
            Waiter const waiter = std::exchange(state.waiter, {});
            Running const running(state, &State::reportsRunning);
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
                return state.kind == Kind::Unpairing && state.unpairings % unpairingsToldApart == Index;
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

    bool ForgetPairing(State& state, vorlink_t const* handle)
    {
        // Two searches at a time would take each other's devices, so one that goes on is not over.
        bool const isSearching = state.inCall.ticket != 0 && state.inCall.handle == handle;
        if (state.lasts && state.waiter.handle == handle)
        {
            state.waiter = {handle, {}, nullptr, nullptr, nullptr};
            state.lasts = isSearching;
        }
        return isSearching || state.reportsRunning != 0;
    }

    Call::Call(Waiter waiter)
    {
        auto& state = TheState();
        std::unique_lock lock(state.mutex);
        // A report may have come before its call has returned, which then takes an instant; or a late one of an earlier
        // pairing in the place of one whose search still goes on.
        constexpr std::chrono::milliseconds instant{100};
        if (!state.lasts)
        {
            state.callEnded.wait_for(lock, instant, [&] { return state.inCall.ticket == 0 || state.lasts; });
        }
        RequireOpen(state, waiter.handle);
        if (state.lasts || state.inCall.ticket != 0)
        {
            throw Failure{VORLINK_BUSY, CodeText(VORLINK_BUSY)};
        }
        m_ticket = ++state.ticket;
        m_unpairing = state.unpairings += waiter.onUnpaired ? 1 : 0;
        state.kind = waiter.onPaired ? Kind::Pairing : Kind::Unpairing;
        state.lasts = true;
        state.inCall = {m_ticket, std::this_thread::get_id(), waiter.handle};
        state.waiter = std::move(waiter);
    }

    Call::~Call()
    {
        auto& state = TheState();
        std::lock_guard const lock(state.mutex);
        if (state.inCall.ticket == m_ticket)
        {
            state.inCall = {};
            state.callEnded.notify_all();
        }
        if (!state.lasts || state.ticket != m_ticket)
        {
            return;
        }
        bool const isForgotten = !state.waiter.onPaired && !state.waiter.onUnpaired;
        state.lasts = m_succeeded && !isForgotten;
    }

    UnpairResultCallback Call::UnpairCallback() const
    {
        return unpairCallbacks[m_unpairing % unpairingsToldApart];
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
} // namespace wrapper
