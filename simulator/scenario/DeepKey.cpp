#include "simulator/scenario/DeepKey.h"

#include <algorithm>
#include <string>

namespace simulator
{
    namespace
    {
        // Behind the text in quotes that begins here. One that is never closed ends with its line, or with all of it.
        std::size_t PassText(std::string_view toml, std::size_t begin)
        {
            char const quote = toml[begin];
            std::string const three(3, quote);
            bool const manyLines = toml.substr(begin).starts_with(three);
            for (auto at = begin + (manyLines ? 3 : 1); at < toml.size(); ++at)
            {
                if (quote == '"' && toml[at] == '\\')
                {
                    ++at;
                }
                else if (!manyLines && (toml[at] == quote || toml[at] == '\n'))
                {
                    return at + 1;
                }
                else if (manyLines && toml.substr(at).starts_with(three))
                {
                    // One or two before the closing three are the text's own.
                    return std::min(toml.find_first_not_of(quote, at), at + 5);
                }
            }
            return toml.size();
        }

        bool IsWithinKey(char character)
        {
            auto const among = [&](char first, char last) { return character >= first && character <= last; };
            return (character & 0x80) != 0 || among('a', 'z') || among('A', 'Z') || among('0', '9') ||
                   std::string_view("_- \t").find(character) != std::string_view::npos;
        }
    } // namespace

    std::optional<std::size_t> FindDeepKey(std::string_view toml)
    {
        std::size_t parts = 1;
        for (std::size_t at = 0; at < toml.size();)
        {
            char const character = toml[at];
            if (character == '"' || character == '\'')
            {
                at = PassText(toml, at);
                continue;
            }
            if (character == '#')
            {
                at = std::min(toml.find('\n', at), toml.size());
                continue;
            }
            if (character == '.' && ++parts > mostKeyParts)
            {
                return 1 + std::ranges::count(toml.substr(0, at), '\n');
            }
            if (character != '.' && !IsWithinKey(character))
            {
                parts = 1;
            }
            ++at;
        }
        return std::nullopt;
    }
} // namespace simulator
