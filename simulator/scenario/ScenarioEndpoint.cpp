#include "simulator/scenario/ScenarioEndpoint.h"

#include "simulator/scenario/Guess.h"
#include "simulator/scenario/ScenarioNames.h"

#include <algorithm>
#include <limits>
#include <string>
#include <utility>

namespace simulator
{
    namespace
    {
        // The keys that stand for one property.
        constexpr std::pair<std::string_view, std::string_view> propertyKeys[] = {
            {"name", nameProperty},
            {"can-pair", canPairProperty},
            {"is-paired", isPairedProperty},
            {"category", "System.Devices.Aep.Category"},
            {"container-id", containerProperty},
            {"manufacturer", "System.Devices.Aep.Manufacturer"},
            {"model-name", "System.Devices.Aep.ModelName"},
            {"product-id", "System.DeviceInterface.Bluetooth.ProductId"},
            {"vendor-id", "System.DeviceInterface.Bluetooth.VendorId"},
        };

        void ReadBattery(TableReader& reader, Properties& properties)
        {
            if (auto const percent = reader.ReadNumber("battery", 0, 100))
            {
                properties["System.Devices.BatteryLife"] = static_cast<std::uint8_t>(*percent);
            }
        }

        void ReadClassOfDevice(TableReader& reader, Properties& properties)
        {
            auto const number = reader.ReadNumber(classOfDeviceKey, 0, 0xFFFFFF);
            if (!number)
            {
                return;
            }
            auto const bits = static_cast<std::uint32_t>(*number);
            std::string const prefix(classicProperties);
            properties[prefix + "Major"] = static_cast<std::uint16_t>(bits >> 8 & 0x1F);
            properties[prefix + "Minor"] = static_cast<std::uint16_t>(bits >> 2 & 0x3F);
            constexpr std::pair<std::string_view, int> services[] = {
                {"LimitedDiscovery", 13}, {"Positioning", 16}, {"Networking", 17}, {"Rendering", 18},
                {"Capturing", 19},        {"ObjectXfer", 20},  {"Audio", 21},      {"Telephony", 22},
                {"Information", 23},
            };
            for (auto const& [service, bit] : services)
            {
                properties[prefix + "Services." + std::string(service)] = (bits >> bit & 1) != 0;
            }
        }

        void ReadAppearance(TableReader& reader, Properties& properties)
        {
            auto const number = reader.ReadNumber(appearanceKey, 0, 0xFFFF);
            if (!number)
            {
                return;
            }
            auto const bits = static_cast<std::uint32_t>(*number);
            std::string const prefix = std::string(leProperties) + "Appearance";
            properties[prefix] = static_cast<std::uint16_t>(bits);
            properties[prefix + ".Category"] = static_cast<std::uint16_t>(bits >> 6);
            properties[prefix + ".Subcategory"] = static_cast<std::uint16_t>(bits & 0x3F);
        }

        void ReadProperties(TableReader reader, Properties& properties)
        {
            constexpr std::string_view others[] = {
                "System.ItemNameDisplay",      "System.Devices.Aep.AepId",         "System.Devices.Aep.CanPair",
                "System.Devices.Aep.IsPaired", "System.Devices.Aep.DeviceAddress", "System.Devices.Aep.ProtocolId",
            };
            for (auto const key : reader.Keys())
            {
                auto const same = [&](std::string_view other) { return SamePropertyName(key, other); };
                if (std::ranges::any_of(others, same))
                {
                    reader.Reject(key, "not set here: it follows from the device's other keys");
                }
                else if (auto const kind = KindOfProperty(key); kind == PropertyKind::Unknown)
                {
                    reader.Reject(key, "unknown property" + Guess(key, PropertyNames()));
                }
                else
                {
                    reader.Read(key, kind, properties[std::string(key)]);
                }
            }
        }

        TimedChange ReadChange(TableReader reader)
        {
            TimedChange change{never, {}, {}};
            reader.Need("at-ms", "a change");
            reader.Need("property", "a change");
            reader.ReadMilliseconds("at-ms", change.atMs);
            Value property;
            reader.Read("property", PropertyKind::String, property);
            auto kind = PropertyKind::Unknown;
            if (auto* const name = std::get_if<std::string>(&property))
            {
                kind = KindOfProperty(*name);
                if (kind == PropertyKind::Unknown)
                {
                    reader.Reject("property",
                                  InQuotes(*name) + " where a property is expected" + Guess(*name, PropertyNames()));
                }
                change.property = std::move(*name);
            }
            if (kind != PropertyKind::Unknown)
            {
                reader.Read("value", kind, change.value);
            }
            bool unset = false;
            reader.Read("unset", unset);
            if (unset && reader.Has("value"))
            {
                reader.Reject("value", "there beside 'unset = true'; either of them is expected");
            }
            if (!unset && !reader.Has("value"))
            {
                reader.Reject("value", "missing; a change needs it, or 'unset = true'");
            }
            reader.RejectOtherKeys();
            return change;
        }

