#include "simulator/scenario/Scenario.h"

#include "simulator/scenario/FaultStories.h"
#include "simulator/scenario/ScenarioAdapter.h"
#include "simulator/scenario/ScenarioChoices.h"
#include "simulator/scenario/ScenarioDevice.h"
#include "simulator/scenario/ScenarioListing.h"
#include "simulator/scenario/TableReader.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace simulator
{
    namespace
    {
        // Enough to bring out any fault of a program, and few enough for every watcher to have its own.
        constexpr std::int32_t mostEventThreads = 64;
    } // namespace

    std::vector<std::pair<std::string, Value>> PairingValues(Endpoint const& endpoint, Choices const& choices,
                                                             bool paired)
    {
        std::vector<std::pair<std::string, Value>> values{{std::string(isPairedProperty), paired}};
        if (!choices.pairedCanPair)
        {
            values.emplace_back(canPairProperty, endpoint.canPair && !paired);
        }
        return values;
    }

    Scenario ParseScenario(std::string_view toml, std::string_view sourceName, std::vector<KeyNote>* notes)
    {
        auto const root = ParseToml(toml, sourceName);
        Faults faults(sourceName);
        TableReader reader(root, faults, notes);
        Scenario scenario{300, true, 1, {}, {}};
        auto const stories = ReadFaults(reader);
        for (auto const* const story : stories)
        {
            if (story->whole)
            {
                story->whole(scenario);
            }
        }
        if (reader.HoldsTable("adapter"))
        {
            auto table = reader.Table("adapter");
            ReadAdapter(*table, scenario.adapter);
        }
        else
        {
            reader.ReadAddress("adapter", scenario.adapter.address);
        }
        if (auto table = reader.Table("radio"))
        {
            ReadRadio(*table, scenario.radio);
        }
        reader.ReadMilliseconds("enumeration-completes-ms", scenario.enumerationCompletesAtMs);
        reader.Read("appear-after-completion", scenario.appearAfterCompletion);
        reader.ReadNumber("event-threads", 1, mostEventThreads, scenario.eventThreads);
        if (auto table = reader.Table("listing"))
        {
            ReadListing(*table, scenario.listing);
        }
        if (auto table = reader.Table("platform"))
        {
            ReadChoices(*table, scenario.choices);
        }
        std::set<std::string> ids;
        std::vector<Device> devices;
        for (auto& device : reader.Tables("device"))
        {
            devices.push_back(ReadDevice(device, scenario.adapter.address, stories, ids));
        }
        reader.RejectOtherKeys();
        if (faults.AreThere())
        {
            faults.Throw();
        }
        scenario.endpoints = EndpointsOf(std::move(devices), std::move(ids));
        for (auto& endpoint : scenario.endpoints)
        {
            endpoint.canPair = IsTrue(endpoint.properties, canPairProperty);
            bool const paired = IsTrue(endpoint.properties, isPairedProperty);
            for (auto& [property, value] : PairingValues(endpoint, scenario.choices, paired))
            {
                endpoint.properties[property] = std::move(value);
            }
        }
        return scenario;
    }
} // namespace simulator
