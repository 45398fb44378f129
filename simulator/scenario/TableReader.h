// Reads the tables of a scenario strictly: what nobody asks for is a fault.
#pragma once

#include "simulator/scenario/Faults.h"
#include "simulator/scenario/KeyNote.h"
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
        TableReader(toml::table const& contents, Faults& faults, std::vector<KeyNote>* notes = nullptr,
                    std::string path = {});

        bool Has(std::string_view key);
        bool HoldsTable(std::string_view key);
        void Read(std::string_view key, bool& target);
        void Read(std::string_view key, std::optional<bool>& target);
        void Read(std::string_view key, std::string& target);
        void Read(std::string_view key, PropertyKind kind, Value& target);
        void ReadAddress(std::string_view key, std::string& target); // empty when it has a fault

        // A number from the least to the most.
        void ReadNumber(std::string_view key, std::int32_t least, std::int32_t most, std::int32_t& target);
        std::optional<std::int32_t> ReadNumber(std::string_view key, std::int32_t least, std::int32_t most);

        // A failure code, as 0x80004005 or as its negative number.
        void ReadFailure(std::string_view key, std::int32_t& target);

        // One of the names.
        template <typename T>
        void ReadName(std::string_view key, std::span<Name const> names, T& target)
        {
            NoteNames(key, "name", names, static_cast<std::int64_t>(target));
            auto const* node = Find(key);
            if (auto const number = node ? NumberOf(key, *node, names, "a name") : std::nullopt)
            {
                target = static_cast<T>(*number);
            }
        }

        bool ReadNames(std::string_view key, std::span<Name const> names, std::vector<std::int64_t>& numbers);
        void ReadNameOrNames(std::string_view key, std::span<Name const> names, std::vector<std::int64_t>& numbers);

        // One of the names, or any number that fits.
        template <typename T>
        void ReadNumber(std::string_view key, std::span<Name const> names, T& target)
        {
            using Limits = std::numeric_limits<T>;
            NoteNames(key, "name or number", names, target);
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
        void Note(std::string_view key, std::string takes, std::string otherwise);
        void NoteNames(std::string_view key, std::string_view takes, std::span<Name const> names,
                       std::int64_t otherwise);
        std::optional<std::int32_t> NumberFrom(std::string_view key, std::int32_t least, std::int32_t most);
        std::string PathOf(std::string_view key) const;
        bool ReadList(std::string_view key, toml::node const& node, std::span<Name const> names,
                      std::vector<std::int64_t>& numbers);
        void RejectNode(std::string_view key, toml::node const& node, std::string_view expected) const;
        std::optional<std::int64_t> NumberOf(std::string_view key, toml::node const& node, std::span<Name const> names,
                                             std::string_view expected) const;
        std::optional<std::int64_t> ReadNumberWithin(std::string_view key, std::span<Name const> names,
                                                     std::int64_t least, std::int64_t most);

        toml::table const* m_table;
        Faults* m_faults;
        std::vector<KeyNote>* m_notes; // null: nobody wants them
        std::string m_path;
        std::set<std::string, std::less<>> m_known; // the keys asked for so far
    };
} // namespace simulator
