#include "simulator/scenario/TomlValue.h"

#include "simulator/properties/HexText.h"
#include "simulator/scenario/DeepKey.h"
#include "simulator/scenario/Faults.h"
#include "simulator/scenario/Guess.h"

#include <chrono>
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

        template <typename Integer>
        std::optional<Value> ReadInteger(toml::node const& node)
        {
            auto const* const number = node.as_integer();
            return number && std::in_range<Integer>(number->get())
                       ? std::optional<Value>(static_cast<Integer>(number->get()))
                       : std::nullopt;
        }

        // Without an offset it is UTC.
        std::optional<Value> ReadTime(toml::node const& node)
        {
            auto const* const found = node.as_date_time();
            if (!found)
            {
                return std::nullopt;
            }
            using namespace std::chrono;
            auto const& [date, time, offset] = found->get();
            return DateTimeOf(sys_days(year(date.year) / month(date.month) / day(date.day)) + hours(time.hour) +
                              minutes(time.minute) + seconds(time.second) +
                              duration_cast<Ticks>(nanoseconds(time.nanosecond)) -
                              minutes(offset ? offset->minutes : 0));
        }

        template <typename T>
        std::optional<Value> ReadList(toml::node const& node, PropertyKind element)
        {
            auto const* const found = node.as_array();
            if (!found)
            {
                return std::nullopt;
            }
            std::vector<T> list;
            for (auto const& entry : *found)
            {
                auto value = ReadValue(entry, element);
                if (!value)
                {
                    return std::nullopt;
                }
                list.push_back(std::get<T>(*std::move(value)));
            }
            return list;
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
        case PropertyKind::UInt8:
            return "a whole number from 0 to 255 is expected";
        case PropertyKind::UInt16:
            return "a whole number from 0 to 65535 is expected";
        case PropertyKind::Int32:
            return "a whole number from -2147483648 to 2147483647 is expected";
        case PropertyKind::UInt32:
            return "a whole number from 0 to 4294967295 is expected";
        case PropertyKind::String:
            return "a text in quotes is expected";
        case PropertyKind::Guid:
            return "a text like '{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}' is expected";
        case PropertyKind::DateTime:
            return "a date and time like 2024-05-17T08:30:00Z is expected";
        case PropertyKind::StringArray:
            return "a list of texts in quotes is expected";
        case PropertyKind::GuidArray:
            return "a list of texts like '{e0cbf06c-cd8b-4647-bb8a-263b43f0f974}' is expected";
        case PropertyKind::ByteArray:
            return "a list of whole numbers from 0 to 255 is expected";
        case PropertyKind::Unknown:
            break;
        }
        return "nothing is expected";
    }

    std::optional<Value> ReadValue(toml::node const& node, PropertyKind kind)
    {
        auto const* const text = node.as_string();
        switch (kind)
        {
        case PropertyKind::Boolean:
            return node.is_boolean() ? std::optional<Value>(node.as_boolean()->get()) : std::nullopt;
        case PropertyKind::UInt8:
            return ReadInteger<std::uint8_t>(node);
        case PropertyKind::UInt16:
            return ReadInteger<std::uint16_t>(node);
        case PropertyKind::Int32:
            return ReadInteger<std::int32_t>(node);
        case PropertyKind::UInt32:
            return ReadInteger<std::uint32_t>(node);
        case PropertyKind::String:
            return text ? std::optional<Value>(text->get()) : std::nullopt;
        case PropertyKind::Guid:
            return text ? ParseGuid(text->get()) : std::nullopt;
        case PropertyKind::DateTime:
            return ReadTime(node);
        case PropertyKind::StringArray:
            return ReadList<std::string>(node, PropertyKind::String);
        case PropertyKind::GuidArray:
            return ReadList<Guid>(node, PropertyKind::Guid);
        case PropertyKind::ByteArray:
            return ReadList<std::uint8_t>(node, PropertyKind::UInt8);
        case PropertyKind::Unknown:
            break;
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
