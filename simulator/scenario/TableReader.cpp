#include "simulator/scenario/TableReader.h"

#include "simulator/properties/HexText.h"

#include <algorithm>

namespace simulator
{
    namespace
    {
        std::string Quoted(std::string_view text)
        {
            return "'" + std::string(text) + "'";
        }

        std::string ListOf(std::span<Name const> names)
        {
            std::string list;
            for (auto const& name : names)
            {
                list += (list.empty() ? "" : ", ") + std::string(name.text);
            }
            return list;
        }
    } // namespace

    TableReader::TableReader(toml::table const& contents, std::string_view sourceName)
        : m_table(&contents)
        , m_source(sourceName)
    {
    }

    bool TableReader::Has(std::string_view key) const
    {
        return m_table->contains(key);
    }

    void TableReader::Read(std::string_view key, bool& target)
    {
        if (auto const* node = Find(key))
        {
            target = std::get<bool>(ReadValue(*node, m_source, PropertyKind::Boolean));
        }
    }

    void TableReader::Read(std::string_view key, std::string& target)
    {
        if (auto const* node = Find(key))
        {
            target = std::get<std::string>(ReadValue(*node, m_source, PropertyKind::String));
        }
    }

    void TableReader::Read(std::string_view key, PropertyKind kind, Value& target)
    {
        if (auto const* node = Find(key))
        {
            target = ReadValue(*node, m_source, kind);
        }
    }

    void TableReader::ReadAddress(std::string_view key, std::string& target)
    {
        std::string text;
        Read(key, text);
        if (Has(key))
        {
            auto const address = ParseAddress(text);
            if (!address)
            {
                FailAt(key, Quoted(text) + " is not an address like 'a4:c1:38:5e:22:0f'");
            }
            target = *address;
        }
    }

    void TableReader::ReadMilliseconds(std::string_view key, std::int32_t& target)
    {
        constexpr Name names[] = {{"never", never}};
        if (auto const* node = Find(key))
        {
            auto const time = NumberOf(key, *node, names);
            if ((node->is_integer() && time < 0) || time > std::numeric_limits<std::int32_t>::max())
            {
                FailAt(key, std::to_string(time) + " is not a time: milliseconds from 0 upwards, or \"never\"");
            }
            target = static_cast<std::int32_t>(time);
        }
    }

    std::optional<std::int64_t> TableReader::ReadName(std::string_view key, std::span<Name const> names)
    {
        auto const* node = Find(key);
        if (!node)
        {
            return std::nullopt;
        }
        if (!node->is_string())
        {
            FailAt(key, "a name is expected: " + ListOf(names));
        }
        return NumberOf(key, *node, names);
    }

    std::vector<std::int64_t> TableReader::ReadNames(std::string_view key, std::span<Name const> names)
    {
        std::vector<std::int64_t> numbers;
        if (auto const* node = Find(key))
        {
            auto const* list = node->as_array();
            if (!list || !list->is_homogeneous(toml::node_type::string))
            {
                FailAt(key, "a list of names is expected: " + ListOf(names));
            }
            for (auto const& name : *list)
            {
                numbers.push_back(NumberOf(key, name, names));
            }
        }
        return numbers;
    }

    std::optional<TableReader> TableReader::Table(std::string_view key)
    {
        auto const* node = Find(key);
        if (!node)
        {
            return std::nullopt;
        }
        if (!node->is_table())
        {
            FailAt(key, "a table is expected");
        }
        return TableReader(*node->as_table(), m_source);
    }

    std::vector<TableReader> TableReader::Tables(std::string_view key)
    {
        std::vector<TableReader> readers;
        if (auto const* node = Find(key))
        {
            auto const* list = node->as_array();
            if (!list || !list->is_homogeneous(toml::node_type::table))
            {
                FailAt(key, "tables are expected, each headed by its name in double brackets");
            }
            for (auto const& entry : *list)
            {
                readers.emplace_back(*entry.as_table(), m_source);
            }
        }
        return readers;
    }

    std::vector<std::string_view> TableReader::Keys() const
    {
        std::vector<std::string_view> keys;
        for (auto const& entry : *m_table)
        {
            keys.push_back(entry.first.str());
        }
        return keys;
    }

    void TableReader::RejectOtherKeys() const
    {
        for (auto const key : Keys())
        {
            if (std::ranges::find(m_known, key) == m_known.end())
            {
                FailAt(key, "unknown key");
            }
        }
    }

    void TableReader::FailHere(std::string_view reason) const
    {
        Fail(m_table->source(), m_source, reason);
    }

    void TableReader::FailAt(std::string_view key, std::string_view reason) const
    {
        Fail(m_table->find(key)->first.source(), m_source, Quoted(key) + ": " + std::string(reason));
    }

    toml::node const* TableReader::Find(std::string_view key)
    {
        m_known.emplace_back(key);
        return m_table->get(key);
    }

    std::int64_t TableReader::NumberOf(std::string_view key, toml::node const& node, std::span<Name const> names) const
    {
        if (auto const* number = node.as_integer())
        {
            return number->get();
        }
        auto const text = node.value<std::string_view>();
        auto const name = std::ranges::find(names, text.value_or(""), &Name::text);
        if (name == names.end())
        {
            FailAt(key,
                   (text ? Quoted(*text) + " is not known" : "of the wrong type") + "; known are: " + ListOf(names));
        }
        return name->number;
    }

    std::optional<std::int64_t> TableReader::ReadNumberWithin(std::string_view key, std::span<Name const> names,
                                                              std::int64_t least, std::int64_t most)
    {
        auto const* node = Find(key);
        if (!node)
        {
            return std::nullopt;
        }
        auto const number = NumberOf(key, *node, names);
        if (number < least || number > most)
        {
            FailAt(key, std::to_string(number) + " is out of range");
        }
        return number;
    }
} // namespace simulator
