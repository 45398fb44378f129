#include "simulator/objects/DeviceWatcher.h"

#include "simulator/neighbourhood/Thread.h"
#include "simulator/neighbourhood/WatcherRun.h"
#include "simulator/objects/Snapshot.h"

namespace simulator
{
    using platform::DeviceWatcherStatus;

    DeviceWatcher::DeviceWatcher(Query filter, std::vector<std::string> const& requested,
                                 platform::DeviceInformationKind kind)
        : watching_(new Watching{std::move(filter), ShownProperties(requested), kind, {}, ObjectLifetime()})
    {
        auto& neighbourhood = TheNeighbourhood();
        std::lock_guard const lock(neighbourhood.mutex);
        watching_->generation = neighbourhood.generation;
        watching_->name.append("#").append(std::to_string(++neighbourhood.watchersMade));
    }

    // A running watcher may be let go of: its threads end by themselves, and this may well be one of them.
    DeviceWatcher::~DeviceWatcher()
    {
        auto& neighbourhood = TheNeighbourhood();
        {
            std::lock_guard const lock(neighbourhood.mutex);
            if (watching_->run)
            {
                watching_->run->orphaned = true;
            }
        }
        neighbourhood.changed.notify_all();
        // What handlers hold is let go of here, not whenever the threads have ended.
        watching_->added.Clear();
        watching_->updated.Clear();
        watching_->removed.Clear();
        watching_->enumerationCompleted.Clear();
        watching_->stopped.Clear();
    }

    std::string const& DeviceWatcher::Name() const noexcept
    {
        return watching_->name;
    }

    HRESULT DeviceWatcher::add_Added(platform::AddedHandler* handler, EventRegistrationToken* token)
    {
        return watching_->added.Add("DeviceWatcher.add_Added", Name(), handler, token);
    }

    HRESULT DeviceWatcher::remove_Added(EventRegistrationToken token)
    {
        return watching_->added.Remove("DeviceWatcher.remove_Added", Name(), token);
    }

    HRESULT DeviceWatcher::add_Updated(platform::UpdateHandler* handler, EventRegistrationToken* token)
    {
        return watching_->updated.Add("DeviceWatcher.add_Updated", Name(), handler, token);
    }

    HRESULT DeviceWatcher::remove_Updated(EventRegistrationToken token)
    {
        return watching_->updated.Remove("DeviceWatcher.remove_Updated", Name(), token);
    }

    HRESULT DeviceWatcher::add_Removed(platform::UpdateHandler* handler, EventRegistrationToken* token)
    {
        return watching_->removed.Add("DeviceWatcher.add_Removed", Name(), handler, token);
    }

    HRESULT DeviceWatcher::remove_Removed(EventRegistrationToken token)
    {
        return watching_->removed.Remove("DeviceWatcher.remove_Removed", Name(), token);
    }

    HRESULT DeviceWatcher::add_EnumerationCompleted(platform::WatcherHandler* handler, EventRegistrationToken* token)
    {
        return watching_->enumerationCompleted.Add("DeviceWatcher.add_EnumerationCompleted", Name(), handler, token);
    }

    HRESULT DeviceWatcher::remove_EnumerationCompleted(EventRegistrationToken token)
    {
        return watching_->enumerationCompleted.Remove("DeviceWatcher.remove_EnumerationCompleted", Name(), token);
    }

    HRESULT DeviceWatcher::add_Stopped(platform::WatcherHandler* handler, EventRegistrationToken* token)
    {
        return watching_->stopped.Add("DeviceWatcher.add_Stopped", Name(), handler, token);
    }

    HRESULT DeviceWatcher::remove_Stopped(EventRegistrationToken token)
    {
        return watching_->stopped.Remove("DeviceWatcher.remove_Stopped", Name(), token);
    }

    HRESULT DeviceWatcher::get_Status(DeviceWatcherStatus* status)
    {
        return Get("DeviceWatcher.get_Status", Name(), status, [&] {
            std::lock_guard const lock(TheNeighbourhood().mutex);
            return watching_->status;
        });
    }

    HRESULT DeviceWatcher::Start()
    {
        return Call("DeviceWatcher.Start", Name(), [&](std::string&) {
            auto& neighbourhood = TheNeighbourhood();
            std::unique_lock lock(neighbourhood.mutex);
            if (watching_->generation != neighbourhood.generation)
            {
                return disconnected; // it belongs to a neighbourhood that is no more
            }
            auto const status = watching_->status;
            if (status != DeviceWatcherStatus::Created && status != DeviceWatcherStatus::Stopped &&
                status != DeviceWatcherStatus::Aborted)
            {
                return illegalMethodCall;
            }
            if (watching_->filter.IsBlank())
            {
                return E_INVALIDARG;
            }
            watching_->status = DeviceWatcherStatus::Started;
            watching_->run = MakeRun(neighbourhood, watching_);
            auto const run = watching_->run;
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
                auto& status = watching_->status;
                if (status == DeviceWatcherStatus::Aborted)
                {
                    return S_OK;
                }
                if (status != DeviceWatcherStatus::Started && status != DeviceWatcherStatus::EnumerationCompleted)
                {
                    return illegalMethodCall;
                }
                status = DeviceWatcherStatus::Stopping;
                watching_->run->stop = true;
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
