#include "host/Operation.h"

#include "host/OwnThread.h"

#include <condition_variable>
#include <mutex>
#include <utility>

namespace host
{
    namespace
    {
        // The library's callbacks carry no context, so what they share with the waiting thread is global.
        struct
        {
            std::mutex mutex;
            std::condition_variable changed;
            Progressed progressed;
        } shared;

        void Change(std::function<void(Progressed&)> const& change)
        {
            std::lock_guard const lock(shared.mutex);
            change(shared.progressed);
            shared.changed.notify_all();
        }

        void OnPairReport(PairReport report)
        {
            Change([&](Progressed& progressed) { progressed.answer = report; });
        }

        void OnUnpairReport(bool success, int)
        {
            Change([=](Progressed& progressed) { progressed.answer = UnpairReport{success}; });
        }

        void Begin(std::function<void()> const& call)
        {
            Change([](Progressed& progressed) { progressed = {}; });
            StartOwnThread([call] {
                try
                {
                    call();
                    Change([](Progressed& progressed) { progressed.returned = true; });
                }
                catch (...)
                {
                    Failure const failure{DescribeCurrentException()};
                    Change([&](Progressed& progressed) { progressed = {true, failure}; });
                }
            });
        }
    } // namespace

    void BeginPairing(Vorlink& vorlink, std::string const& name)
    {
        Begin([&vorlink, name] { vorlink.PairedDevice(name, OnPairReport); });
    }

    void BeginUnpairing(Vorlink& vorlink, std::string const& name)
    {
        Begin([&vorlink, name] { vorlink.UnpairedCurrent(name, OnUnpairReport); });
    }

    void BeginPhonePairing(Vorlink& vorlink, std::string const& name)
    {
        Begin([&vorlink, name] { vorlink.IosPairedDevicce(name, OnPairReport); });
    }

    Progressed WaitForProgress()
    {
        constexpr std::chrono::milliseconds moment{20};
        std::unique_lock lock(shared.mutex);
        auto const before = shared.progressed.returned;
        shared.changed.wait_for(
            lock, moment, [=] { return shared.progressed.answer.has_value() || shared.progressed.returned != before; });
        return shared.progressed;
    }
} // namespace host
