#include "simulator/objects/WatcherEvents.h"

#include "simulator/objects/DeviceInformation.h"
#include "simulator/objects/DeviceUpdate.h"
#include "simulator/objects/Snapshot.h"

namespace simulator
{
    namespace
    {
        // Null once the program has let go of the watcher: there is nobody left to tell.
        Ref<platform::IDeviceWatcher> Sender(WatcherEvents const& events)
        {
            return events.object->TryAddRef() ? Ref<platform::IDeviceWatcher>::Adopt(
                                                    static_cast<platform::IDeviceWatcher*>(events.object->object))
                                              : Ref<platform::IDeviceWatcher>();
        }

        std::string NamesOf(Properties const& properties)
        {
            std::vector<std::string> names;
            for (auto const& property : properties)
            {
                names.push_back(property.first);
            }
            return PlainList(names);
        }

        // The platform reports what comes after the enumeration to programs that have asked for all that may come.
        bool IsWanted(WatcherEvents& events, Report const& report)
        {
            if (report.quiet)
            {
                return false;
            }
            return !report.late || (!events.added.IsEmpty() && !events.updated.IsEmpty() && !events.removed.IsEmpty());
        }
    } // namespace

    void Raise(WatcherEvents& events, std::uint64_t generation, Report const& report)
    {
        if (!IsWanted(events, report))
        {
            PassGate(generation);
            return;
        }
        auto const raise = [&](auto& source, std::string_view event, std::string const& trace, auto arguments) {
            Raise(
                source, generation, event, trace, [&] { return Sender(events); }, arguments);
        };
        auto const endpoint = events.name + ", " + report.id;
        auto const device = [&] { return Make<DeviceInformation>(report.id, events.kind, report.all, events.shown); };
        auto const update = [&] { return Make<DeviceUpdate>(report.id, events.kind, report.changed); };
        auto const nothing = [] { return Ref<::IInspectable>(); };
        switch (report.event)
        {
        case Report::Event::None:
            break;
        case Report::Event::Added:
            raise(events.added, "DeviceWatcher.Added", endpoint, device);
            break;
        case Report::Event::Updated:
            raise(events.updated, "DeviceWatcher.Updated", endpoint + ", " + NamesOf(report.changed), update);
            break;
        case Report::Event::Removed:
            raise(events.removed, "DeviceWatcher.Removed", endpoint, update);
            break;
        case Report::Event::EnumerationCompleted:
            raise(events.enumerationCompleted, "DeviceWatcher.EnumerationCompleted", events.name, nothing);
            break;
        case Report::Event::Stopped:
            raise(events.stopped, "DeviceWatcher.Stopped", events.name, nothing);
            break;
        }
    }

    void Clear(WatcherEvents& events)
    {
        events.added.Clear();
        events.updated.Clear();
        events.removed.Clear();
        events.enumerationCompleted.Clear();
        events.stopped.Clear();
    }
} // namespace simulator
