#include "host/Nearest.h"

#include <algorithm>
#include <cctype>
#include <cstddef>
#include <numeric>

namespace host
{
    namespace
    {
        char Lower(char byte)
        {
            return static_cast<char>(std::tolower(static_cast<unsigned char>(byte)));
        }

        // How many characters are to be inserted, left out or replaced.
        std::size_t Distance(std::string_view one, std::string_view other)
        {
            std::vector<std::size_t> row(other.size() + 1);
            std::iota(row.begin(), row.end(), std::size_t{0});
            for (auto const byte : one)
            {
                auto diagonal = row[0]++;
                for (std::size_t at = 1; at < row.size(); ++at)
                {
                    auto const replaced = diagonal + (Lower(byte) == Lower(other[at - 1]) ? 0 : 1);
                    diagonal = row[at];
                    row[at] = std::min({row[at] + 1, row[at - 1] + 1, replaced});
                }
            }
            return row.back();
        }
    } // namespace

    std::optional<std::string> Nearest(std::string_view word, std::vector<std::string> const& known)
    {
        std::optional<std::string> nearest;
        auto least = word.size() / 3 + 2; // beyond, it is another word
        for (auto const& each : known)
        {
            if (auto const distance = Distance(word, each); distance < least)
            {
                least = distance;
                nearest = each;
            }
        }
        return nearest;
    }
} // namespace host
