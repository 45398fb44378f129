#include "simulator/scenario/Scenario.h"

#include "simulator/scenario/ScenarioAdapter.h"
#include "simulator/scenario/ScenarioChoices.h"
#include "simulator/scenario/ScenarioEndpoint.h"
#include "simulator/scenario/ScenarioListing.h"
#include "simulator/scenario/ScenarioNames.h"
#include "simulator/scenario/TableReader.h"

#include <algorithm>
#include <iterator>
#include <set>
#include <utility>

namespace simulator
{
    namespace
    {
        struct ProtocolTraits
        {
            Protocol protocol;
            std::string_view table; // of what a device says for this protocol alone
            std::string_view idPrefix;
            std::string_view protocolId;
            std::string_view ownKey; // and properties, of endpoints of this protocol alone
            std::string_view ownProperties;
        };

        constexpr ProtocolTraits protocols[] = {
            {Protocol::Classic, "classic", "Bluetooth#Bluetooth", "{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}",
             classOfDeviceKey, classicProperties},
            {Protocol::Le, "le", "BluetoothLE#BluetoothLE", "{bb7bb05e-5972-42b5-94fc-76eaa7084d49}", appearanceKey,
             leProperties},
        };

        // Enough to bring out any fault of a program, and few enough for every watcher to have its own.
        constexpr std::int32_t mostEventThreads = 64;

        bool HasPin(std::uint32_t kind)
        {
            constexpr std::uint32_t displayPin = 2;
            constexpr std::uint32_t providePin = 4;
            constexpr std::uint32_t confirmPinMatch = 8;
            return (kind & (displayPin | providePin | confirmPinMatch)) != 0;
        }

        // What a device says for both of its endpoints goes to the one that can have it.
        void DropOthersProperties(Properties& properties, Protocol protocol)
        {
            for (auto const& traits : protocols)
            {
                if (traits.protocol != protocol)
                {
                    std::erase_if(properties, [&traits](auto const& entry) {
                        auto const& prefix = traits.ownProperties;
                        return SamePropertyName(std::string_view(entry.first).substr(0, prefix.size()), prefix);
                    });
                }
            }
        }

        // One container for all that has come from one address.
        Guid ContainerOf(std::string_view address)
        {
            std::string text = "{6f9d2e3b-41c7-5a08-9b6e-";
            std::ranges::remove_copy(address, std::back_inserter(text), ':');
            return {text + "}"};
        }

        void SetContainer(Properties& properties, std::string_view address)
        {
            auto& endpoints = properties[std::string(containerProperty)];
            if (endpoints == Value{})
            {
                endpoints = ContainerOf(address);
            }
            auto& own = properties["System.Devices.ContainerId"];
            if (own == Value{})
            {
                own = endpoints;
            }
        }

        Endpoint Complete(Endpoint endpoint, ProtocolTraits const& traits)
        {
            endpoint.protocol = traits.protocol;
            if (endpoint.id.empty())
            {
                endpoint.id = std::string(traits.idPrefix) + endpoint.adapter + "-" + endpoint.address;
            }
            endpoint.properties["System.Devices.Aep.AepId"] = endpoint.id;
            endpoint.properties["System.Devices.Aep.DeviceAddress"] = endpoint.address;
            endpoint.properties["System.Devices.Aep.ProtocolId"] = Guid{std::string(traits.protocolId)};
            if (traits.protocol == Protocol::Le)
            {
                constexpr std::uint8_t publicAddress = 0;
                endpoint.properties.try_emplace("System.Devices.Aep.Bluetooth.Le.AddressType", publicAddress);
            }
            if (!HasPin(endpoint.pairing.kind))
            {
                endpoint.pairing.pin.clear();
            }
            std::erase_if(endpoint.changes, [](TimedChange const& change) { return change.atMs == never; });
            std::ranges::stable_sort(endpoint.changes, {}, &TimedChange::atMs);
            return endpoint;
        }

        // Where they have a fault, also those of which the device has a table: it is read for faults of its own.
        std::vector<ProtocolTraits> ReadProtocols(TableReader& reader)
        {
            std::vector<std::int64_t> numbers;
            bool const good = reader.ReadNames("protocols", names::protocols, numbers);
            if (numbers.empty())
            {
                numbers = {static_cast<std::int64_t>(Protocol::Classic)};
            }
            std::vector<ProtocolTraits> read;
            for (auto const& traits : protocols)
            {
                auto const count = std::ranges::count(numbers, static_cast<std::int64_t>(traits.protocol));
                if (count > 1)
                {
                    reader.Reject("protocols", InQuotes(traits.table) + " is there twice");
                }
                bool const hasTable = reader.Has(traits.table);
                if (good && hasTable && count == 0)
                {
                    reader.Reject(traits.table, "the device's 'protocols' do not list it");
                }
                if (good && !hasTable && count == 0 && reader.Has(traits.ownKey))
                {
                    reader.Reject(traits.ownKey, "the device's 'protocols' do not list " + InQuotes(traits.table));
                }
                if (hasTable || count > 0)
                {
                    read.push_back(traits);
                }
            }
            return read;
        }

        // A device becomes one endpoint a protocol.
        std::vector<Endpoint> ReadDevice(TableReader& reader, std::string const& adapter, std::set<std::string>& ids)
        {
            auto common = DefaultEndpoint(adapter);
            ReadEndpoint(reader, common);
            std::vector<Endpoint> endpoints;
            auto container = common.address;
            bool hasAddress = true;
            for (auto const& traits : ReadProtocols(reader))
            {
                auto endpoint = common;
                DropOthersProperties(endpoint.properties, traits.protocol);
                auto own = reader.Table(traits.table);
                if (own)
                {
                    ReadEndpoint(*own, endpoint);
                    own->Read("id", endpoint.id);
                }
                hasAddress = hasAddress && (reader.Has("address") || (own && own->Has("address")));
                container = container.empty() ? endpoint.address : container;
                SetContainer(endpoint.properties, container);
                bool const isWhole = !endpoint.address.empty() && !endpoint.adapter.empty();
                endpoint = Complete(std::move(endpoint), traits);
                if (isWhole && !ids.insert(endpoint.id).second)
                {
                    auto& place = own && (own->Has("id") || own->Has("address")) ? *own : reader;
                    place.Reject(place.Has("id") ? "id" : "address",
                                 "another device has the identifier " + InQuotes(endpoint.id) + " already");
                }
                if (own)
                {
                    own->RejectOtherKeys();
                }
                endpoints.push_back(std::move(endpoint));
            }
            if (!hasAddress)
            {
                reader.Need("address", "a device");
            }
            reader.RejectOtherKeys();
            return endpoints;
        }
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

    Scenario ParseScenario(std::string_view toml, std::string_view sourceName)
    {
        auto const root = ParseToml(toml, sourceName);
        Faults faults(sourceName);
        TableReader reader(root, faults);
        Scenario scenario{300, true, 1, {}, {}};
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
        for (auto& device : reader.Tables("device"))
        {
            std::ranges::move(ReadDevice(device, scenario.adapter.address, ids),
                              std::back_inserter(scenario.endpoints));
        }
        for (auto& endpoint : scenario.endpoints)
        {
            endpoint.canPair = IsTrue(endpoint.properties, canPairProperty);
            bool const paired = IsTrue(endpoint.properties, isPairedProperty);
            for (auto& [property, value] : PairingValues(endpoint, scenario.choices, paired))
            {
                endpoint.properties[property] = std::move(value);
            }
        }
        reader.RejectOtherKeys();
        if (faults.AreThere())
        {
            faults.Throw();
        }
        return scenario;
    }
} // namespace simulator
