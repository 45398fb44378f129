#include "simulator/scenario/ScenarioEndpoint.h"

#include "simulator/scenario/ScenarioNames.h"

#include <algorithm>
#include <utility>

namespace simulator
{
    namespace
    {
        void ReadProperties(TableReader reader, Properties& properties)
        {
            constexpr std::string_view others[] = {
                "System.ItemNameDisplay",      "System.Devices.Aep.AepId",         "System.Devices.Aep.CanPair",
                "System.Devices.Aep.IsPaired", "System.Devices.Aep.DeviceAddress", "System.Devices.Aep.ProtocolId",
            };
            PropertyNameLess const less;
            for (auto const key : reader.Keys())
            {
                auto const same = [&](std::string_view other) { return !less(key, other) && !less(other, key); };
                if (std::ranges::any_of(others, same))
                {
                    reader.FailAt(key, "not set here: it follows from the device's other keys");
                }
                reader.Read(key, KindOfProperty(key), properties[std::string(key)]);
            }
        }

        TimedChange ReadChange(TableReader reader)
        {
            TimedChange change{never, {}, {}};
            bool unset = false;
            for (auto const key : {"at-ms", "property"})
            {
                if (!reader.Has(key))
                {
                    reader.FailHere("a change needs '" + std::string(key) + "'");
                }
            }
            reader.ReadMilliseconds("at-ms", change.atMs);
            reader.Read("property", change.property);
            if (KindOfProperty(change.property) == PropertyKind::Unknown)
            {
                reader.FailAt("property", "there is none named '" + change.property + "'");
            }
            reader.Read("value", KindOfProperty(change.property), change.value);
            reader.Read("unset", unset);
            if (unset == reader.Has("value"))
            {
                reader.FailHere("a change needs either 'value' or 'unset = true'");
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
            reader.RejectOtherKeys();
        }

        void ReadUnpairing(TableReader reader, Unpairing& unpairing)
        {
            reader.ReadNumber("status", names::unpairingStatuses, unpairing.status);
            reader.ReadMilliseconds("duration-ms", unpairing.durationMs);
            if (auto const effect = reader.ReadName("effect", names::unpairEffects))
            {
                unpairing.effect = static_cast<UnpairEffect>(*effect);
            }
            reader.RejectOtherKeys();
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
            {"System.ItemNameDisplay", {}},
            {"System.Devices.DevObjectType", 5}, // an association endpoint
            {"System.Devices.DeviceInstanceId", {}},
            {"System.Devices.GlyphIcon", {}},
            {"System.Devices.Icon", {}},
            {"System.Devices.InterfaceEnabled", {}},
            {"System.Devices.IsDefault", {}},
            {"System.Devices.PhysicalDeviceLocation", {}},
            {"System.Devices.Aep.Bluetooth.IssueInquiry", {}},
            {"System.Devices.Aep.Bluetooth.LastSeenTime", {}},
            {"System.Devices.Aep.CanPair", true},
            {"System.Devices.Aep.Category", {}},
            {"System.Devices.Aep.ContainerId", {}},
            {"System.Devices.Aep.IsConnected", false},
            {"System.Devices.Aep.IsPaired", false},
            {"System.Devices.Aep.IsPresent", true},
            {"System.Devices.Aep.Manufacturer", {}},
            {"System.Devices.Aep.ModelId", {}},
            {"System.Devices.Aep.ModelName", {}},
            {"System.Devices.Aep.SignalStrength", -60},
        };
        return endpoint;
    }

    void ReadEndpoint(TableReader& reader, Endpoint& endpoint)
    {
        reader.ReadAddress("adapter", endpoint.adapter);
        reader.ReadAddress("address", endpoint.address);
        auto& properties = endpoint.properties;
        reader.Read("name", PropertyKind::String, properties["System.ItemNameDisplay"]);
        reader.Read("can-pair", PropertyKind::Boolean, properties["System.Devices.Aep.CanPair"]);
        reader.Read("is-paired", PropertyKind::Boolean, properties["System.Devices.Aep.IsPaired"]);
        reader.ReadMilliseconds("appears-ms", endpoint.appearsAtMs);
        reader.ReadMilliseconds("leaves-ms", endpoint.leavesAtMs);
        if (endpoint.leavesAtMs != never && endpoint.leavesAtMs <= endpoint.appearsAtMs)
        {
            reader.FailHere("the device leaves before it appears");
        }
        reader.ReadMilliseconds("repeats-ms", endpoint.repeatsAtMs);
        if (endpoint.repeatsAtMs != never && endpoint.repeatsAtMs <= endpoint.appearsAtMs)
        {
            reader.FailHere("the device is reported again before it appears");
        }
        reader.Read("unfiltered", endpoint.unfiltered);
        if (reader.Has("listed"))
        {
            reader.Read("listed", endpoint.listed.emplace());
        }
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
