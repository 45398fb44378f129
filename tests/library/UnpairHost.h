// A host that unpairs, and what it had before it when it heard of an outcome.
#pragma once

#include "tests/support/Host.h"
#include "tests/support/LogFile.h"
#include "tests/support/Neighbourhood.h"
#include "tests/support/Patience.h"

#include <windows.h>

#include <condition_variable>
#include <fstream>
#include <mutex>
#include <string>
#include <utility>
#include <vector>

namespace test
{
    struct UnpairCall
    {
        bool success;
        int reserved;
        DWORD thread;
        std::vector<std::string> log; // as it stood during the call
    };

    class UnpairHost
    {
    public:
        static void Callback(bool success, int reserved)
        {
            auto log = Log();
            std::lock_guard const lock(mutex);
            calls.push_back({success, reserved, GetCurrentThreadId(), std::move(log)});
            arrival.notify_all();
        }

        static bool WaitFor(std::size_t count)
        {
            std::unique_lock lock(mutex);
            return arrival.wait_for(lock, patience, [&] { return calls.size() >= count; });
        }

        // Whether nothing more comes for a moment.
        static bool StaysAt(std::size_t count)
        {
            std::unique_lock lock(mutex);
            return !arrival.wait_for(lock, moment, [&] { return calls.size() != count; });
        }

        static std::size_t Count()
        {
            std::lock_guard const lock(mutex);
            return calls.size();
        }

        static UnpairCall At(std::size_t index)
        {
            std::lock_guard const lock(mutex);
            return calls.at(index);
        }

    private:
        static inline std::mutex mutex;
        static inline std::condition_variable arrival;
        static inline std::vector<UnpairCall> calls;
    };

    inline constexpr char classicUnpairing[] = "SubVorlink::UnpairedCurrent";
    inline constexpr char leUnpairing[] = "SubVorlink::UnpairBleDevice";
    inline constexpr char tagAt[] = "c1:d2:e3:f4:a5:b6";

    // The data store as a host finds it that begins with Initialize.
    inline void KnowLe(Vorlink& vorlink, std::string const& entries)
    {
        std::ofstream("MyLEData", std::ios::binary) << entries;
        vorlink.Initialize();
    }

    // "Tag", paired; `rest` goes on with its tables, one for an endpoint ("[device.le.unpairing]").
    inline std::string PairedTag(std::string const& protocols, std::string const& rest = "",
                                 std::string const& top = prompt)
    {
        return top + Device("Tag", tagAt,
                            "protocols = [" + protocols + "]\nis-paired = true\n[device.unpairing]\nduration-ms = 0\n" +
                                rest);
    }

    // A new library object whose log is on.
    inline std::unique_ptr<Vorlink> MakeLoggingVorlink()
    {
        auto vorlink = MakeVorlink();
        vorlink->SetLogEnabled(true);
        return vorlink;
    }

    // Until the log holds that many records of the function; false when they do not come.
    inline bool WaitForRecords(char const* function, std::size_t count)
    {
        auto const end = std::chrono::steady_clock::now() + patience;
        while (LogOf(function).size() < count)
        {
            if (std::chrono::steady_clock::now() > end)
            {
                return false;
            }
            Sleep(5);
        }
        return true;
    }
} // namespace test
