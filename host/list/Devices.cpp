#include "host/list/Devices.h"

#include "host/Text.h"

#include <algorithm>
#include <array>
#include <functional>
#include <limits>
#include <map>
#include <tuple>
#include <utility>

namespace host
{
    namespace
    {
        // An endpoint without an address is a device of its own.
        std::string KeyOf(Seen const& endpoint)
        {
            return endpoint.address.empty() ? endpoint.id : endpoint.address;
        }

        auto OrderOf(Device const& device)
        {
            auto const& name = NameOf(device);
            auto const signal = SignalOf(device).value_or(std::numeric_limits<int>::min() + 1);
            return std::tuple(!IsPaired(device), -signal, name.empty(), name, device.front().id);
        }

        std::string ProtocolsOf(Device const& device)
        {
            std::string text;
            for (auto const& endpoint : device)
            {
                // One address may be seen by two adapters.
                if (text.find(TextOf(endpoint.protocol)) == std::string::npos)
                {
                    text += (text.empty() ? "" : " + ") + std::string(TextOf(endpoint.protocol));
                }
            }
            return text;
        }

        struct Column
        {
            char const* title;
            std::function<std::string(Device const&)> text;
            std::size_t width = 0;
        };

        constexpr std::size_t gap = 2;

        std::size_t WidthOf(std::vector<Column> const& columns)
        {
            std::size_t width = 0;
            for (auto const& column : columns)
            {
                width += column.width + gap;
            }
            return width - gap;
        }

        std::string Join(std::vector<Column> const& columns, std::size_t room,
                         std::function<std::string(Column const&)> const& cell)
        {
            std::string line;
            for (auto const& column : columns)
            {
                line += PadColumns(cell(column), column.width) + std::string(gap, ' ');
            }
            line.erase(line.find_last_not_of(' ') + 1);
            return FitColumns(line, room);
        }
    } // namespace

    std::vector<Device> ToDevices(std::vector<Seen> const& endpoints)
    {
        std::map<std::string, Device> byKey;
        for (auto const& endpoint : endpoints)
        {
            byKey[KeyOf(endpoint)].push_back(endpoint);
        }
        std::vector<Device> devices;
        for (auto& [key, device] : byKey)
        {
            std::ranges::stable_sort(device, {}, &Seen::protocol);
            devices.push_back(std::move(device));
        }
        std::ranges::sort(devices, {}, OrderOf);
        return devices;
    }

    std::string const& NameOf(Device const& device)
    {
        auto const named = std::ranges::find_if(device, [](Seen const& endpoint) { return !endpoint.name.empty(); });
        return named == device.end() ? device.front().name : named->name;
    }

    std::optional<int> SignalOf(Device const& device)
    {
        return std::ranges::max(device, {}, &Seen::signal).signal; // none is less than any
    }

    bool IsPaired(Device const& device)
    {
        return std::ranges::any_of(device, &Seen::paired);
    }

    bool IsConnected(Device const& device)
    {
        return std::ranges::any_of(device, &Seen::connected);
    }

    bool CanPair(Device const& device)
    {
        return std::ranges::any_of(device, &Seen::canPair);
    }

    char const* TextOf(Protocol protocol)
    {
        return protocol == Protocol::Le ? "LE" : "Classic";
    }

    std::string StateOf(Device const& device)
    {
        std::string state = CanPair(device) ? "can pair" : "cannot pair";
        if (IsPaired(device))
        {
            auto const paired = std::ranges::find_if(device, &Seen::paired);
            bool const all = std::ranges::all_of(device, &Seen::paired);
            state = all ? "paired" : std::string(TextOf(paired->protocol)) + " paired";
        }
        return state + (IsConnected(device) ? ", connected" : "");
    }

    std::string SignalText(std::optional<int> signal)
    {
        return signal ? std::to_string(*signal) + " dBm" : "";
    }

    std::string ShownName(std::string const& name)
    {
        return name.empty() ? "(no name)" : Harmless(name);
    }

    Table LayOut(std::vector<Device> const& devices, std::size_t columns)
    {
        constexpr std::size_t leastName = 16;
        // After the name, and the one that stays longest first.
        std::vector<Column> shown = {
            {"Name", [](Device const& device) { return ShownName(NameOf(device)); }},
            {"Address", [](Device const& device) { return Harmless(device.front().address); }},
            {"Protocols", ProtocolsOf},
            {"State", StateOf},
            {"Signal", [](Device const& device) { return SignalText(SignalOf(device)); }},
        };
        for (auto& column : shown)
        {
            column.width = Columns(column.title);
            for (auto const& device : devices)
            {
                column.width = std::max(column.width, Columns(column.text(device)));
            }
        }
        auto& name = shown.front().width;
        auto const wanted = name;
        name = std::min(wanted, leastName);
        for (auto const* const title : {"Protocols", "Signal", "Address"})
        {
            if (WidthOf(shown) > columns)
            {
                std::erase_if(shown, [title](Column const& column) { return column.title == std::string_view(title); });
            }
        }
        auto const others = WidthOf(shown) - name;
        name = others < columns ? std::min(wanted, columns - others) : 0;
        Table table{Join(shown, columns, [](Column const& column) { return column.title; }), {}};
        for (auto const& device : devices)
        {
            table.rows.push_back(Join(shown, columns, [&](Column const& column) { return column.text(device); }));
        }
        return table;
    }

    std::string LineOf(Seen const& endpoint)
    {
        auto const signal = SignalText(endpoint.signal);
        return ShownName(endpoint.name) + "  " + Harmless(endpoint.address) + "  " + TextOf(endpoint.protocol) + "  " +
               StateOf({endpoint}) + (signal.empty() ? "" : "  " + signal);
    }
} // namespace host
