#include "bench/Clients.h"

#include "bench/Library.h"
#include "bench/Neighbourhood.h"
#include "bench/Stamps.h"
#include "simulator/VorlinkSimulator.h"

#include <condition_variable>
#include <memory>
#include <mutex>
#include <stdexcept>
#include <string>

namespace bench
{
    namespace
    {
        // Callbacks are plain functions.
        std::mutex mutex;
        std::condition_variable arrival;
        bool hasReported = false;
        Clock::time_point reported;

        void Report()
        {
            auto const now = Clock::now();
            std::lock_guard const lock(mutex);
            reported = now;
            hasReported = true;
            arrival.notify_one();
        }

        void WaitForReport()
        {
            constexpr std::chrono::seconds patience(60);
            std::unique_lock lock(mutex);
            if (!arrival.wait_for(lock, patience, [] { return hasReported; }))
            {
                throw std::runtime_error("no report");
            }
            hasReported = false;
        }

        // Before the request is out there is nothing to complete.
        void Complete(std::string const& identifier)
        {
            constexpr std::int32_t authenticationFailure = 9;
            if (!SimulatePairingCompletes(identifier.c_str(), authenticationFailure))
            {
                throw std::runtime_error(SimulatorLastError());
            }
        }
    } // namespace

    Client LibraryClient()
    {
        return [](std::int64_t index) { TheLibrary().PairedDevice(NameOf(index), [](PairReport) { Report(); }); };
    }

    Client PlainClient(BareClient::Reading reading)
    {
        auto const client = std::make_shared<BareClient>(reading);
        return [client](std::int64_t index) {
            auto const name = NameOf(index);
            client->Pair(std::wstring(name.begin(), name.end()), [](auto) { Report(); });
        };
    }

    Course Pair(Client const& client, std::int64_t index)
    {
        auto const& stamps = TheStamps();
        Course course;
        course.begun = Clock::now();
        client(index);
        Complete(IdentifierOf(index));
        WaitForReport();
        course.event = stamps.event;
        course.request = stamps.request;
        course.completed = stamps.completed;
        course.reported = reported;
        Settle();
        return course;
    }
} // namespace bench
