#include "simulator/scenario/ScenarioDevice.h"

#include "simulator/scenario/ScenarioEndpoint.h"
#include "simulator/scenario/ScenarioNames.h"

#include <algorithm>
#include <iterator>
#include <string_view>
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
            if (!HasPin(endpoint.pairing.kind))
            {
                endpoint.pairing.pin.clear();
            }
            std::erase_if(endpoint.changes, [](TimedChange const& change) { return change.atMs == never; });
            std::ranges::stable_sort(endpoint.changes, {}, &TimedChange::atMs);
            return endpoint;
        }

        // Where they have a fault, also those of which the device has a table: it is read for faults of its own.
        std::vector<ProtocolTraits> ReadProtocols(TableReader& reader, std::vector<std::int64_t> const& otherwise)
        {
            auto numbers = otherwise;
            bool const good = reader.ReadNames("protocols", names::protocols, numbers);
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

        std::string NextAddress(std::string address)
        {
            for (auto digit = address.rbegin(); digit != address.rend(); ++digit)
            {
                if (*digit != ':')
                {
                    constexpr std::string_view digits = "0123456789abcdef0";
                    *digit = digits[digits.find(*digit) + 1];
                    if (*digit != '0')
                    {
                        break;
                    }
                }
            }
            return address;
        }

        Endpoint CompanionOf(Endpoint const& one, Companion const& companion, std::string const& address)
        {
            auto other = DefaultEndpoint(one.adapter);
            other.address = address;
            other.appearsAtMs = AfterComing(one, companion.laterMs);
            if (auto const name = one.properties.find(nameProperty); name != one.properties.end())
            {
                auto const* const text = std::get_if<std::string>(&name->second);
                other.properties[name->first] = text ? *text + std::string(companion.nameEnd) : name->second;
            }
            SetContainer(other.properties, address);
            return Complete(std::move(other), *std::ranges::find(protocols, one.protocol, &ProtocolTraits::protocol));
        }

        // At the next address that nobody has.
        std::vector<Endpoint> CompanionsOf(std::vector<Endpoint> const& device, Companion const& companion,
                                           std::string& address, std::set<std::string> const& taken)
        {
            std::vector<Endpoint> companions;
            auto const isTaken = [&taken](Endpoint const& endpoint) {
                return taken.contains(endpoint.id) || taken.contains(endpoint.address);
            };
            do
            {
                address = NextAddress(address);
                companions.clear();
                std::ranges::transform(device, std::back_inserter(companions), [&](Endpoint const& endpoint) {
                    return CompanionOf(endpoint, companion, address);
                });
            } while (std::ranges::any_of(companions, isTaken));
            return companions;
        }
    } // namespace

    Device ReadDevice(TableReader& reader, std::string const& adapter, Stories const& atTheTop,
                      std::set<std::string>& ids)
    {
        DeviceDraft draft{DefaultEndpoint(adapter), {static_cast<std::int64_t>(Protocol::Classic)}};
        Device device{{}, ReadDeviceFaults(reader, atTheTop)};
        for (auto const* const story : device.stories)
        {
            if (story->begin)
            {
                story->begin(draft);
            }
        }
        auto& common = draft.endpoint;
        ReadEndpoint(reader, common);
        auto container = common.address;
        bool hasAddress = true;
        for (auto const& traits : ReadProtocols(reader, draft.protocols))
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
            device.endpoints.push_back(std::move(endpoint));
        }
        if (!hasAddress)
        {
            reader.Need("address", "a device");
        }
        reader.RejectOtherKeys();
        return device;
    }

    std::vector<Endpoint> EndpointsOf(std::vector<Device> devices, std::set<std::string> taken)
    {
        for (auto const& device : devices)
        {
            std::ranges::transform(device.endpoints, std::inserter(taken, taken.end()), &Endpoint::address);
        }
        std::vector<Endpoint> endpoints;
        std::string address; // goes on from the last one, or a crowd would search for long
        for (auto& device : devices)
        {
            std::vector<Endpoint> later;
            for (auto const* const story : device.stories)
            {
                if (auto const& companion = story->companion)
                {
                    address = address.empty() ? device.endpoints.front().address : address;
                    std::ranges::move(CompanionsOf(device.endpoints, *companion, address, taken),
                                      std::back_inserter(companion->laterMs < 0 ? endpoints : later));
                }
            }
            for (auto const* const story : device.stories)
            {
                if (story->end)
                {
                    std::ranges::for_each(device.endpoints, story->end);
                }
            }
            std::ranges::move(device.endpoints, std::back_inserter(endpoints));
            std::ranges::move(later, std::back_inserter(endpoints));
        }
        return endpoints;
    }
} // namespace simulator
