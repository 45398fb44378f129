// Listens to a watcher, or to a pairing, of the simulated neighbourhood itself: without a platform above it.
#pragma once

#include "simulator/neighbourhood/Ceremony.h"
#include "simulator/neighbourhood/Watching.h"
#include "tests/support/Patience.h"

#include <gtest/gtest.h>

#include <condition_variable>
#include <mutex>
#include <string>
#include <vector>

namespace test
{
    inline constexpr char speaker[] = "Bluetooth#Bluetooth00:1a:7d:da:71:13-00:00:00:00:00:01";
    inline constexpr char phone[] = "Bluetooth#Bluetooth00:1a:7d:da:71:13-00:00:00:00:00:02";

    // The speaker's keys, after what the scenario says of itself.
    inline void Live(std::string const& rest = "", std::string const& scenario = "enumeration-completes-ms = 0")
    {
        simulator::Restart(simulator::ParseScenario(
            scenario + "\n[[device]]\nname = 'Speaker'\naddress = '00:00:00:00:00:01'\n" + rest, "test"));
    }

    inline void Happens(simulator::Happening const& happening)
    {
        auto& neighbourhood = simulator::TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        simulator::Happen(neighbourhood, happening);
    }

    inline bool IsPaired(char const* id)
    {
        auto& neighbourhood = simulator::TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        return simulator::IsTrue(simulator::FindNeighbour(neighbourhood, id)->endpoint.properties,
                                 simulator::isPairedProperty);
    }

    inline void ExpectIdle()
    {
        EXPECT_TRUE(simulator::WaitIdle(patience));
    }

    // A watcher, and what it has told: "added <id>", "completed", ...
    class Watcher
    {
    public:
        explicit Watcher(std::string const& filter = "", std::vector<std::string> shown = {},
                         platform::DeviceInformationKind kind = platform::DeviceInformationKind::AssociationEndpoint)
            : watching(new simulator::Watching{
                  simulator::Query::Parse(filter), std::make_shared<std::vector<std::string>>(std::move(shown)), kind,
                  [this](std::uint64_t, simulator::Report const& report) { Hear(report); }})
        {
            simulator::Enter(*watching);
        }

        ~Watcher()
        {
            simulator::Leave(*watching);
            ExpectIdle(); // no report comes any more: this is about to go
        }

        Watcher(Watcher const&) = delete;
        Watcher& operator=(Watcher const&) = delete;

        simulator::WatchAnswer Start()
        {
            return simulator::Start(watching);
        }

        simulator::WatchAnswer Stop()
        {
            return simulator::Stop(*watching);
        }

        // What has been told once `last` has been.
        std::vector<std::string> ToldUpTo(std::string const& last)
        {
            std::unique_lock lock(m_mutex);
            EXPECT_TRUE(m_heard.wait_for(lock, patience, [&] { return !m_told.empty() && m_told.back() == last; }))
                << last;
            return m_told;
        }

        std::vector<std::string> Told()
        {
            ExpectIdle();
            std::lock_guard const lock(m_mutex);
            return m_told;
        }

        simulator::Properties LastProperties()
        {
            std::lock_guard const lock(m_mutex);
            return m_last;
        }

        std::shared_ptr<simulator::Watching> const watching;

    private:
        void Hear(simulator::Report const& report)
        {
            constexpr char const* words[] = {"none", "added ", "updated ", "removed ", "completed", "stopped"};
            std::lock_guard const lock(m_mutex);
            m_told.push_back(words[static_cast<std::size_t>(report.event)] + report.id);
            m_last = report.all ? *report.all : report.changed;
            m_heard.notify_all();
        }

        std::mutex m_mutex;
        std::condition_variable m_heard;
        std::vector<std::string> m_told;
        simulator::Properties m_last;
    };
} // namespace test
