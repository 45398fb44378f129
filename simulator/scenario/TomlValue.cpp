#include "simulator/scenario/TomlValue.h"

#include "simulator/properties/HexText.h"

#include <optional>
#include <utility>

namespace simulator
{
    namespace
    {
        std::string_view Describe(PropertyKind kind)
        {
            switch (kind)
            {
            case PropertyKind::Boolean:
                return "true or false is expected";
            case PropertyKind::Int32:
                return "a whole number of 32 bits is expected";
            case PropertyKind::String:
                return "a text in quotes is expected";
            case PropertyKind::Guid:
                return "a text like \"{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}\" is expected";
            case PropertyKind::Unknown:
                break;
            }
            return "no such property";
        }

        std::optional<Value> ReadAs(PropertyKind kind, toml::node const& node)
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
    } // namespace

    void Fail(toml::source_region const& where, std::string_view source, std::string_view reason)
    {
        throw ScenarioError(std::string(source) + ":" + std::to_string(where.begin.line) + ": " + std::string(reason));
    }

    toml::table ParseToml(std::string_view toml, std::string_view source)
    {
        try
        {
            return toml::parse(toml);
        }
        catch (toml::parse_error const& error)
        {
            Fail(error.source(), source, error.description());
        }
    }

    Value ReadValue(toml::node const& node, std::string_view source, PropertyKind kind)
    {
        auto value = ReadAs(kind, node);
        if (!value)
        {
            Fail(node.source(), source, Describe(kind));
        }
        return *std::move(value);
    }

    Value ParseValue(std::string_view property, std::string_view toml)
    {
        auto const kind = KindOfProperty(property);
        if (kind == PropertyKind::Unknown)
        {
            Fail({{1, 1}, {1, 1}, nullptr}, property, Describe(kind));
        }
        if (toml.empty())
        {
            return {};
        }
        auto const table = ParseToml("value = " + std::string(toml), property);
        auto const* node = table.get("value");
        if (table.size() != 1 || !node)
        {
            Fail(table.source(), property, "one value is expected");
        }
        return ReadValue(*node, property, kind);
    }
} // namespace simulator
