// Reads the tables of a scenario strictly: what nobody asks for is a fault.
#pragma once

#include "simulator/scenario/TomlValue.h"

#include <limits>
#include <optional>
#include <span>

namespace simulator
{
    // A word that a scenario may use for a number.
    struct Name
    {
        std::string_view text;
        std::int64_t number;
    };

    // A table whose keys are read by name. Reading a key that is absent leaves its target alone. A key that
    // was never asked for is a fault, which the last call finds: RejectOtherKeys().
    class TableReader
    {
    public:
        TableReader(toml::table const& contents, std::string_view sourceName);

        bool Has(std::string_view key) const;
        void Read(std::string_view key, bool& target);
        void Read(std::string_view key, std::string& target);
        void Read(std::string_view key, PropertyKind kind, Value& target);
        void ReadAddress(std::string_view key, std::string& target);
        void ReadMilliseconds(std::string_view key, std::int32_t& target); // from 0 upwards, or "never"

        // One of the names.
        std::optional<std::int64_t> ReadName(std::string_view key, std::span<Name const> names);
        std::vector<std::int64_t> ReadNames(std::string_view key, std::span<Name const> names);

        // One of the names, or any number that fits.
        template <typename T>
        void ReadNumber(std::string_view key, std::span<Name const> names, T& target)
        {
            using Limits = std::numeric_limits<T>;
            if (auto const number = ReadNumberWithin(key, names, Limits::min(), Limits::max()))
            {
                target = static_cast<T>(*number);
            }
        }

        std::optional<TableReader> Table(std::string_view key);
        std::vector<TableReader> Tables(std::string_view key);
        std::vector<std::string_view> Keys() const;

        void RejectOtherKeys() const;
        [[noreturn]] void FailHere(std::string_view reason) const;
        [[noreturn]] void FailAt(std::string_view key, std::string_view reason) const;

    private:
        toml::node const* Find(std::string_view key);
        std::int64_t NumberOf(std::string_view key, toml::node const& node, std::span<Name const> names) const;
        std::optional<std::int64_t> ReadNumberWithin(std::string_view key, std::span<Name const> names,
                                                     std::int64_t least, std::int64_t most);

        toml::table const* m_table;
        std::string_view m_source;
        std::vector<std::string> m_known; // the keys asked for so far
    };
} // namespace simulator
