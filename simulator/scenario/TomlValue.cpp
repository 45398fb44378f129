#include "simulator/scenario/TomlValue.h"

#include "simulator/properties/HexText.h"
#include "simulator/scenario/DeepKey.h"
#include "simulator/scenario/Faults.h"
#include "simulator/scenario/Guess.h"

#include <utility>

namespace simulator
{
    namespace
    {
        [[noreturn]] void Fail(std::string_view source, std::size_t line, std::string_view reason)
        {
            Faults faults(source);
            faults.Add(line, reason);
            faults.Throw();
        }
    } // namespace

    toml::table ParseToml(std::string_view toml, std::string_view source)
    {
        if (auto const line = FindDeepKey(toml))
        {
            Fail(source, *line, "a key of more than " + std::to_string(mostKeyParts) + " parts");
        }
        try
        {
            return toml::parse(toml);
        }
        catch (toml::parse_error const& error)
        {
            Fail(source, error.source().begin.line, error.description());
        }
    }

    std::string Describe(toml::node const& node)
    {
        switch (node.type())
        {
        case toml::node_type::string:
            return InQuotes(node.as_string()->get());
        case toml::node_type::integer:
            return std::to_string(node.as_integer()->get());
        case toml::node_type::boolean:
            return node.as_boolean()->get() ? "true" : "false";
        case toml::node_type::floating_point:
            return "a number with a point";
        case toml::node_type::array:
            return node.as_array()->empty() ? "an empty list" : "a list";
        case toml::node_type::table:
            return "a table";
        default:
            return "a date or time";
        }
    }

    std::string_view Expected(PropertyKind kind)
    {
        switch (kind)
        {
        case PropertyKind::Boolean:
            return "true or false is expected";
        case PropertyKind::Int32:
            return "a whole number from -2147483648 to 2147483647 is expected";
        case PropertyKind::String:
            return "a text in quotes is expected";
        case PropertyKind::Guid:
            return "a text like '{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}' is expected";
        case PropertyKind::Unknown:
            break;
        }
        return "nothing is expected";
    }

    std::optional<Value> ReadValue(toml::node const& node, PropertyKind kind)
    {
        if (auto const* flag = node.as_boolean(); flag && kind == PropertyKind::Boolean)
        {
            return Value{flag->get()};
        }
        if (auto const* number = node.as_integer(); number && kind == PropertyKind::Int32)
        {
            auto const narrow = static_cast<std::int32_t>(number->get());
            return narrow == number->get() ? std::optional<Value>(narrow) : std::nullopt;
        }
        if (auto const* text = node.as_string(); text && kind == PropertyKind::String)
        {
            return Value{text->get()};
        }
        if (auto const* text = node.as_string(); text && kind == PropertyKind::Guid)
        {
            return ParseGuid(text->get());
        }
        return std::nullopt;
    }

    Value ParseValue(std::string_view property, std::string_view toml)
    {
        auto const kind = KindOfProperty(property);
        if (kind == PropertyKind::Unknown)
        {
            Fail(property, 1, "unknown property" + Guess(property, PropertyNames()));
        }
        if (toml.empty())
        {
            return {};
        }
        auto const table = ParseToml("value = " + std::string(toml), property);
        auto const* node = table.get("value");
        if (table.size() != 1 || !node)
        {
            Fail(property, table.source().begin.line, "one value is expected");
        }
        auto value = ReadValue(*node, kind);
        if (!value)
        {
            Fail(property, node->source().begin.line, Describe(*node) + " where " + std::string(Expected(kind)));
        }
        return *std::move(value);
    }
} // namespace simulator
