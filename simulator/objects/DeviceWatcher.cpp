#include "simulator/objects/DeviceWatcher.h"

#include "simulator/neighbourhood/Thread.h"
#include "simulator/neighbourhood/WatcherRun.h"
#include "simulator/objects/Snapshot.h"

namespace simulator
{
    using platform::DeviceWatcherStatus;

    DeviceWatcher::DeviceWatcher(Query filter, std::vector<std::string> const& requested,
                                 platform::DeviceInformationKind kind)
        : m_watching(new Watching{std::move(filter), ShownProperties(requested), kind, {}, ObjectLifetime()})
    {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        m_watching->generation = neighbourhood.generation;
        m_watching->name.append("#").append(std::to_string(++neighbourhood.watchersMade));
    }

    // A running watcher may be let go of: its threads end by themselves, and this may well be one of them.
    DeviceWatcher::~DeviceWatcher()
    {
        auto& neighbourhood = TheNeighbourhood();
        {
            std::lock_guard const lock(neighbourhood.mutex);
            if (m_watching->run)
            {
                m_watching->run->orphaned = true;
            }
        }
        neighbourhood.changed.notify_all();
        // What handlers hold is let go of here, not whenever the threads have ended.
        m_watching->added.Clear();
        m_watching->updated.Clear();
        m_watching->removed.Clear();
        m_watching->enumerationCompleted.Clear();
        m_watching->stopped.Clear();
    }

    std::string const& DeviceWatcher::Name() const noexcept
    {
        return m_watching->name;
    }

    HRESULT DeviceWatcher::add_Added(platform::AddedHandler* handler, EventRegistrationToken* token)
    {
        return m_watching->added.Add("DeviceWatcher.add_Added", Name(), handler, token);
    }

    HRESULT DeviceWatcher::remove_Added(EventRegistrationToken token)
    {
        return m_watching->added.Remove("DeviceWatcher.remove_Added", Name(), token);
    }

    HRESULT DeviceWatcher::add_Updated(platform::UpdateHandler* handler, EventRegistrationToken* token)
    {
        return m_watching->updated.Add("DeviceWatcher.add_Updated", Name(), handler, token);
    }

    HRESULT DeviceWatcher::remove_Updated(EventRegistrationToken token)
    {
        return m_watching->updated.Remove("DeviceWatcher.remove_Updated", Name(), token);
    }

    HRESULT DeviceWatcher::add_Removed(platform::UpdateHandler* handler, EventRegistrationToken* token)
    {
        return m_watching->removed.Add("DeviceWatcher.add_Removed", Name(), handler, token);
    }

    HRESULT DeviceWatcher::remove_Removed(EventRegistrationToken token)
    {
        return m_watching->removed.Remove("DeviceWatcher.remove_Removed", Name(), token);
    }

    HRESULT DeviceWatcher::add_EnumerationCompleted(platform::WatcherHandler* handler, EventRegistrationToken* token)
    {
        return m_watching->enumerationCompleted.Add("DeviceWatcher.add_EnumerationCompleted", Name(), handler, token);
    }

    HRESULT DeviceWatcher::remove_EnumerationCompleted(EventRegistrationToken token)
    {
        return m_watching->enumerationCompleted.Remove("DeviceWatcher.remove_EnumerationCompleted", Name(), token);
    }

    HRESULT DeviceWatcher::add_Stopped(platform::WatcherHandler* handler, EventRegistrationToken* token)
    {
        return m_watching->stopped.Add("DeviceWatcher.add_Stopped", Name(), handler, token);
    }

    HRESULT DeviceWatcher::remove_Stopped(EventRegistrationToken token)
    {
        return m_watching->stopped.Remove("DeviceWatcher.remove_Stopped", Name(), token);
    }

    HRESULT DeviceWatcher::get_Status(DeviceWatcherStatus* status)
    {
        return Get("DeviceWatcher.get_Status", Name(), status, [&] {
            std::lock_guard const lock(TheNeighbourhood().mutex);
            return m_watching->status;
        });
    }

    HRESULT DeviceWatcher::Start()
    {
        return Call("DeviceWatcher.Start", Name(), [&](std::string&) {
            auto& neighbourhood = TheNeighbourhood();
            std::unique_lock lock(neighbourhood.mutex);
            if (m_watching->generation != neighbourhood.generation)
            {
                return disconnected; // it belongs to a neighbourhood that is no more
            }
            auto const status = m_watching->status;
            if (status != DeviceWatcherStatus::Created && status != DeviceWatcherStatus::Stopped &&
                status != DeviceWatcherStatus::Aborted)
            {
                return illegalMethodCall;
            }
            if (m_watching->filter.IsBlank())
            {
                return E_INVALIDARG;
            }
            m_watching->status = DeviceWatcherStatus::Started;
            m_watching->run = MakeRun(neighbourhood, m_watching);
            auto const run = m_watching->run;
            auto const threads = run->threads;
            lock.unlock();
            for (std::int32_t thread = 0; thread < threads; ++thread)
            {
                OnOwnThread([run] { Watch(run); });
            }
            return S_OK;
        });
    }

    HRESULT DeviceWatcher::Stop()
    {
        return Call("DeviceWatcher.Stop", Name(), [&](std::string&) {
            auto& neighbourhood = TheNeighbourhood();
            {
                std::lock_guard const lock(neighbourhood.mutex);
                auto& status = m_watching->status;
                if (status == DeviceWatcherStatus::Aborted)
                {
                    return S_OK;
                }
                if (status != DeviceWatcherStatus::Started && status != DeviceWatcherStatus::EnumerationCompleted)
                {
                    return illegalMethodCall;
                }
                status = DeviceWatcherStatus::Stopping;
                m_watching->run->stop = true;
            }
            neighbourhood.changed.notify_all();
            return S_OK;
        });
    }

    HRESULT DeviceWatcher::GetBackgroundTrigger(void*, void** trigger)
    {
        return Outside("DeviceWatcher.GetBackgroundTrigger", Name(), trigger);
    }

    char const* DeviceWatcher::ClassName() const noexcept
    {
        return "Windows.Devices.Enumeration.DeviceWatcher";
    }
} // namespace simulator
