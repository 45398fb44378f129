// Texts that cross the boundary.
#pragma once

#include <algorithm>
#include <cstddef>
#include <string>
#include <string_view>

namespace wrapper
{
    std::string ToUtf8(std::wstring_view text);

    bool IsUtf8(char const* text);

    // Ends with a zero always. A longer text is cut in front of a character.
    template <std::size_t Size>
    void CopyText(char (&field)[Size], std::string_view text) noexcept
    {
        auto length = std::min(text.size(), Size - 1);
        auto const isInside = [&] { return (static_cast<unsigned char>(text[length]) & 0xC0U) == 0x80U; };
        while (length > 0 && length < text.size() && isInside())
        {
            --length;
        }
        text.copy(field, length);
        std::fill(field + length, field + Size, '\0');
    }
} // namespace wrapper
