// The log as a page for a browser, in one piece: it loads nothing.
#pragma once

#include "host/log/LogPageData.h"

#include <cstddef>
#include <string>

namespace host
{
    // `nonce` is what lets the page's own script run, and nothing that a name in the log might bring: nobody may guess
    // it.
    void WriteLogPage(LogContents const& contents, std::string const& name, std::size_t left, std::string const& nonce,
                      LogPageWriter const& write);
} // namespace host
