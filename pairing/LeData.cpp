#include "pairing/LeData.h"

#include "pairing/TextLines.h"

#include <algorithm>

namespace vorlink
{
    namespace
    {
        void AppendLine(std::string& text, std::string_view key, char separator, std::string_view value)
        {
            text.append(key).append(1, separator).append(value).append(1, '\n');
        }
    } // namespace

    void ReadLeData(std::istream& text, LeData& store, std::string& echo)
    {
        for (std::string whole; ReadTextLine(text, whole);)
        {
            std::string_view const line = whole;
            auto const keyEnd = line.find('=');
            if (keyEnd == std::string_view::npos)
            {
                continue;
            }
            auto const key = line.substr(0, keyEnd);
            auto const rest = line.substr(keyEnd + 1);
            auto const value = rest.substr(0, rest.find('='));
            if (!key.empty() && !value.empty())
            {
                AppendLine(echo, key, ':', value);
                store.emplace_hint(store.end(), key, value); // the lines of a saved store are in order
            }
        }
    }

    void WriteLeData(LeData const& store, std::string& text, std::string& echo)
    {
        for (auto const& [key, value] : store)
        {
            AppendLine(text, key, '=', value);
            AppendLine(echo, key, ':', value);
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
