#include "host/Operation.h"

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>
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
            Phase phase = Phase::Finding;
            Answer answer;
        } shared;

        void SetAnswer(Answer answer)
        {
            std::lock_guard const lock(shared.mutex);
            shared.answer = std::move(answer);
            shared.changed.notify_all();
        }

        void OnPairReport(PairReport report)
        {
            SetAnswer(report);
        }

        void OnUnpairReport(bool success, int)
        {
            SetAnswer(UnpairReport{success});
        }

        void Call(Vorlink& vorlink, Request const& request)
        {
            switch (request.command)
            {
            case Command::Unpair:
                return vorlink.UnpairedCurrent(request.name, OnUnpairReport);
            case Command::PairPhone:
                return vorlink.IosPairedDevicce(request.name, OnPairReport);
            default:
                return vorlink.PairedDevice(request.name, OnPairReport);
            }
        }

        void Run(VorlinkFactory factory, Request const& request)
        {
            try
            {
                // Never released: the library may still be at work for the object when the process ends.
                Vorlink* const vorlink = factory().release();
                vorlink->SetLogEnabled(request.log);
                vorlink->Initialize(); // loads what earlier runs have learnt
                Call(*vorlink, request);
            }
            catch (...)
            {
                SetAnswer(Failure{DescribeCurrentException()});
                return;
            }
            std::lock_guard const lock(shared.mutex);
            shared.phase = Phase::Working;
            shared.changed.notify_all();
        }
    } // namespace

    Answer Perform(VorlinkFactory factory, Request const& request, Clock::time_point start,
                   ProgressCallback const& progress, PatienceCallback const& patience)
    {
        auto const limit = start + request.timeout;
        auto end = limit; // comes nearer when the operation has returned
        std::thread(Run, factory, request).detach();

        auto lastPhase = Phase::Finding;
        std::unique_lock lock(shared.mutex);
        while (!shared.answer && Clock::now() < end)
        {
            auto const phase = shared.phase;
            lock.unlock();
            if (phase != lastPhase)
            {
                end = std::min(limit, Clock::now() + patience());
            }
            lastPhase = phase;
            auto const elapsed = std::chrono::duration_cast<std::chrono::seconds>(Clock::now() - start);
            progress(phase, elapsed);
            lock.lock();
            shared.changed.wait_until(lock, std::min(end, start + elapsed + std::chrono::seconds(1)),
                                      [&] { return shared.answer.has_value() || shared.phase != phase; });
        }
        if (!shared.answer && end < limit)
        {
            return Silence{};
        }
        return shared.answer;
    }
} // namespace host
