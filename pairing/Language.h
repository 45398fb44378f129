#pragma once

#include <cstdint>
#include <string_view>

namespace vorlink
{
    struct UiLanguage
    {
        std::string_view country;
        std::string_view language;
        std::string_view locale;
        bool known; // false: the defaults, for an identifier that the table does not have
    };

    // The texts for a Windows language identifier, which is compared whole.
    UiLanguage GetUiLanguage(std::uint16_t languageId) noexcept;
} // namespace vorlink
