#include "pairing/NarrowText.h"

#include <windows.h>

#include <array>
#include <cstddef>

namespace vorlink
{
    std::string NarrowText(std::wstring_view text, CodePage codePage)
    {
        auto const page = static_cast<UINT>(codePage);
        auto const length = static_cast<int>(text.size());
        // Names and identifiers are short: one conversion does for them.
        std::array<char, 256> small;
        int size = WideCharToMultiByte(page, 0, text.data(), length, small.data(), static_cast<int>(small.size()),
                                       nullptr, nullptr);
        if (size > 0)
        {
            return {small.data(), static_cast<std::size_t>(size)};
        }
        size = WideCharToMultiByte(page, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
        std::string narrow(static_cast<std::size_t>(size), '\0');
        WideCharToMultiByte(page, 0, text.data(), length, narrow.data(), size, nullptr, nullptr);
        return narrow;
    }
} // namespace vorlink
