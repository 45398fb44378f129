// The files page.html, page.css and page.js, as the build found them.
#pragma once

#include <string_view>

namespace host
{
    extern std::string_view const logPageHtml;
    extern std::string_view const logPageStyle;
    extern std::string_view const logPageScript;
} // namespace host
