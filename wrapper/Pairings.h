// Pairings and unpairings, one at a time, and the callbacks that the library gets in the place of the host's.
#pragma once

#include "interface/Vorlink.h"
#include "wrapper/State.h"

#include <cstdint>

namespace wrapper
{
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
        std::uint64_t m_unpairing;
        bool m_succeeded = false;
    };

    void OnPaired(PairReport report);
} // namespace wrapper
