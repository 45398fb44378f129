#include "pairing/LeData.h"

#include "pairing/TextLines.h"

#include <algorithm>
#include <utility>

namespace vorlink
{
    namespace
    {
        void Echo(std::ostream& echo, std::string const& key, std::string const& value)
        {
            echo << key + ':' + value + '\n'; // at once: to a console each piece is a write of its own
        }
    } // namespace

    void ReadLeData(std::istream& text, LeData& store, std::ostream& echo)
    {
        for (std::string line; ReadTextLine(text, line);)
        {
            line += '='; // ends a value that nothing follows
            auto const keyEnd = line.find('=');
            auto const valueEnd = line.find('=', keyEnd + 1);
            if (valueEnd == std::string::npos)
            {
                continue;
            }
            std::string key = line.substr(0, keyEnd);
            std::string value = line.substr(keyEnd + 1, valueEnd - keyEnd - 1);
            if (!key.empty() && !value.empty())
            {
                Echo(echo, key, value);
                store.emplace(std::move(key), std::move(value));
            }
        }
    }

    void WriteLeData(LeData const& store, std::ostream& text, std::ostream& echo)
    {
        for (auto const& [key, value] : store)
        {
            text << key << '=' << value << '\n';
            Echo(echo, key, value);
        }
    }

    bool HasValue(LeData const& store, std::string_view part)
    {
        return std::any_of(store.begin(), store.end(),
                           [&](auto const& entry) { return entry.second.find(part) != std::string::npos; });
    }

    std::string ValueOf(LeData const& store, std::string const& key)
    {
        auto const entry = store.find(key);
        return entry == store.end() ? std::string() : entry->second;
    }
} // namespace vorlink
