#include "simulator/objects/DeviceWatcher.h"

#include "simulator/objects/Snapshot.h"

namespace simulator
{
    using platform::DeviceInformationKind;
    using platform::DeviceWatcherStatus;

    namespace
    {
        HRESULT CodeOf(WatchAnswer answer)
        {
            switch (answer)
            {
            case WatchAnswer::Done:
                return S_OK;
            case WatchAnswer::Outdated:
                return disconnected;
            case WatchAnswer::BlankFilter:
                return E_INVALIDARG;
            case WatchAnswer::WrongStatus:
                break;
            }
            return illegalMethodCall;
        }
    } // namespace

    DeviceWatcher::DeviceWatcher(Query filter, std::vector<std::string> const& requested, DeviceInformationKind kind)
        : m_events(new WatcherEvents{ObjectLifetime(), kind, ShownProperties(requested)})
        , m_watching(new Watching{std::move(filter), m_events->shown, kind,
                                  [events = m_events](std::uint64_t generation, Report const& report) {
                                      Raise(*events, generation, report);
                                  }})
    {
        Enter(*m_watching);
        m_events->name.append("#").append(std::to_string(m_watching->number));
    }

    // What handlers hold is let go of here, not whenever the run's threads have ended.
    DeviceWatcher::~DeviceWatcher()
    {
        Leave(*m_watching);
        Clear(*m_events);
    }

    std::string const& DeviceWatcher::Name() const noexcept
    {
        return m_events->name;
    }

    HRESULT DeviceWatcher::add_Added(platform::AddedHandler* handler, EventRegistrationToken* token)
    {
        return m_events->added.Add("DeviceWatcher.add_Added", Name(), handler, token);
    }

    HRESULT DeviceWatcher::remove_Added(EventRegistrationToken token)
    {
        return m_events->added.Remove("DeviceWatcher.remove_Added", Name(), token);
    }

    HRESULT DeviceWatcher::add_Updated(platform::UpdateHandler* handler, EventRegistrationToken* token)
    {
        return m_events->updated.Add("DeviceWatcher.add_Updated", Name(), handler, token);
    }

    HRESULT DeviceWatcher::remove_Updated(EventRegistrationToken token)
    {
        return m_events->updated.Remove("DeviceWatcher.remove_Updated", Name(), token);
    }

    HRESULT DeviceWatcher::add_Removed(platform::UpdateHandler* handler, EventRegistrationToken* token)
    {
        return m_events->removed.Add("DeviceWatcher.add_Removed", Name(), handler, token);
    }

    HRESULT DeviceWatcher::remove_Removed(EventRegistrationToken token)
    {
        return m_events->removed.Remove("DeviceWatcher.remove_Removed", Name(), token);
    }

    HRESULT DeviceWatcher::add_EnumerationCompleted(platform::WatcherHandler* handler, EventRegistrationToken* token)
    {
        return m_events->enumerationCompleted.Add("DeviceWatcher.add_EnumerationCompleted", Name(), handler, token);
    }

    HRESULT DeviceWatcher::remove_EnumerationCompleted(EventRegistrationToken token)
    {
        return m_events->enumerationCompleted.Remove("DeviceWatcher.remove_EnumerationCompleted", Name(), token);
    }

    HRESULT DeviceWatcher::add_Stopped(platform::WatcherHandler* handler, EventRegistrationToken* token)
    {
        return m_events->stopped.Add("DeviceWatcher.add_Stopped", Name(), handler, token);
    }

    HRESULT DeviceWatcher::remove_Stopped(EventRegistrationToken token)
    {
        return m_events->stopped.Remove("DeviceWatcher.remove_Stopped", Name(), token);
    }

    HRESULT DeviceWatcher::get_Status(DeviceWatcherStatus* status)
    {
        return Get("DeviceWatcher.get_Status", Name(), status, [&] { return StatusOf(*m_watching); });
    }

    HRESULT DeviceWatcher::Start()
    {
        return Call("DeviceWatcher.Start", Name(), [&](std::string&) { return CodeOf(simulator::Start(m_watching)); });
    }

    HRESULT DeviceWatcher::Stop()
    {
        return Call("DeviceWatcher.Stop", Name(), [&](std::string&) { return CodeOf(simulator::Stop(*m_watching)); });
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
