#include "simulator/scenario/TableReader.h"

#include "simulator/properties/HexText.h"
#include "simulator/scenario/Guess.h"

#include <algorithm>

namespace simulator
{
    namespace
    {
        std::vector<std::string_view> TextsOf(std::span<Name const> names)
        {
            std::vector<std::string_view> texts;
            std::ranges::transform(names, std::back_inserter(texts), &Name::text);
            return texts;
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

        std::string Range(std::int64_t least, std::int64_t most)
        {
            return "a number from " + std::to_string(least) + " to " + std::to_string(most);
        }
    } // namespace

    TableReader::TableReader(toml::table const& contents, Faults& faults)
        : m_table(&contents)
        , m_faults(&faults)
    {
    }

    bool TableReader::Has(std::string_view key)
    {
        return Find(key) != nullptr;
    }

    bool TableReader::HoldsTable(std::string_view key)
    {
        auto const* node = Find(key);
        return node && node->is_table();
    }

    void TableReader::Read(std::string_view key, bool& target)
    {
        Value value = target;
        Read(key, PropertyKind::Boolean, value);
        target = std::get<bool>(value);
    }

    void TableReader::Read(std::string_view key, std::string& target)
    {
        Value value = target;
        Read(key, PropertyKind::String, value);
        target = std::get<std::string>(value);
    }

    void TableReader::Read(std::string_view key, PropertyKind kind, Value& target)
    {
        auto const* node = Find(key);
        if (!node)
        {
            return;
        }
        if (auto value = ReadValue(*node, kind))
        {
            target = *std::move(value);
        }
        else
        {
            RejectNode(key, *node, Expected(kind));
        }
    }

    void TableReader::ReadAddress(std::string_view key, std::string& target)
    {
        if (auto const* node = Find(key))
        {
            auto const address = ParseAddress(node->value_or(std::string_view()));
            if (!address)
            {
                RejectNode(key, *node, "an address like 'a4:c1:38:5e:22:0f' is expected");
            }
            target = address.value_or("");
        }
    }

    void TableReader::ReadNumber(std::string_view key, std::int32_t least, std::int32_t most, std::int32_t& target)
    {
        if (auto const* node = Find(key))
        {
            auto const* number = node->as_integer();
            if (number && number->get() >= least && number->get() <= most)
            {
                target = static_cast<std::int32_t>(number->get());
                return;
            }
            RejectNode(key, *node, Range(least, most) + " is expected");
        }
    }

    void TableReader::ReadFailure(std::string_view key, std::int32_t& target)
    {
        auto const* node = Find(key);
        if (!node)
        {
            return;
        }
        constexpr std::int64_t negatives = 0x80000000;
        auto const code = node->value_exact<std::int64_t>().value_or(0);
        bool const isUnsigned = code >= negatives && code < 2 * negatives;
        bool const isSigned = code < 0 && code >= -negatives;
        if (!isUnsigned && !isSigned)
        {
            RejectNode(key, *node, "a failure code from 0x80000000 to 0xFFFFFFFF is expected");
            return;
        }
        target = static_cast<std::int32_t>(code);
    }

    bool TableReader::ReadMilliseconds(std::string_view key, std::int32_t& target)
    {
        constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
        auto const* node = Find(key);
        if (!node)
        {
            return true;
        }
        auto const* time = node->as_integer();
        bool const isNever = node->value_or(std::string_view()) == "never";
        if (!isNever && (!time || time->get() < 0 || time->get() > most))
        {
            RejectNode(key, *node, "milliseconds from 0 to " + std::to_string(most) + ", or \"never\", are expected");
            return false;
        }
        target = isNever ? never : static_cast<std::int32_t>(time->get());
        return true;
    }

    std::optional<std::int64_t> TableReader::ReadName(std::string_view key, std::span<Name const> names)
    {
        auto const* node = Find(key);
        return node ? NumberOf(key, *node, names, "a name") : std::nullopt;
    }

