// The LE data store: the address piece of each paired device's LE endpoint, by the device's name. Kept as lines
// of key=value.
#pragma once

#include <cstddef>
#include <istream>
#include <map>
#include <string>
#include <string_view>

namespace vorlink
{
    using LeData = std::map<std::string, std::string>;

    // Adds the entries of a file's text to the store; a key already there keeps its value. A line is split at
    // its first two "=", and skipped unless both pieces are there. Each accepted line is echoed as key:value.
    void ReadLeData(std::istream& text, LeData& store, std::string& echo);

    // Appends every entry, in the order of the keys, and echoes each as key:value.
    void WriteLeData(LeData const& store, std::string& text, std::string& echo);

    // Whether some value contains `part`.
    bool HasValue(LeData const& store, std::string_view part);

    // The value under the key, empty when there is none.
    std::string ValueOf(LeData const& store, std::string const& key);
} // namespace vorlink
