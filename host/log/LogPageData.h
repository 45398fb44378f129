#pragma once

#include "host/log/LogContents.h"
#include "host/page/PageJson.h"

#include <cstddef>
#include <string>

namespace host
{
    // What the script makes a log's page of. `left`: how
    // many older records the contents are without.
    void WriteLogPageData(LogContents const& contents, std::string const& name, std::size_t left,
                          PageWriter const& write);
} // namespace host
