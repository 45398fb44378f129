// The log as a page for a browser.
#pragma once

#include "host/log/LogPageData.h"

#include <cstddef>
#include <string>

namespace host
{
    void WriteLogPage(LogContents const& contents, std::string const& name, std::size_t left, std::string const& nonce,
                      PageWriter const& write);
} // namespace host
