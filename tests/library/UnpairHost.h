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
        return top + Device("Tag", tagAddress,
                            "protocols = [" + protocols + "]\nis-paired = true\n[device.unpairing]\nduration-ms = 0\n" +
                                rest);
    }

    // Until the log holds that many records of the function.
    inline bool WaitForRecords(char const* function, std::size_t count)
    {
        return WaitUntil([=] { return LogOf(function).size() >= count; });
    }

    // "Tag" in the data store, by its address.
    inline std::string const knownTag = "Tag=" + std::string(tagAddress) + "\n";

    // "Tag", whose endpoint of the protocol is unpaired with this status after this time.
    inline std::string TagUnpairing(char const* protocol, int status, char const* duration)
    {
        return PairedTag("'classic', 'le'", std::string("[device.") + protocol + ".unpairing]\nstatus = " +
                                                std::to_string(status) + "\nduration-ms = " + duration + "\n");
    }

    // The Classic side's, without LE data.
    inline std::vector<std::string> ClassicRecords(bool unpaired)
    {
        std::vector<std::string> records = {Record(1145, classicUnpairing, "Entery unpaired  name-> Tag")};
        if (unpaired)
        {
            records.push_back(Record(1174, classicUnpairing,
                                     "unpaired Classic Blueth,start unpaired ble device " + std::string(tagAddress)));
            records.push_back(Record(1177, classicUnpairing, "device Id -> "));
            records.push_back(Record(1180, classicUnpairing, "ble data is bad "));
        }
        return records;
    }

    // Unpairs "Tag" with the log on and the entry in the data store.
    inline std::unique_ptr<Vorlink> UnpairTag(std::string const& scenario, std::string const& entries = knownTag)
    {
        Load(scenario);
        auto vorlink = MakeLoggingVorlink();
        KnowLe(*vorlink, entries);
        vorlink->UnpairedCurrent("Tag", UnpairHost::Callback);
        return vorlink;
    }
} // namespace test
