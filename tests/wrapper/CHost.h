// A host as it sees the library from C.
#pragma once

#include "interface/vorlink_c.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Patience.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace test
{
    // What one context received.
    template <typename Value>
    class Inbox
    {
    public:
        void Put(Value value)
        {
            std::lock_guard const lock(m_mutex);
            m_values.push_back(value);
            m_threads.push_back(GetCurrentThreadId());
            m_arrival.notify_all();
        }

        bool WaitFor(std::size_t count)
        {
            std::unique_lock lock(m_mutex);
            return m_arrival.wait_for(lock, patience, [&] { return m_values.size() >= count; });
        }

        std::size_t Count()
        {
            std::lock_guard const lock(m_mutex);
            return m_values.size();
        }

        Value At(std::size_t index)
        {
            std::lock_guard const lock(m_mutex);
            return m_values.at(index);
        }

        DWORD ThreadOf(std::size_t index)
        {
            std::lock_guard const lock(m_mutex);
            return m_threads.at(index);
        }

    private:
        std::mutex m_mutex;
        std::condition_variable m_arrival;
        std::vector<Value> m_values;
        std::vector<DWORD> m_threads;
    };

    using PairInbox = Inbox<vorlink_pair_report>;
    using UnpairInbox = Inbox<std::int32_t>;
    using PhoneInbox = Inbox<std::string>;

    inline void VORLINK_C_CALL OnPaired(void* context, vorlink_pair_report const* report)
    {
        static_cast<PairInbox*>(context)->Put(*report);
    }

    inline void VORLINK_C_CALL OnUnpaired(void* context, std::int32_t unpaired)
    {
        static_cast<UnpairInbox*>(context)->Put(unpaired);
    }

    inline void VORLINK_C_CALL OnPhone(void* context, char const* name)
    {
        static_cast<PhoneInbox*>(context)->Put(name);
    }

    inline vorlink_t* Open()
    {
        vorlink_t* vorlink = nullptr;
        EXPECT_EQ(vorlink_open(&vorlink), VORLINK_OK) << vorlink_last_error();
        return vorlink;
    }

    // A tag that pairs, or unpairs, when the test lets it.
    inline std::string const slowTag = Device("Tag", tagAddress, pairsOnDemand);
    inline std::string const tagId = ClassicId(tagAddress);

    inline void CompletePairing(std::int32_t status)
    {
        ASSERT_TRUE(SimulatePairingCompletes(tagId.c_str(), status)) << SimulatorLastError();
        ASSERT_TRUE(WaitIdle());
    }
} // namespace test
