#include "simulator/pnputil/Listing.h"

#include "simulator/pnputil/ListingLabels.h"
#include "simulator/scenario/DeviceNode.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdio>

namespace simulator
{
    namespace
    {
        struct Node
        {
            std::string instance;
            std::string description;
            char const* className;
            char const* classGuid;
            char const* manufacturer;
            char const* driver; // null: none installed
        };

        constexpr char bluetoothGuid[] = "{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}";

        // One of the nodes that any PC has; some look much like what a reader of the listing looks for.
        Node UnrelatedNode(std::int32_t index)
        {
            static Node const kinds[] = {
                {R"(USB\ROOT_HUB30\4&)", "USB Root Hub (USB 3.0)", "USB", "{36fc9e60-c465-11cf-8056-444553540000}",
                 "(Standard USB HUBs)", "usbhub3.inf"},
                {R"(BTHENUM\{00001101-0000-1000-8000-00805f9b34fb}_VID&00010075_PID&A013\7&2c714eb0&0&283DC27D7D03_C)",
                 "Standard Serial over Bluetooth link", "Ports", "{4d36e978-e325-11ce-bfc1-08002be10318}", "Microsoft",
                 "bthspp.inf"},
                {R"(ACPI\PNP0303\4&)", "Standard PS/2 Keyboard", "Keyboard", "{4d36e96b-e325-11ce-bfc1-08002be10318}",
                 "(Standard keyboards)", "keyboard.inf"},
                {R"(BTH\MS_BTHLE\8&)", "Bluetooth LE Enumerator", "Bluetooth", bluetoothGuid, "Microsoft",
                 "bthleenum.inf"},
            };
            auto const order = static_cast<std::size_t>(index);
            auto node = kinds[order % std::size(kinds)];
            std::array<char, 16> number{};
            std::snprintf(number.data(), number.size(), "%08zx", order / std::size(kinds));
            node.instance += number.data();
            return node;
        }

        bool IsListed(Endpoint const& endpoint)
        {
            return endpoint.protocol == Protocol::Le &&
                   endpoint.listed.value_or(endpoint.properties.at("System.Devices.Aep.IsPaired") == Value(true));
        }

        // The devices and, behind each, a service of its own.
        std::vector<Node> LeNodes(Scenario const& scenario)
        {
            std::vector<Node> nodes;
            for (auto const& endpoint : scenario.endpoints)
            {
                if (IsListed(endpoint))
                {
                    nodes.push_back({InstanceIdOf(endpoint), endpoint.description, "Bluetooth", bluetoothGuid,
                                     "Microsoft", "bthleenum.inf"});
                    nodes.push_back({R"(BTHLEDEVICE\{0000180f-0000-1000-8000-00805f9b34fb}_Dev_)" +
                                         AddressDigits(endpoint.address, std::tolower) + R"(\8&26e4c222&0&0014)",
                                     "Bluetooth LE battery service", "Bluetooth", bluetoothGuid, "Microsoft", nullptr});
                }
            }
            return nodes;
        }

        void AppendAscii(std::string& text, std::string_view utf8)
        {
            for (auto const each : utf8)
            {
                auto const byte = static_cast<unsigned char>(each);
                bool const continues = byte >= 0x80 && byte < 0xC0;
                if (!continues)
                {
                    text.append(byte >= 0xF0 ? 2 : 1, byte < 0x80 ? each : '?');
                }
            }
        }

        void AppendLine(std::string& text, std::string_view label, std::string_view value)
        {
            constexpr std::size_t valueColumn = 28;
            auto const start = text.size();
            AppendAscii(text, label);
            text += ':';
            text.append(valueColumn - std::min(valueColumn - 1, text.size() - start), ' ');
            AppendAscii(text, value);
            text += '\n';
        }

        void AppendNode(std::string& text, Node const& node, ListingLabels const& labels)
        {
            AppendLine(text, labels.instance, node.instance);
            AppendLine(text, labels.description, node.description);
            AppendLine(text, labels.className, node.className);
            AppendLine(text, labels.classGuid, node.classGuid);
            AppendLine(text, labels.manufacturer, node.manufacturer);
            AppendLine(text, labels.status, labels.started);
            if (node.driver)
            {
                AppendLine(text, labels.driver, node.driver);
            }
            text += '\n';
        }
    } // namespace

    std::string ListingText(Scenario const& scenario)
    {
        auto const& listing = scenario.listing;
        if (listing.missing)
        {
            return {};
        }
        auto const& labels = LabelsIn(listing.language);
        std::string text;
        AppendAscii(text, labels.banner);
        text += "\n\n";
        std::int32_t index = 0;
        for (; index < listing.unrelatedDevices / 2; ++index)
        {
            AppendNode(text, UnrelatedNode(index), labels);
        }
        for (auto const& node : LeNodes(scenario))
        {
            AppendNode(text, node, labels);
        }
        for (; index < listing.unrelatedDevices; ++index)
        {
            AppendNode(text, UnrelatedNode(index), labels);
        }
        return text;
    }
} // namespace simulator
