// Hears every event of a watcher and writes down what it heard.
#pragma once

#include "tests/simulator/Client.h"

#include <windows.h>

#include <mutex>

namespace test
{
    class Recorder
    {
    public:
        explicit Recorder(Com<IDeviceWatcher> const& watcher)
        {
            EventRegistrationToken token{};
            watcher->add_Added(On<AddedHandler>([this](IDeviceWatcher*, IDeviceInformation* device) {
                                   return Write("Added " + IdOf(device));
                               }).Get(),
                               &token);
            watcher->add_Updated(On<UpdateHandler>([this](IDeviceWatcher*, IDeviceInformationUpdate* update) {
                                     std::string keys;
                                     for (auto const& key : KeysOf(update))
                                     {
                                         keys += " " + key;
                                     }
                                     return Write("Updated " + IdOf(update) + keys);
                                 }).Get(),
                                 &token);
            watcher->add_Removed(On<UpdateHandler>([this](IDeviceWatcher*, IDeviceInformationUpdate* update) {
                                     return Write("Removed " + IdOf(update));
                                 }).Get(),
                                 &token);
            watcher->add_EnumerationCompleted(
                On<WatcherHandler>([this](IDeviceWatcher* sender, ::IInspectable* nothing) {
                    return WriteStatus("EnumerationCompleted", sender, nothing);
                }).Get(),
                &token);
            watcher->add_Stopped(On<WatcherHandler>([this](IDeviceWatcher* sender, ::IInspectable* nothing) {
                                     return WriteStatus("Stopped", sender, nothing);
                                 }).Get(),
                                 &token);
        }

        // Since the last time.
        std::vector<std::string> Heard()
        {
            EXPECT_TRUE(WaitIdle()) << TraceText();
            return HeardSoFar();
        }

        // The same, whatever is still on its way.
        std::vector<std::string> HeardSoFar()
        {
            std::lock_guard const lock(m_mutex);
            return std::exchange(m_heard, {});
        }

        std::vector<DWORD> Threads()
        {
            std::lock_guard const lock(m_mutex);
            return m_threads;
        }

    private:
        HRESULT Write(std::string line)
        {
            std::lock_guard const lock(m_mutex);
            m_heard.push_back(std::move(line));
            m_threads.push_back(GetCurrentThreadId());
            return S_OK;
        }

        HRESULT WriteStatus(std::string const& event, IDeviceWatcher* sender, ::IInspectable* nothing)
        {
            auto const status = static_cast<int>(StatusOf(Com<IDeviceWatcher>(sender)));
            return Write(event + " in status " + std::to_string(status) + (nothing ? " with an argument" : ""));
        }

        std::mutex m_mutex;
        std::vector<std::string> m_heard;
        std::vector<DWORD> m_threads;
    };

    inline std::string const addedSpeaker = std::string("Added ") + speaker;
    inline std::string const addedMouse = std::string("Added ") + mouse;
    inline std::string const addedLamp = std::string("Added ") + lamp;
    inline constexpr auto completed = "EnumerationCompleted in status 2";
    inline constexpr auto stopped = "Stopped in status 4";

    // From its start until nothing more happens; it is stopped then.
    inline std::vector<std::string> HeardBy(Com<IDeviceWatcher> const& watcher)
    {
        Recorder recorder(watcher);
        EXPECT_EQ(watcher->Start(), S_OK);
        auto heard = recorder.Heard();
        EXPECT_EQ(watcher->Stop(), S_OK);
        recorder.Heard();
        return heard;
    }
} // namespace test
