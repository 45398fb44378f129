// A page for a browser, in one piece: it loads nothing.
#pragma once

#include "host/page/PageJson.h"

#include <functional>
#include <string>
#include <string_view>

namespace host
{
    // A kind of page: what it has beyond what all have.
    struct PageTexts
    {
        std::string_view html; // with {{nonce}}, {{style}}, {{script}} and {{data}}
        std::string_view style;
        std::string_view script;
    };

    // `nonce` is what lets the page's own script run, and nothing that a name in the data might bring: nobody may guess
    // it.
    void WritePage(PageTexts const& texts, std::string const& nonce, PageWriter const& write,
                   std::function<void(PageWriter const&)> const& writeData);
} // namespace host
