#include "PairingDesk.h"

#include <vorlink/Vorlink.h>

#include <condition_variable>
#include <mutex>
#include <optional>

namespace
{
    std::mutex mutex;
    std::condition_variable ended;
    std::optional<PairReport> answer;
    bool lasts = false;

    Vorlink& Library()
    {
        static Vorlink* const vorlink = [] {
            auto object = getVorlinkPtr();
            object->Initialize();
            return object.release(); // kept to the end: the library may still be at work
        }();
        return *vorlink;
    }

    void OnPaired(PairReport report)
    {
        std::lock_guard const lock(mutex);
        answer = report;
        lasts = false;
        ended.notify_all();
    }
} // namespace

Outcome PairDevice(std::string const& name, std::chrono::milliseconds patience)
{
    std::unique_lock lock(mutex);
    if (!ended.wait_for(lock, patience, [] { return !lasts; }))
    {
        return Outcome::Busy;
    }
    lasts = true;
    answer.reset();
    lock.unlock(); // the report may come inside the call, on this thread
    try
    {
        Library().PairedDevice(name, OnPaired);
    }
    catch (...)
    {
        lock.lock();
        lasts = false;
        return Outcome::Failed;
    }
    lock.lock();
    if (!ended.wait_for(lock, patience, [] { return answer.has_value(); }))
    {
        return Outcome::NoAnswer;
    }
    return answer->paired ? Outcome::Paired : answer->address ? Outcome::Refused : Outcome::NotFound;
}