        void ReadPairing(TableReader reader, Ceremony& pairing)
        {
            reader.ReadNumber("kind", names::pairingKinds, pairing.kind);
            reader.ReadNumber("status", names::pairingStatuses, pairing.status);
            reader.ReadMilliseconds("duration-ms", pairing.durationMs);
            reader.Read("pin", pairing.pin);
            reader.ReadNumber("max-protection", names::protectionLevels, pairing.maxProtection);
            reader.ReadFailure("error", pairing.failure);
            reader.ReadMilliseconds("answer-within-ms", pairing.answerWithinMs);
            reader.Read("system-prompt", pairing.promptOpen);
            reader.Read("radio-off", pairing.radioOff);
            reader.RejectOtherKeys();
        }

        void ReadUnpairing(TableReader reader, Unpairing& unpairing)
        {
            reader.ReadNumber("status", names::unpairingStatuses, unpairing.status);
            reader.ReadMilliseconds("duration-ms", unpairing.durationMs);
            reader.ReadNumber("stale-ms", 0, std::numeric_limits<std::int32_t>::max(), unpairing.staleMs);
            reader.ReadName("effect", names::unpairEffects, unpairing.effect);
            reader.RejectOtherKeys();
        }
        void ReadTimes(TableReader& reader, Endpoint& endpoint)
        {
            bool const appears = reader.ReadMilliseconds("appears-ms", endpoint.appearsAtMs);
            for (auto const& [key, time] :
                 {std::pair("leaves-ms", &endpoint.leavesAtMs), std::pair("repeats-ms", &endpoint.repeatsAtMs)})
            {
                bool const good = reader.ReadMilliseconds(key, *time) && appears;
                if (!good || *time == never || *time > endpoint.appearsAtMs)
                {
                    continue;
                }
                auto const pair = [](std::int32_t found, std::string const& other, std::int32_t at) {
                    return std::to_string(found) + " where a time " + other + ", " + std::to_string(at) +
                           ", is expected";
                };
                if (reader.Has(key))
                {
                    reader.Reject(key, pair(*time, "after 'appears-ms'", endpoint.appearsAtMs));
                }
                else if (reader.Has("appears-ms")) // otherwise the device's own table has told it
                {
                    reader.Reject("appears-ms", pair(endpoint.appearsAtMs, "before '" + std::string(key) + "'", *time));
                }
            }
        }
    } // namespace

    Endpoint DefaultEndpoint(std::string adapter)
    {
        Endpoint endpoint{};
        endpoint.adapter = std::move(adapter);
        endpoint.leavesAtMs = never;
        endpoint.repeatsAtMs = never;
        endpoint.pairing = {1, 0, 100, "123456", 3};
        endpoint.unpairing = {0, 50, UnpairEffect::Updated};
        endpoint.description = "蓝牙 LE 设备";
        endpoint.properties = {
            {"System.Devices.DevObjectType", std::uint32_t{5}}, // an association endpoint
            {"System.Devices.Aep.CanPair", true},
            {"System.Devices.Aep.IsConnected", false},
            {"System.Devices.Aep.IsPaired", false},
            {"System.Devices.Aep.IsPresent", true},
            {"System.Devices.Aep.SignalStrength", -60},
            {std::string(leProperties) + "AddressType", std::uint8_t{0}}, // public
        };
        return endpoint;
    }

    void ReadEndpoint(TableReader& reader, Endpoint& endpoint)
    {
        reader.ReadAddress("adapter", endpoint.adapter);
        reader.ReadAddress("address", endpoint.address);
        auto& properties = endpoint.properties;
        for (auto const& [key, property] : propertyKeys)
        {
            auto const known = properties.find(property);
            Value value = known == properties.end() ? Value{} : known->second;
            reader.Read(key, KindOfProperty(property), value);
            if (reader.Has(key))
            {
                properties[std::string(property)] = std::move(value);
            }
        }
        ReadBattery(reader, properties);
        ReadClassOfDevice(reader, properties);
        ReadAppearance(reader, properties);
        ReadTimes(reader, endpoint);
        reader.Read("unfiltered", endpoint.unfiltered);
        reader.Read("listed", endpoint.listed);
        reader.Read("description", endpoint.description);
        if (auto table = reader.Table("properties"))
        {
            ReadProperties(*table, properties);
        }
        if (auto table = reader.Table("pairing"))
        {
            ReadPairing(*table, endpoint.pairing);
        }
        if (auto table = reader.Table("unpairing"))
        {
            ReadUnpairing(*table, endpoint.unpairing);
        }
        for (auto const& table : reader.Tables("change"))
        {
            endpoint.changes.push_back(ReadChange(table));
        }
    }
} // namespace simulator
