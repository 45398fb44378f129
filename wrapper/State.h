// What the handles share: the library's slots are the process's, so what is begun is as well.
#pragma once

#include "interface/vorlink_c.h"

#include <condition_variable>
#include <cstdint>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace wrapper
{
    // Who waits for a pairing or an unpairing; the callback of the other kind is null.
    struct Waiter
    {
        vorlink_t const* handle = nullptr;
        std::string name;
        vorlink_pair_callback onPaired = nullptr;
        vorlink_unpair_callback onUnpaired = nullptr;
        void* context = nullptr;
    };

    struct Listener
    {
        vorlink_t const* handle = nullptr;
        vorlink_phone_callback callback = nullptr;
        void* context = nullptr;
    };

    // A call that may still be searching: it has not returned, and has not reported on its own thread.
    struct InCall
    {
        std::uint64_t ticket = 0; // 0: none
        std::thread::id thread;
        vorlink_t const* handle = nullptr;
    };

    enum class Kind
    {
        Pairing,
        Unpairing,
    };

    struct State
    {
        std::mutex mutex; // held for an instant, and never while the library or the host is called
        std::uintptr_t latestHandle = 0;
        std::vector<vorlink_t const*> handles; // those that are open

        std::uint64_t ticket = 0;     // of the latest pairing or unpairing
        std::uint64_t unpairings = 0; // of these, the latest
        Kind kind = Kind::Pairing;
        bool lasts = false;
        InCall inCall;
        std::condition_variable callEnded;
        Waiter waiter; // without callbacks when it was forgotten

        Listener listener;

        // Callbacks of the host.
        int reportsRunning = 0;
        int phonesRunning = 0;
    };

    State& TheState();

    // The rest is called with the lock held.

    void RequireOpen(State const& state, vorlink_t const* handle);

    // These return whether a callback, or a search, still runs.
    bool ForgetPairing(State& state, vorlink_t const* handle);
    bool ForgetPhones(State& state, vorlink_t const* handle);

    // Counts a callback of the host until it has returned. Its end takes the lock.
    class Running
    {
    public:
        Running(State& state, int State::*count)
            : m_state(state)
            , m_count(count)
        {
            ++(m_state.*m_count);
        }
        Running(Running const&) = delete;
        Running& operator=(Running const&) = delete;
        ~Running()
        {
            std::lock_guard const lock(m_state.mutex);
            --(m_state.*m_count);
        }

    private:
        State& m_state;
        int State::*m_count;
    };
} // namespace wrapper
