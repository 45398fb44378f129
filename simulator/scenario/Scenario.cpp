#include "simulator/scenario/Scenario.h"

#include "simulator/scenario/ScenarioEndpoint.h"
#include "simulator/scenario/ScenarioListing.h"
#include "simulator/scenario/ScenarioNames.h"
#include "simulator/scenario/TableReader.h"

#include <algorithm>
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
        };

        constexpr ProtocolTraits protocols[] = {
            {Protocol::Classic, "classic", "Bluetooth#Bluetooth", "{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}"},
            {Protocol::Le, "le", "BluetoothLE#BluetoothLE", "{bb7bb05e-5972-42b5-94fc-76eaa7084d49}"},
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
            if (!HasPin(endpoint.pairing.kind))
            {
                endpoint.pairing.pin.clear();
            }
            std::erase_if(endpoint.changes, [](TimedChange const& change) { return change.atMs == never; });
            std::ranges::stable_sort(endpoint.changes, {}, &TimedChange::atMs);
            return endpoint;
        }

        void ReadEventThreads(TableReader& reader, std::int32_t& threads)
        {
            Value number = threads;
            reader.Read("event-threads", PropertyKind::Int32, number);
            threads = std::get<std::int32_t>(number);
            if (threads < 1 || threads > mostEventThreads)
            {
                reader.FailAt("event-threads",
                              "a number from 1 to " + std::to_string(mostEventThreads) + " is expected");
            }
        }

        // A device becomes one endpoint a protocol.
        std::vector<Endpoint> ReadDevice(TableReader& reader, std::string const& adapter)
        {
            auto common = DefaultEndpoint(adapter);
            ReadEndpoint(reader, common);
            auto wanted = reader.ReadNames("protocols", names::protocols);
            if (!reader.Has("protocols"))
            {
                wanted = {static_cast<std::int64_t>(Protocol::Classic)};
            }
            else if (wanted.empty())
            {
                reader.FailAt("protocols", "at least one is needed");
            }
            std::vector<Endpoint> endpoints;
            for (auto const& traits : protocols)
            {
                auto own = reader.Table(traits.table);
                auto const count = std::ranges::count(wanted, static_cast<std::int64_t>(traits.protocol));
                if (count > 1)
                {
                    reader.FailAt("protocols", "one is listed twice");
                }
                if (count == 0 && own)
                {
                    reader.FailAt(traits.table, "the device's 'protocols' do not list it");
                }
                if (count == 0)
                {
                    continue;
                }
                auto endpoint = common;
                if (own)
                {
                    ReadEndpoint(*own, endpoint);
                    own->Read("id", endpoint.id);
                    own->RejectOtherKeys();
                }
                if (endpoint.address.empty())
                {
                    reader.FailHere("a device needs an 'address'");
                }
                endpoints.push_back(Complete(std::move(endpoint), traits));
            }
            reader.RejectOtherKeys();
            return endpoints;
        }
    } // namespace

    Scenario ParseScenario(std::string_view toml, std::string_view sourceName)
    {
        auto const root = ParseToml(toml, sourceName);
        TableReader reader(root, sourceName);
        Scenario scenario{300, true, 1, {}, {}};
        std::string adapter = "00:1a:7d:da:71:13";
        reader.ReadAddress("adapter", adapter);
        reader.ReadMilliseconds("enumeration-completes-ms", scenario.enumerationCompletesAtMs);
        reader.Read("appear-after-completion", scenario.appearAfterCompletion);
        ReadEventThreads(reader, scenario.eventThreads);
        if (auto table = reader.Table("listing"))
        {
            ReadListing(*table, scenario.listing);
        }
        std::set<std::string> ids;
        for (auto& device : reader.Tables("device"))
        {
            for (auto& endpoint : ReadDevice(device, adapter))
            {
                if (!ids.insert(endpoint.id).second)
                {
                    device.FailHere("another device has the id '" + endpoint.id + "' already");
                }
                scenario.endpoints.push_back(std::move(endpoint));
            }
        }
        reader.RejectOtherKeys();
        return scenario;
    }
} // namespace simulator
