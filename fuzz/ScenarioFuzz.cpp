// Any bytes as a scenario, as a property's value and as a file of pairings: each is understood, or refused with the
// line and the reason.
#include "fuzz/Require.h"
#include "simulator/scenario/PairingState.h"
#include "simulator/scenario/Scenario.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace
{
    using namespace simulator;
    using fuzz::Require;

    // Returns its line.
    std::ptrdiff_t CheckFault(std::string_view fault, std::string_view source, std::string_view text)
    {
        Require(fault.starts_with(source));
        fault.remove_prefix(source.size());
        Require(fault.starts_with(':'));
        fault.remove_prefix(1);
        std::ptrdiff_t line = 0;
        auto const number = std::from_chars(fault.data(), fault.data() + fault.size(), line);
        Require(number.ec == std::errc() && line >= 1 && line <= std::ranges::count(text, '\n') + 1);
        fault.remove_prefix(static_cast<std::size_t>(number.ptr - fault.data()));
        Require(fault.starts_with(": ") && fault.size() > 2);
        return line;
    }

    // One a line, in the order of their lines, up to a hundred.
    void CheckFaults(std::string_view faults, std::string_view source, std::string_view text)
    {
        std::ptrdiff_t last = 1;
        for (int listed = 0; !faults.empty(); ++listed)
        {
            auto const end = std::min(faults.find('\n'), faults.size());
            auto const fault = faults.substr(0, end);
            faults.remove_prefix(std::min(end + 1, faults.size()));
            if (listed == 100)
            {
                Require(fault.starts_with("... and ") && faults.empty());
                return;
            }
            auto const line = CheckFault(fault, source, text);
            Require(line >= last);
            last = line;
        }
    }

    // What the reader makes of the text, or nothing when it refuses it: the same at the second time.
    template <typename Reader>
    auto Read(Reader reader, std::string_view text, std::string_view source)
    {
        std::string fault;
        auto const attempt = [&]() -> std::optional<decltype(reader(text, source))> {
            try
            {
                return reader(text, source);
            }
            catch (ScenarioError const& error)
            {
                fault = error.what();
                return std::nullopt;
            }
        };
        auto const first = attempt();
        auto const firstFault = std::move(fault);
        Require(attempt() == first && (first || fault == firstFault));
        if (!first)
        {
            Require(!firstFault.empty());
            CheckFaults(firstFault, source, text);
        }
        return first;
    }

    bool IsAddress(std::string_view text)
    {
        return text.size() == 17 && text.find_first_not_of("0123456789abcdef:") == text.npos;
    }

    void CheckScenario(Scenario const& scenario)
    {
        std::set<std::string> ids;
        for (auto const& endpoint : scenario.endpoints)
        {
            Require(!endpoint.id.empty() && ids.insert(endpoint.id).second);
            Require(IsAddress(endpoint.address) && IsAddress(endpoint.adapter));
            Require(endpoint.leavesAtMs == never || endpoint.leavesAtMs > endpoint.appearsAtMs);
            Require(std::ranges::is_sorted(endpoint.changes, {}, &TimedChange::atMs));
            Require(endpoint.changes.empty() || endpoint.changes.front().atMs >= 0);
        }
        Require(scenario.eventThreads >= 1 && scenario.eventThreads <= 64);
        Require(scenario.listing.unrelatedDevices >= 0 && scenario.listing.durationMs >= 0);
    }

    void CheckState(PairingState state)
    {
        auto const written = ParsePairingState(PairingStateText(state), "written");
        std::erase_if(state, [](auto const& entry) { return entry.first.find_first_of("\r\n") != std::string::npos; });
        Require(written == state);
    }
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view const text(reinterpret_cast<char const*>(data), size);
    auto const state = Read(ParsePairingState, text, "state");
    auto const parse = [](std::string_view toml, std::string_view source) { return ParseScenario(toml, source); };
    if (auto scenario = Read(parse, text, "text.toml"))
    {
        CheckScenario(*scenario);
        PairingState all;
        for (auto const& endpoint : scenario->endpoints)
        {
            all[endpoint.id] = !IsTrue(endpoint.properties, isPairedProperty);
        }
        CheckState(all);
        ApplyPairingState(all, *scenario);
        Require(std::ranges::all_of(scenario->endpoints, [&](Endpoint const& endpoint) {
            return IsTrue(endpoint.properties, isPairedProperty) == all.at(endpoint.id);
        }));
    }
    if (state)
    {
        CheckState(*state);
    }
    // One property of each kind, and one that is not there.
    for (auto const property :
         {"System.ItemNameDisplay", "System.Devices.Aep.CanPair", "System.Devices.Aep.SignalStrength",
          "System.Devices.Aep.ModelId", "System.Devices.Aep.NoSuchThing"})
    {
        auto const read = [](std::string_view value, std::string_view name) { return ParseValue(name, value); };
        Read(read, text, property);
    }
    return 0;
}
