// Which handles are open, what was begun by them, and the callbacks that the library gets in the place of the host's.
#pragma once

#include "interface/Vorlink.h"
#include "interface/vorlink_c.h"

#include <cstdint>
#include <string>

namespace wrapper
{
    vorlink_t* OpenHandle();

    // A Failure when it is not open.
    void RequireOpen(vorlink_t const* handle);

    // These return whether a callback or a search still runs.
    bool CloseHandleAndForget(vorlink_t const* handle);
    bool Forget(vorlink_t const* handle, std::int32_t operation);

    // A pairing or an unpairing; the callback of the other kind is null.
    struct Waiter
    {
        vorlink_t const* handle = nullptr;
        std::string name;
        vorlink_pair_callback onPaired = nullptr;
        vorlink_unpair_callback onUnpaired = nullptr;
        void* context = nullptr;
    };

    // One call of the library that pairs or unpairs. A Failure when another lasts. What it begins lasts until its
    // report; or ends with the call when that fails, or when it was forgotten meanwhile.
    class Call
    {
    public:
        explicit Call(Waiter waiter);
        Call(Call const&) = delete;
        Call& operator=(Call const&) = delete;
        ~Call();

        UnpairResultCallback UnpairCallback() const;

        void Succeed()
        {
            m_succeeded = true;
        }

    private:
        std::uint64_t m_ticket;
        bool m_succeeded = false;
    };

    void OnPaired(PairReport report);

    void ListenForPhones(vorlink_t const* handle, vorlink_phone_callback callback, void* context);

    void OnPhone(wchar_t const* name, std::uint32_t length);
} // namespace wrapper
