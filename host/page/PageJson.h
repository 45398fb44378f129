// What a page's script makes the page of: JSON in which nothing can end the element that holds it.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace host
{
    // Takes a page, or its data, piece by piece.
    using PageWriter = std::function<void(std::string_view piece)>;

    // Of a harmless text, which has no control characters, no separators of lines and no bytes that are not UTF-8.
    std::string JsonText(std::string_view harmless);

    inline std::string Number(std::int64_t number)
    {
        return std::to_string(number);
    }

    template <typename... Fields>
    std::string JsonArray(Fields const&... fields)
    {
        std::string json;
        (json.append(json.empty() ? "[" : ",").append(fields), ...);
        return json + "]";
    }

    // Lists what is given to it, a row a line.
    class JsonRows
    {
    public:
        explicit JsonRows(PageWriter const& write)
            : m_write(write)
        {
        }

        void Add(std::string const& row)
        {
            m_write((m_isFirst ? "\n" : ",\n") + row);
            m_isFirst = false;
        }

    private:
        PageWriter const& m_write;
        bool m_isFirst = true;
    };

    // Words that come often, each by its number: that of its first mention.
    class WordNumbers
    {
    public:
        std::int64_t Of(std::string const& word);

        // All of them, made harmless.
        void Write(PageWriter const& write) const;

    private:
        std::map<std::string, std::int64_t, std::less<>> m_numbers;
    };
} // namespace host
