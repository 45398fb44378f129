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

        std::string Limits(std::int64_t least, std::int64_t most)
        {
            return std::to_string(least) + " to " + std::to_string(most);
        }

        std::string Range(std::int64_t least, std::int64_t most)
        {
            return "a number from " + Limits(least, most);
        }
        std::string_view WordFor(PropertyKind kind)
        {
            switch (kind)
            {
            case PropertyKind::Boolean:
                return "Boolean";
            case PropertyKind::String:
                return "text";
            case PropertyKind::StringArray:
                return "texts";
            case PropertyKind::Guid:
                return "GUID";
            case PropertyKind::UInt16:
                return "0 to 65535";
            default:
                return "value";
            }
        }

        std::string TomlOf(Value const& value)
        {
            if (auto const* boolean = std::get_if<bool>(&value))
            {
                return *boolean ? "true" : "false";
            }
            auto const* text = std::get_if<std::string>(&value);
            return text && !text->empty() ? '"' + *text + '"' : std::string();
        }
    } // namespace

    TableReader::TableReader(toml::table const& contents, Faults& faults, std::vector<KeyNote>* notes, std::string path)
        : m_table(&contents)
        , m_faults(&faults)
        , m_notes(notes)
        , m_path(std::move(path))
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

    void TableReader::Read(std::string_view key, std::optional<bool>& target)
    {
        Value value;
        Read(key, PropertyKind::Boolean, value);
        if (auto const* const read = std::get_if<bool>(&value))
        {
            target = *read;
        }
    }

    void TableReader::Read(std::string_view key, std::string& target)
    {
        Value value = target;
        Read(key, PropertyKind::String, value);
        target = std::get<std::string>(value);
    }

    void TableReader::Read(std::string_view key, PropertyKind kind, Value& target)
    {
        if (m_notes)
        {
            Note(key, std::string(WordFor(kind)), TomlOf(target));
        }
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
        if (m_notes)
        {
            Note(key, "address", TomlOf(target));
        }
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
        if (m_notes)
        {
            Note(key, Limits(least, most), std::to_string(target));
        }
        target = NumberFrom(key, least, most).value_or(target);
    }

    std::optional<std::int32_t> TableReader::ReadNumber(std::string_view key, std::int32_t least, std::int32_t most)
    {
        if (m_notes)
        {
            Note(key, Limits(least, most), {});
        }
        return NumberFrom(key, least, most);
    }

    void TableReader::ReadFailure(std::string_view key, std::int32_t& target)
    {
        Note(key, "failure code", {});
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
        if (m_notes)
        {
            Note(key, "time", target == never ? "\"never\"" : std::to_string(target));
        }
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

    bool TableReader::ReadNames(std::string_view key, std::span<Name const> names, std::vector<std::int64_t>& numbers)
    {
        NoteNames(key, "names", names, numbers.front());
        auto const* node = Find(key);
        return !node || ReadList(key, *node, names, numbers);
    }

    bool TableReader::ReadList(std::string_view key, toml::node const& node, std::span<Name const> names,
                               std::vector<std::int64_t>& numbers)
    {
        auto const* list = node.as_array();
        if (!list || list->empty())
        {
            RejectNode(key, node, "a list of names is expected: " + ListOf(names));
            return false;
        }
        bool good = true;
        std::vector<std::int64_t> read;
        for (auto const& name : *list)
        {
            auto const number = NumberOf(key, name, names, "a name");
            good = good && number;
            if (number)
            {
                read.push_back(*number);
            }
        }
        if (!read.empty())
        {
            numbers = std::move(read);
        }
        return good;
    }

    void TableReader::ReadNameOrNames(std::string_view key, std::span<Name const> names,
                                      std::vector<std::int64_t>& numbers)
    {
        constexpr std::int64_t none = -1;
        NoteNames(key, "name or names", names, none);
        auto const* node = Find(key);
        if (node && node->is_array())
        {
            ReadList(key, *node, names, numbers);
        }
        else if (auto const number = node ? NumberOf(key, *node, names, "a name") : std::nullopt)
        {
            numbers.push_back(*number);
        }
    }

    std::optional<TableReader> TableReader::Table(std::string_view key)
    {
        Note(key, "table", {});
        auto const* node = Find(key);
        if (node && !node->is_table())
        {
            RejectNode(key, *node, "a table is expected");
        }
        return node && node->is_table()
                   ? std::optional<TableReader>(std::in_place, *node->as_table(), *m_faults, m_notes, PathOf(key))
                   : std::nullopt;
    }

    std::vector<TableReader> TableReader::Tables(std::string_view key)
    {
        Note(key, "tables", {});
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
                    readers.emplace_back(*table, *m_faults, m_notes, PathOf(key));
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

    void TableReader::Note(std::string_view key, std::string takes, std::string otherwise)
    {
        if (m_notes)
        {
            m_notes->push_back({m_path, std::string(key), std::move(takes), std::move(otherwise), {}});
        }
    }

    void TableReader::NoteNames(std::string_view key, std::string_view takes, std::span<Name const> names,
                                std::int64_t otherwise)
    {
        if (m_notes)
        {
            auto const name = std::ranges::find(names, otherwise, &Name::number);
            Note(key, std::string(takes), name == names.end() ? "" : TomlOf(std::string(name->text)));
            m_notes->back().names = TextsOf(names);
        }
    }

    std::string TableReader::PathOf(std::string_view key) const
    {
        return m_notes ? m_path + (m_path.empty() ? "" : ".") + std::string(key) : std::string();
    }

    void TableReader::RejectNode(std::string_view key, toml::node const& node, std::string_view expected) const
    {
        m_faults->Add(node.source().begin.line,
                      InQuotes(key) + ": " + Describe(node) + " where " + std::string(expected));
    }

    std::optional<std::int32_t> TableReader::NumberFrom(std::string_view key, std::int32_t least, std::int32_t most)
    {
        auto const* node = Find(key);
        if (!node)
        {
            return std::nullopt;
        }
        auto const* number = node->as_integer();
        if (number && number->get() >= least && number->get() <= most)
        {
            return static_cast<std::int32_t>(number->get());
        }
        RejectNode(key, *node, Range(least, most) + " is expected");
        return std::nullopt;
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
