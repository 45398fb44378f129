// The names that a phone watcher's callback received. Callbacks are plain functions, so each Slot is a callback.
#pragma once

#include "tests/support/Patience.h"

#include <windows.h>

#include <condition_variable>
#include <cstddef>
#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

namespace test
{
    struct Phone
    {
        std::wstring name;    // up to its terminator
        std::uint32_t length; // as told
        DWORD thread;
    };

    template <int Slot>
    class PhonesHeard
    {
    public:
        static void Callback(wchar_t const* name, std::uint32_t length)
        {
            std::lock_guard const lock(mutex);
            phones.push_back({name, length, GetCurrentThreadId()});
            arrival.notify_all();
        }

        static bool WaitFor(std::size_t count)
        {
            std::unique_lock lock(mutex);
            return arrival.wait_for(lock, patience, [&] { return phones.size() >= count; });
        }

        static Phone At(std::size_t index)
        {
            std::lock_guard const lock(mutex);
            return phones.at(index);
        }

        static std::vector<std::wstring> Names()
        {
            std::lock_guard const lock(mutex);
            std::vector<std::wstring> names;
            names.reserve(phones.size());
            for (auto const& phone : phones)
            {
                names.push_back(phone.name);
            }
            return names;
        }

    private:
        static inline std::mutex mutex;
        static inline std::condition_variable arrival;
        static inline std::vector<Phone> phones;
    };

    using Phones = PhonesHeard<0>;
    using OtherPhones = PhonesHeard<1>;
} // namespace test
