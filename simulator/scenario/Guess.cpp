#include "simulator/scenario/Guess.h"

#include "simulator/scenario/Faults.h"

#include <algorithm>
#include <cstddef>
#include <numeric>
#include <utility>

namespace simulator
{
    namespace
    {
        char ToLower(char letter)
        {
            return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter;
        }

        // How many letters are to be replaced, left out, put in or swapped with the next one; case does not count.
        // Counts no further than the limit, and says one more then.
        std::size_t Distance(std::string_view one, std::string_view other, std::size_t limit)
        {
            auto const [left, right] = std::ranges::mismatch(one, other, {}, ToLower, ToLower);
            one.remove_prefix(static_cast<std::size_t>(left - one.begin()));
            other.remove_prefix(static_cast<std::size_t>(right - other.begin()));
            std::vector<std::size_t> beforeLast;
            std::vector<std::size_t> last;
            std::vector<std::size_t> row(other.size() + 1);
            std::iota(row.begin(), row.end(), 0u);
            for (std::size_t i = 1; i <= one.size() && std::ranges::min(row) <= limit; ++i)
            {
                beforeLast = std::exchange(last, row);
                row[0] = i;
                for (std::size_t j = 1; j <= other.size(); ++j)
                {
                    auto const same = [&](std::size_t at, std::size_t otherAt) {
                        return ToLower(one[at - 1]) == ToLower(other[otherAt - 1]);
                    };
                    row[j] = std::min({last[j - 1] + (same(i, j) ? 0 : 1), last[j] + 1, row[j - 1] + 1});
                    if (i > 1 && j > 1 && same(i, j - 1) && same(i - 1, j))
                    {
                        row[j] = std::min(row[j], beforeLast[j - 2] + 1);
                    }
                }
            }
            return std::min(row.back(), limit + 1);
        }
    } // namespace

    std::string Guess(std::string_view given, std::vector<std::string_view> const& names)
    {
        std::string_view nearest;
        std::size_t least = 4;
        for (auto const name : names)
        {
            auto const [shorter, longer] = std::minmax({given.size(), name.size()});
            auto const limit = std::min(least - 1, std::max<std::size_t>(longer / 3, 1));
            if (longer - shorter > limit)
            {
                continue;
            }
            if (auto const distance = Distance(given, name, limit); distance <= limit)
            {
                nearest = name;
                least = distance;
            }
            if (least == 0)
            {
                break;
            }
        }
        return nearest.empty() ? "" : "; did you mean " + InQuotes(nearest) + "?";
    }
} // namespace simulator
