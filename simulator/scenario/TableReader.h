// Reads the tables of a scenario strictly: what nobody asks for is a fault.
#pragma once

#include "simulator/scenario/Faults.h"
#include "simulator/scenario/TomlValue.h"

#include <functional>
#include <limits>
#include <optional>
#include <set>
#include <span>

namespace simulator
{
    // A word that a scenario may use for a number.
    struct Name
    {
        std::string_view text;
        std::int64_t number;
    };

    // A table whose keys are read by name. Reading a key that is absent, or has a fault, leaves its target alone; a
    // fault is noted, and the functions that say so return whether there was none. A key that was never asked for is a
    // fault, which the last call finds: RejectOtherKeys().
    class TableReader
    {
    public:
        TableReader(toml::table const& contents, Faults& faults);

        bool Has(std::string_view key);
        bool HoldsTable(std::string_view key);
        void Read(std::string_view key, bool& target);
        void Read(std::string_view key, std::string& target);
        void Read(std::string_view key, PropertyKind kind, Value& target);
        void ReadAddress(std::string_view key, std::string& target); // empty when it has a fault

        // A number from the least to the most.
        void ReadNumber(std::string_view key, std::int32_t least, std::int32_t most, std::int32_t& target);

        // A failure code, as 0x80004005 or as its negative number.
        void ReadFailure(std::string_view key, std::int32_t& target);

        // One of the names.
        std::optional<std::int64_t> ReadName(std::string_view key, std::span<Name const> names);
        bool ReadNames(std::string_view key, std::span<Name const> names, std::vector<std::int64_t>& numbers);
        void ReadNameOrNames(std::string_view key, std::span<Name const> names, std::vector<std::int64_t>& numbers);

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

        bool ReadMilliseconds(std::string_view key, std::int32_t& target); // from 0 upwards, or "never"

        std::optional<TableReader> Table(std::string_view key);
        std::vector<TableReader> Tables(std::string_view key);
        std::vector<std::string_view> Keys() const;

        // A key that is not there is a fault of the table; `what` needs it.
        void Need(std::string_view key, std::string_view what);
        void RejectOtherKeys() const;
        void Reject(std::string_view key, std::string_view reason) const;

    private:
        toml::node const* Find(std::string_view key);
        void RejectNode(std::string_view key, toml::node const& node, std::string_view expected) const;
        std::optional<std::int64_t> NumberOf(std::string_view key, toml::node const& node, std::span<Name const> names,
                                             std::string_view expected) const;
        std::optional<std::int64_t> ReadNumberWithin(std::string_view key, std::span<Name const> names,
                                                     std::int64_t least, std::int64_t most);

        toml::table const* m_table;
        Faults* m_faults;
        std::set<std::string, std::less<>> m_known; // the keys asked for so far
    };
} // namespace simulator
