// The log as a page for a browser, in one piece: it loads nothing.
#pragma once

#include "host/log/LogContents.h"

#include <cstddef>
#include <functional>
#include <string>
#include <string_view>

namespace host
{
    // Takes the page piece by piece.
    using LogPageWriter = std::function<void(std::string_view piece)>;

    // `left`: how many older records the contents are without. `nonce` is what lets the page's own script run, and
    // nothing that a name in the log might bring: nobody may guess it.
    void WriteLogPage(LogContents const& contents, std::string const& name, std::size_t left, std::string const& nonce,
                      LogPageWriter const& write);

    // What the script makes it of, as JSON.
    void WriteLogPageData(LogContents const& contents, std::string const& name, std::size_t left,
                          LogPageWriter const& write);
} // namespace host
