#include "simulator/objects/DeviceSearch.h"

#include "simulator/neighbourhood/Watching.h"
#include "simulator/objects/DeviceCollection.h"
#include "simulator/objects/DeviceInformation.h"
#include "simulator/objects/Errand.h"

#include <optional>
#include <unordered_map>

namespace simulator
{
    namespace
    {
        using platform::DeviceInformationKind;

        // What has been reported so far, by threads of the search.
        struct Finds
        {
            std::mutex mutex;
            std::vector<std::optional<std::pair<std::string, Properties>>> devices; // as reported; none: it has gone
            std::unordered_map<std::string, std::size_t> places;                    // there, by identifier
        };

        void Note(Finds& finds, std::vector<std::string> const& shown, Report const& report)
        {
            std::lock_guard const lock(finds.mutex);
            auto const known = finds.places.find(report.id);
            if (known == finds.places.end())
            {
                if (report.event == Report::Event::Added)
                {
                    finds.places[report.id] = finds.devices.size();
                    finds.devices.push_back(std::pair(report.id, Show(shown, *report.all)));
                }
            }
            else if (report.event == Report::Event::Removed)
            {
                finds.devices[known->second].reset();
                finds.places.erase(known);
            }
            else if (report.event == Report::Event::Updated)
            {
                for (auto const& [name, value] : report.changed)
                {
                    finds.devices[known->second]->second.insert_or_assign(name, value);
                }
            }
        }

        Ref<platform::DeviceCollection> Collect(Finds& finds, DeviceInformationKind kind)
        {
            std::vector<Ref<platform::IDeviceInformation>> devices;
            std::lock_guard const lock(finds.mutex);
            for (auto const& device : finds.devices)
            {
                if (device)
                {
                    auto made = Make<DeviceInformation>(device->first, kind, device->second);
                    devices.push_back(Ref<platform::IDeviceInformation>::Adopt(made.Detach()));
                }
            }
            return MakeDeviceCollection(std::move(devices));
        }

        // Lets the run end, at the latest when nobody waits for what it finds.
        struct Entered
        {
            explicit Entered(std::shared_ptr<Watching> entering)
                : watching(std::move(entering))
            {
                Enter(*watching);
            }

            Entered(Entered const&) = delete;
            Entered& operator=(Entered const&) = delete;

            ~Entered()
            {
                Leave(*watching);
            }

            std::shared_ptr<Watching> const watching;
        };
    } // namespace

    Search FindAll(Query filter, std::vector<std::string> const& requested, DeviceInformationKind kind)
    {
        auto const errand = MakeErrand();
        auto const finds = std::make_shared<Finds>();
        auto const shown = ShownProperties(requested);
        auto const listener = [errand, finds, shown](std::uint64_t, Report const& report) {
            if (report.event == Report::Event::EnumerationCompleted)
            {
                FinishErrand(*errand);
            }
            else if (report.event == Report::Event::Stopped) // it was cut short
            {
                FinishErrand(*errand, {.failure = E_ABORT});
            }
            else
            {
                Note(*finds, *shown, report);
            }
        };
        auto const entered = std::make_shared<Entered>(
            std::shared_ptr<Watching>(new Watching{std::move(filter), shown, kind, listener}));
        auto name = "#" + std::to_string(entered->watching->number);
        // The errand comes first: a reset cancels it, or is noticed by the start.
        auto operation = RunErrand<platform::DeviceCollection*>(
            errand, name, [finds, kind, entered](SearchOperation& async) { async.Complete(Collect(*finds, kind)); },
            never);
        if (Start(entered->watching) != WatchAnswer::Done)
        {
            Cancel(*errand);
        }
        return {std::move(name), std::move(operation)};
    }
} // namespace simulator
