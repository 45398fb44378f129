#include "simulator/scenario/FaultStories.h"

#include "simulator/scenario/ScenarioEndpoint.h"
#include "simulator/scenario/TableReader.h"

#include <algorithm>
#include <iterator>

namespace simulator
{
    namespace
    {
        constexpr char key[] = "fault";

        void BePaired(DeviceDraft& draft)
        {
            draft.endpoint.properties[std::string(isPairedProperty)] = true;
        }

        void SetConnected(DeviceDraft& draft, bool connected)
        {
            draft.endpoint.properties[std::string(isConnectedProperty)] = connected;
        }

        void NameLater(Endpoint& endpoint)
        {
            auto const known = endpoint.properties.find(nameProperty);
            if (known == endpoint.properties.end())
            {
                return;
            }
            TimedChange change{AfterComing(endpoint, 200), known->first, std::move(known->second)};
            endpoint.properties.erase(known);
            endpoint.changes.insert(std::ranges::upper_bound(endpoint.changes, change.atMs, {}, &TimedChange::atMs),
                                    std::move(change));
        }

        constexpr FaultStory stories[] = {
            {.name = "silent-after-enumeration",
             .whole = [](Scenario& scenario) { scenario.choices.silentAfterEnumeration = true; }},
            {.name = "endless-enumeration",
             .whole = [](Scenario& scenario) { scenario.enumerationCompletesAtMs = never; }},
            {.name = "late-event",
             .whole =
                 [](Scenario& scenario) {
                     scenario.choices.eventDelayMs = 200; // enough for a test to remove a handler meanwhile
                     scenario.eventThreads = 4;
                 }},
            {.name = "radio-off",
             .whole = [](Scenario& scenario) { scenario.radio.offAfterMs = 200; },
             .begin = [](DeviceDraft& draft) { draft.endpoint.pairing.radioOff = true; }},
            {.name = "no-adapter", .whole = [](Scenario& scenario) { scenario.adapter.present = false; }},
            {.name = "late-name", .end = NameLater},
            {.name = "seen-twice",
             .end =
                 [](Endpoint& endpoint) {
                     endpoint.repeatsAtMs =
                         endpoint.repeatsAtMs == never ? AfterComing(endpoint, 100) : endpoint.repeatsAtMs;
                 }},
            {.name = "two-protocols",
             .begin =
                 [](DeviceDraft& draft) {
                     draft.protocols = {static_cast<std::int64_t>(Protocol::Classic),
                                        static_cast<std::int64_t>(Protocol::Le)};
                 }},
            {.name = "shared-name", .companion = Companion{"", 20}},
            {.name = "longer-name", .companion = Companion{" 2", -20}},
            {.name = "already-paired",
             .begin =
                 [](DeviceDraft& draft) {
                     BePaired(draft);
                     SetConnected(draft, true);
                 }},
            {.name = "lost-bond",
             .begin =
                 [](DeviceDraft& draft) {
                     BePaired(draft);
                     SetConnected(draft, false);
                 }},
            {.name = "slow-pairing", .begin = [](DeviceDraft& draft) { draft.endpoint.pairing.durationMs = 60'000; }},
            {.name = "impatient", .begin = [](DeviceDraft& draft) { draft.endpoint.pairing.answerWithinMs = 1000; }},
            {.name = "system-prompt", .begin = [](DeviceDraft& draft) { draft.endpoint.pairing.promptOpen = true; }},
            {.name = "operation-error",
             .begin =
                 [](DeviceDraft& draft) {
                     draft.endpoint.pairing.failure = static_cast<std::int32_t>(0x80004005); // E_FAIL
                 }},
            {.name = "unpairing-refused",
             .begin =
                 [](DeviceDraft& draft) {
                     BePaired(draft);
                     draft.endpoint.unpairing.status = 3; // AccessDenied
                 }},
            {.name = "stale-pairing",
             .begin =
                 [](DeviceDraft& draft) {
                     BePaired(draft);
                     draft.endpoint.unpairing.staleMs = 3000;
                 }},
        };

        bool IsOfDevices(FaultStory const& story)
        {
            return story.begin || story.end || story.companion;
        }
    } // namespace

    std::span<FaultStory const> FaultStories()
    {
        return stories;
    }

    Stories ReadFaults(TableReader& reader)
    {
        std::vector<Name> names;
        for (auto const& story : stories)
        {
            names.push_back({story.name, static_cast<std::int64_t>(names.size())});
        }
        std::vector<std::int64_t> numbers;
        reader.ReadNameOrNames(key, names, numbers);
        Stories read;
        for (auto const number : numbers)
        {
            read.insert(&stories[number]);
        }
        return read;
    }

    Stories ReadDeviceFaults(TableReader& reader, Stories const& atTheTop)
    {
        auto read = ReadFaults(reader);
        for (auto const* const story : read)
        {
            if (!IsOfDevices(*story))
            {
                reader.Reject(key, InQuotes(story->name) + " is no device's; it stands at the top");
            }
        }
        std::ranges::copy_if(atTheTop, std::inserter(read, read.end()),
                             [](FaultStory const* story) { return !story->whole; });
        return read;
    }

    std::int32_t AfterComing(Endpoint const& endpoint, std::int32_t ms)
    {
        constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
        auto const at = std::int64_t{std::max(endpoint.appearsAtMs, 0)} + ms;
        return static_cast<std::int32_t>(std::clamp(at, std::int64_t{0}, most));
    }
} // namespace simulator
