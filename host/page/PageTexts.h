// The pages' files, as the build found them.
#pragma once

#include <string_view>

namespace host
{
    extern std::string_view const pageStyle; // of every page
    extern std::string_view const pageScript;
    extern std::string_view const logPageHtml;
    extern std::string_view const logPageStyle;
    extern std::string_view const logPageScript;
    extern std::string_view const tracePageHtml;
    extern std::string_view const tracePageStyle;
    extern std::string_view const tracePageScript;
} // namespace host
