#include "host/page/PageJson.h"

#include "host/Text.h"

#include <vector>

namespace host
{
    std::string JsonText(std::string_view harmless)
    {
        std::string json = "\"";
        for (char const letter : harmless)
        {
            switch (letter)
            {
            case '"':
            case '\\':
                json += '\\';
                json += letter;
                break;
            case '<':
                json += "\\u003C";
                break;
            case '>':
                json += "\\u003E";
                break;
            case '&':
                json += "\\u0026";
                break;
            default:
                json += letter;
            }
        }
        return json + "\"";
    }

    std::int64_t WordNumbers::Of(std::string const& word)
    {
        auto const next = static_cast<std::int64_t>(m_numbers.size());
        return m_numbers.try_emplace(word, next).first->second;
    }

    void WordNumbers::Write(PageWriter const& write) const
    {
        std::vector<std::string_view> words(m_numbers.size());
        for (auto const& [word, number] : m_numbers)
        {
            words[static_cast<std::size_t>(number)] = word;
        }
        JsonRows rows(write);
        for (auto const word : words)
        {
            rows.Add(JsonText(Harmless(word)));
        }
    }
} // namespace host
