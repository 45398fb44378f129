#include "simulator/properties/HexText.h"

#include <algorithm>
#include <utility>

namespace simulator
{
    namespace
    {
        // An x of the shape stands for a digit, anything else for itself.
        std::optional<std::string> ReadShape(std::string_view text, std::string_view shape)
        {
            std::string lower(text);
            std::ranges::transform(lower, lower.begin(), [](char character) {
                return character >= 'A' && character <= 'F' ? static_cast<char>(character - 'A' + 'a') : character;
            });
            auto const fits = [](char character, char wanted) {
                constexpr std::string_view digits = "0123456789abcdef";
                return wanted == 'x' ? digits.find(character) != std::string_view::npos : character == wanted;
            };
            return std::ranges::equal(lower, shape, fits) ? std::optional(lower) : std::nullopt;
        }
    } // namespace

    std::optional<Guid> ParseGuid(std::string_view text)
    {
        auto shaped = ReadShape(text, "{xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx}");
        return shaped ? std::optional(Guid{*std::move(shaped)}) : std::nullopt;
    }

    std::optional<std::string> ParseAddress(std::string_view text)
    {
        return ReadShape(text, "xx:xx:xx:xx:xx:xx");
    }
} // namespace simulator
