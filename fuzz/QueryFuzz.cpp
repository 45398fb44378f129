// Any bytes as a query: it is understood or refused with its place, and answers with two truth values alone.
#include "fuzz/Require.h"
#include "simulator/query/Aqs.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace
{
    using namespace simulator;
    using fuzz::Require;

    std::optional<Query> Parse(std::string_view text, std::string& fault)
    {
        try
        {
            return Query::Parse(text);
        }
        catch (QueryError const& error)
        {
            fault = error.what();
            return std::nullopt;
        }
    }

    void CheckFault(std::string_view fault, std::size_t size)
    {
        constexpr std::string_view before = " at byte ";
        auto const found = fault.rfind(before);
        Require(found != fault.npos && found > 0);
        fault.remove_prefix(found + before.size());
        std::size_t position = 0;
        auto const number = std::from_chars(fault.data(), fault.data() + fault.size(), position);
        Require(number.ec == std::errc() && number.ptr == fault.data() + fault.size() && position <= size);
    }

    // A speaker, nobody, and one whose values are not of their properties' kinds.
    Properties const neighbourhood[] = {
        {
            {"System.ItemNameDisplay", "Kitchen Speaker"},
            {"System.Devices.Aep.ProtocolId", Guid{"{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}"}},
            {"System.Devices.Aep.CanPair", true},
            {"System.Devices.Aep.IsPaired", false},
            {"System.Devices.Aep.SignalStrength", -60},
            {"System.Devices.Aep.ModelName", {}},
        },
        {},
        {
            {"System.ItemNameDisplay", 5},
            {"System.Devices.Aep.ProtocolId", "{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}"},
            {"System.Devices.Aep.CanPair", "System.StructuredQueryType.Boolean#True"},
            {"System.Devices.Aep.SignalStrength", "-60"},
        },
    };

    // Of instructions alone, a query selects whom it meets, and yet lets nobody through in an OR.
    bool OnlyInstructs(std::string const& text, Query const& query)
    {
        auto const& speaker = neighbourhood[0];
        std::string fault;
        auto const beside = Parse("System.ItemNameDisplay:=[] OR (" + text + ")", fault);
        return beside && query.Matches(speaker) && !beside->Matches(speaker);
    }

    // Behind one more word or parenthesis the query says the same, its opposite, or is nested too deeply.
    void CheckWithin(std::string const& text, std::string_view before, std::string_view after, Query const& query,
                     bool opposite)
    {
        std::string fault;
        auto const outer = Parse(std::string(before) + text + std::string(after), fault);
        if (!outer)
        {
            Require(fault.starts_with("nested too deeply"));
            return;
        }
        for (auto const& properties : neighbourhood)
        {
            Require(outer->Matches(properties) == (query.Matches(properties) != opposite));
        }
    }
} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string const text(reinterpret_cast<char const*>(data), size);
    std::string fault;
    auto const query = Parse(text, fault);
    bool const blank = text.find_first_not_of(" \t\n\v\f\r") == text.npos;
    if (!query)
    {
        Require(!blank);
        CheckFault(fault, size);
        return 0;
    }
    Require(query->IsBlank() == (blank && !text.empty()));
    if (blank)
    {
        Require(std::ranges::all_of(neighbourhood, [&](auto const& properties) { return query->Matches(properties); }));
        return 0;
    }
    CheckWithin(text, "(", ")", *query, false);
    CheckWithin(text, "NOT(", ")", *query, !OnlyInstructs(text, *query));
    CheckWithin(text, "NOT NOT(", ")", *query, false);
    CheckWithin(text, text + " OR ", "", *query, false);
    CheckWithin(text, "(" + text + ") AND (", ")", *query, false);
    return 0;
}
