#pragma once

#include <string>
#include <string_view>

namespace vorlink
{
    enum class CodePage : unsigned
    {
        Ansi = 0,
        Oem = 1,
        Utf8 = 65001,
    };

    // The platform's text in a code page; what the page lacks becomes the page's substitute. Empty when the
    // conversion yields nothing.
    std::string NarrowText(std::wstring_view text, CodePage codePage);
} // namespace vorlink