    bool TableReader::ReadNames(std::string_view key, std::span<Name const> names, std::vector<std::int64_t>& numbers)
    {
        auto const* node = Find(key);
        if (!node)
        {
            return true;
        }
        auto const* list = node->as_array();
        if (!list || list->empty())
        {
            RejectNode(key, *node, "a list of names is expected: " + ListOf(names));
            return false;
        }
        bool good = true;
        for (auto const& name : *list)
        {
            auto const number = NumberOf(key, name, names, "a name");
            good = good && number;
            if (number)
            {
                numbers.push_back(*number);
            }
        }
        return good;
    }

    void TableReader::ReadNameOrNames(std::string_view key, std::span<Name const> names,
                                      std::vector<std::int64_t>& numbers)
    {
        auto const* node = Find(key);
        if (!node || node->is_array())
        {
            ReadNames(key, names, numbers);
        }
        else if (auto const number = NumberOf(key, *node, names, "a name"))
        {
            numbers.push_back(*number);
        }
    }

    std::optional<TableReader> TableReader::Table(std::string_view key)
    {
        auto const* node = Find(key);
        if (node && !node->is_table())
        {
            RejectNode(key, *node, "a table is expected");
        }
        return node && node->is_table() ? std::optional<TableReader>(std::in_place, *node->as_table(), *m_faults)
                                        : std::nullopt;
    }

    std::vector<TableReader> TableReader::Tables(std::string_view key)
    {
        std::vector<TableReader> readers;
        auto const reject = [&](toml::node const& node) {
            RejectNode(key, node, "tables, each headed by its name in double brackets, are expected");
        };
        auto const* node = Find(key);
        if (node && !node->is_array())
        {
            reject(*node);
        }
        else if (node)
        {
            for (auto const& entry : *node->as_array())
            {
                if (auto const* table = entry.as_table())
                {
                    readers.emplace_back(*table, *m_faults);
                }
                else
                {
                    reject(entry);
                }
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

    void TableReader::Need(std::string_view key, std::string_view what)
    {
        if (!Has(key))
        {
            Reject(key, "missing; " + std::string(what) + " needs it");
        }
    }

    void TableReader::RejectOtherKeys() const
    {
        std::vector<std::string_view> const known(m_known.begin(), m_known.end());
        for (auto const key : Keys())
        {
            if (!m_known.contains(key))
            {
                Reject(key, "unknown key" + Guess(key, known));
            }
        }
    }

    void TableReader::Reject(std::string_view key, std::string_view reason) const
    {
        auto const entry = m_table->find(key);
        auto const& where = entry == m_table->end() ? m_table->source() : entry->first.source();
        m_faults->Add(where.begin.line, InQuotes(key) + ": " + std::string(reason));
    }

    toml::node const* TableReader::Find(std::string_view key)
    {
        m_known.emplace(key);
        return m_table->get(key);
    }

    void TableReader::RejectNode(std::string_view key, toml::node const& node, std::string_view expected) const
    {
        m_faults->Add(node.source().begin.line,
                      InQuotes(key) + ": " + Describe(node) + " where " + std::string(expected));
    }

    std::optional<std::int64_t> TableReader::NumberOf(std::string_view key, toml::node const& node,
                                                      std::span<Name const> names, std::string_view expected) const
    {
        auto const text = node.value<std::string_view>();
        auto const name = std::ranges::find(names, text.value_or(""), &Name::text);
        if (name != names.end())
        {
            return name->number;
        }
        RejectNode(key, node,
                   std::string(expected) + " is expected: " + ListOf(names) + Guess(text.value_or(""), TextsOf(names)));
        return std::nullopt;
    }

    std::optional<std::int64_t> TableReader::ReadNumberWithin(std::string_view key, std::span<Name const> names,
                                                              std::int64_t least, std::int64_t most)
    {
        auto const* node = Find(key);
        if (!node)
        {
            return std::nullopt;
        }
        if (auto const number = node->value_exact<std::int64_t>(); number >= least && number <= most)
        {
            return number;
        }
        return NumberOf(key, *node, names, Range(least, most) + " or a name");
    }
} // namespace simulator
